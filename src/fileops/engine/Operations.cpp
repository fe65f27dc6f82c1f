#include "fileops/engine/Operations.h"

#include "MessageCodes.h"

#include <atomic>
#include <map>
#include <mutex>
#include <vector>

namespace norvane {

namespace {

struct State
{
    std::mutex mutex; // guards the next two
    std::map<int32, BMessenger> questions;
    int32 nextId = 1;
    std::atomic<bool> isQuitting{false};
};

State& TheState()
{
    static State sState;
    return sState;
}

} // namespace

Operations::Running::Running(const BMessenger& question)
{
    State& state = TheState();
    std::lock_guard<std::mutex> lock(state.mutex);
    fId = state.nextId++;
    state.questions.emplace(fId, question);
}

Operations::Running::~Running()
{
    State& state = TheState();
    std::lock_guard<std::mutex> lock(state.mutex);
    state.questions.erase(fId);
}

int32 Operations::Count()
{
    State& state = TheState();
    std::lock_guard<std::mutex> lock(state.mutex);
    return static_cast<int32>(state.questions.size());
}

void Operations::BeginQuit()
{
    State& state = TheState();
    std::vector<BMessenger> questions;
    {
        std::lock_guard<std::mutex> lock(state.mutex);
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
