#include "app/QuitRound.h"

#include <AppDefs.h>
#include <Message.h>

#include "app/LooperCore.h"
#include "app/LooperRegistry.h"
#include "app/MessageDelivery.h"
#include "app/MessageLoop.h"
#include "app/ReplySlot.h"

#include <algorithm>

namespace kits {

QuitRound::QuitRound(std::shared_ptr<LooperCore> application) : fApplication(std::move(application))
{
}

QuitRound::~QuitRound() = default;

bool QuitRound::Run()
{
    do {
        AskNewWindows(); // also those that were opened since, as questions about unsaved work are
        // The last to end may have opened one after the others were asked.
        if (IsDecided() && !AskNewWindows()) {
            return std::none_of(fQuestions.begin(), fQuestions.end(),
                                [](const Question& q) { return q.state == State::kRefused; });
        }
        HandleOneMessage();
    } while (!fApplication->IsEnding());
    return true;
}

bool QuitRound::AskNewWindows()
{
    const size_t before = fQuestions.size();
    for (const std::shared_ptr<LooperCore>& core : LooperRegistry::AllLoopers()) {
        const bool isAsked = std::any_of(fQuestions.begin(), fQuestions.end(),
                                         [&](const Question& q) { return q.window == core; });
        if (isAsked || !core->IsWindow() || !core->HasRun()) {
            continue;
        }
        const auto answer =
            std::make_shared<ReplySlot>([application = fApplication] { application->Wake(); });
        auto request = std::make_unique<BMessage>(B_QUIT_REQUESTED);
        NewDelivery(*request).slot = answer;
        core->Post(std::move(request));
        fQuestions.push_back({core, answer});
    }
    return fQuestions.size() > before;
}

bool QuitRound::IsDecided()
{
    bool isDecided = true;
    for (Question& question : fQuestions) {
        LookAt(question);
        isDecided =
            isDecided && (question.state == State::kRefused || question.state == State::kEnded);
    }
    return isDecided;
}

void QuitRound::LookAt(Question& question)
{
    if (question.state == State::kRefused || question.state == State::kEnded) {
        return;
    }
    if (question.window->HasEnded(fApplication)) {
        question.state = State::kEnded;
        return;
    }
    BMessage answer;
    // An answer is there once only: looked at again, the window that agreed and has not begun to
    // end would seem to have said nothing.
    if (question.state == State::kLeaving || question.answer->Wait(&answer, 0) != B_OK) {
        return;
    }
    // A window that handled the request without an answer stays, as one that refused. One that is
    // about to end drops the request unanswered.
    const bool isLeaving = answer.GetBool("result", false) || question.window->IsEnding();
    question.state = isLeaving ? State::kLeaving : State::kRefused;
}

void QuitRound::HandleOneMessage()
{
    const int32 locks = fApplication->UnlockAll();
    std::unique_ptr<BMessage> message = fApplication->NextMessage(B_INFINITE_TIMEOUT);
    fApplication->LockAgain(locks);
    if (message != nullptr) {
        MessageLoop::Dispatch(*fApplication, std::move(message));
    }
}

} // namespace kits
