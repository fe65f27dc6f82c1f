#pragma once

#include <SupportDefs.h>

#include <memory>
#include <vector>

namespace kits {

class LooperCore;
class ReplySlot;

/// Puts a request to quit to every window and waits for what becomes of them.
///
/// No window is waited for with a lock held, and none is locked: a busy one answers when its work
/// is done. Thread: the application's, which goes on handling messages meanwhile.
class QuitRound
{
public:
    explicit QuitRound(std::shared_ptr<LooperCore> application);
    ~QuitRound();
    QuitRound(const QuitRound&) = delete;
    QuitRound& operator=(const QuitRound&) = delete;

    /// Returns when every window has refused or its thread has ended: whether none has refused.
    bool Run();

private:
    enum class State : uint8 {
        kAsked,
        kLeaving, // agreed, but its thread has not ended yet
        kRefused,
        kEnded,
    };

    struct Question
    {
        std::shared_ptr<LooperCore> window;
        std::shared_ptr<ReplySlot> answer;
        State state = State::kAsked;
    };

    bool AskNewWindows(); // whether there were any
    bool IsDecided();
    void LookAt(Question& question);
    void HandleOneMessage();

    const std::shared_ptr<LooperCore> fApplication;
    std::vector<Question> fQuestions;
};

} // namespace kits
