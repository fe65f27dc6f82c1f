#include "app/Guards.h"

#ifdef KITS_GUARDS

#include "app/DisplayHooks.h"
#include "app/LooperFacts.h"
#include "kernel/Stack.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace kits {

namespace {

thread_local std::vector<const LooperFacts*> tHeld; // outermost first
thread_local std::vector<std::pair<const BLooper*, const BLooper*>> tAllowedPairs;

bool IsDeclared(const LooperFacts& outer, const LooperFacts& inner)
{
    return std::any_of(tAllowedPairs.begin(), tAllowedPairs.end(), [&](const auto& pair) {
        return (pair.first == outer.Looper() && pair.second == inner.Looper()) ||
               (pair.first == inner.Looper() && pair.second == outer.Looper());
    });
}

bool MayBeHeldTogether(const LooperFacts& outer, const LooperFacts& inner)
{
    if (!outer.HasRun() || !inner.HasRun()) {
        return true; // nobody else can reach it yet
    }
    const bool isOwnQuestion = outer.IsLongRunning() && inner.Maker() == outer.Token();
    return isOwnQuestion || IsDeclared(outer, inner);
}

} // namespace

AllowLockPair::AllowLockPair(const BLooper* one, const BLooper* other)
{
    tAllowedPairs.emplace_back(one, other);
}

AllowLockPair::~AllowLockPair()
{
    tAllowedPairs.pop_back();
}

void GuardBeforeLock(const LooperFacts& looper)
{
    GuardNotServer("The window server's thread takes a looper's lock");
    for (const LooperFacts* held : tHeld) {
        if (!MayBeHeldTogether(*held, looper)) {
            EndWithStack("A thread takes a looper's lock while it holds another one's");
        }
    }
}

void GuardAfterLock(const LooperFacts& looper)
{
    tHeld.push_back(&looper);
}

void GuardAfterUnlock(const LooperFacts& looper)
{
    tHeld.erase(std::remove(tHeld.begin(), tHeld.end(), &looper), tHeld.end());
}

void GuardNotServer(const char* complaint)
{
    const DisplayHooks& hooks = GetDisplayHooks();
    if (hooks.isServerThread != nullptr && hooks.isServerThread()) {
        EndWithStack(complaint);
    }
}

int32 InnermostLockedLooper()
{
    return tHeld.empty() ? 0 : tHeld.back()->Token();
}

} // namespace kits

#endif
