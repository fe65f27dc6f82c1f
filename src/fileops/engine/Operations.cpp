#include "fileops/engine/Operations.h"

#include "MessageCodes.h"

#include <Autolock.h>
#include <Locker.h>

#include <atomic>
#include <map>
#include <vector>

namespace norvane {

namespace {

struct Entry
{
    BMessenger question;
    BMessenger operation;
    BMessenger opener;
};

struct State
{
    BLocker lock{"operations"};
    std::map<int32, Entry> running GUARDED_BY(lock); // in the order of their starting
    int32 nextId GUARDED_BY(lock) = 1;
    std::atomic<bool> isQuitting{false};

    int32 Add(const Entry& entry)
    {
        BAutolock hold(lock);
        running.emplace(nextId, entry);
        return nextId++;
    }
    void Remove(int32 id)
    {
        BAutolock hold(lock);
        running.erase(id);
    }
};

State& TheState()
{
    static auto* const state = new State; // never destroyed: windows may end after main()
    return *state;
}

} // namespace

Operations::Running::Running(const BMessenger& question, const BMessenger& operation,
                             const BMessenger& opener)
    : fId(TheState().Add({question, operation, opener}))
{
}

Operations::Running::~Running()
{
    TheState().Remove(fId);
}

int32 Operations::Count()
{
    State& state = TheState();
    BAutolock lock(state.lock);
    return static_cast<int32>(state.running.size());
}

void Operations::AskToStop(const BMessenger& opener)
{
    State& state = TheState();
    BMessenger newest;
    {
        BAutolock lock(state.lock);
        for (const auto& [id, entry] : state.running) {
            newest = entry.opener == opener ? entry.operation : newest;
        }
    }
    newest.SendMessage(kAskToStop);
}

void Operations::BeginQuit()
{
    State& state = TheState();
    std::vector<BMessenger> questions;
    {
        BAutolock lock(state.lock);
        // First the flag: a question that opens from here on sees it and answers itself.
        state.isQuitting = true;
        for (const auto& [id, entry] : state.running) {
            questions.push_back(entry.question);
        }
    }
    for (const BMessenger& question : questions) {
        question.SendMessage(kAnswerForQuit);
    }
}

void Operations::Resume()
{
    TheState().isQuitting = false;
}

bool Operations::IsQuitting()
{
    return TheState().isQuitting;
}

} // namespace norvane
