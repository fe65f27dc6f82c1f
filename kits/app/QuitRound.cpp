#include "app/QuitRound.h"

#include <AppDefs.h>
#include <Message.h>

#include "app/LooperCore.h"
#include "app/MessageDelivery.h"

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
        if (IsDecided()) {
            return std::none_of(fQuestions.begin(), fQuestions.end(),
                                [](const Question& q) { return q.state == State::kRefused; });
        }
        HandleOneMessage();
    } while (!fApplication->IsEnding());
    return true;
}

void QuitRound::AskNewWindows()
{
    for (const std::shared_ptr<LooperCore>& core : LooperCore::All()) {
        const bool isAsked = std::any_of(fQuestions.begin(), fQuestions.end(),
                                         [&](const Question& q) { return q.window == core; });
        if (isAsked || !core->IsWindow() || !core->HasRun()) {
            continue;
        }
        const auto answer = std::make_shared<ReplySlot>(fApplication);
        auto request = std::make_unique<BMessage>(B_QUIT_REQUESTED);
        NewDelivery(*request).slot = answer;
        core->Post(std::move(request));
        fQuestions.push_back({core, answer});
    }
}

bool QuitRound::IsDecided()
{
    bool isDecided = true;
    for (Question& question : fQuestions) {
        if (question.state == State::kAsked) {
            LookAt(question);
        }
        isDecided = isDecided && question.state != State::kAsked;
    }
    return isDecided;
}

void QuitRound::LookAt(Question& question)
{
    if (question.window->HasEnded(fApplication)) {
        question.state = State::kEnded;
        return;
    }
    // A window that handled the request without an answer stays, as one that refused. One that is
    // about to end drops the request unanswered.
    BMessage answer;
    const status_t status = question.answer->Wait(&answer, 0);
    if (status == B_OK && !answer.GetBool("result", false) && !question.window->IsEnding()) {
        question.state = State::kRefused;
    }
}

void QuitRound::HandleOneMessage()
{
    const int32 locks = fApplication->UnlockAll();
    std::unique_ptr<BMessage> message = fApplication->NextMessage(B_INFINITE_TIMEOUT);
    fApplication->LockAgain(locks);
    if (message != nullptr) {
        fApplication->Dispatch(std::move(message));
    }
}

} // namespace kits
