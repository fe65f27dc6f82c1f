#include "fileops/engine/Operations.h"

#include "MessageCodes.h"

#include <Autolock.h>
#include <Locker.h>

#include <atomic>
#include <map>
#include <vector>

namespace norvane {

namespace {

struct State
{
    BLocker lock{"operations"};
    std::map<int32, BMessenger> questions GUARDED_BY(lock);
    int32 nextId GUARDED_BY(lock) = 1;
    std::atomic<bool> isQuitting{false};

    int32 Add(const BMessenger& question)
    {
        BAutolock hold(lock);
        questions.emplace(nextId, question);
        return nextId++;
    }
    void Remove(int32 id)
    {
        BAutolock hold(lock);
        questions.erase(id);
    }
};

State& TheState()
{
    static State sState;
    return sState;
}

} // namespace

Operations::Running::Running(const BMessenger& question) : fId(TheState().Add(question)) {}

Operations::Running::~Running()
{
    TheState().Remove(fId);
}

int32 Operations::Count()
{
    State& state = TheState();
    BAutolock lock(state.lock);
    return static_cast<int32>(state.questions.size());
}

void Operations::BeginQuit()
{
    State& state = TheState();
    std::vector<BMessenger> questions;
    {
        BAutolock lock(state.lock);
        // First the flag: a question that opens from here on sees it and answers itself.
        state.isQuitting = true;
        for (const auto& [id, question] : state.questions) {
            questions.push_back(question);
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
