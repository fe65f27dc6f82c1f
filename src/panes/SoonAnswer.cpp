#include "panes/SoonAnswer.h"

#include "DetachedThread.h"

#include <Message.h>
#include <OS.h>

#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <utility>

namespace norvane {

namespace {

constexpr std::chrono::milliseconds kPatience(100);

/// What asker and thread share.
struct Answering
{
    std::mutex mutex; // guards all below
    std::condition_variable made;
    std::optional<BMessage> answer;
    bool isLate = false; // nobody waits any more
};

void Give(Answering& answering, BMessage answer, const BMessenger& asker)
{
    {
        const std::lock_guard lock(answering.mutex);
        if (!answering.isLate) {
            answering.answer = std::move(answer);
            answering.made.notify_all();
            return;
        }
    }
    asker.SendMessage(&answer);
}

} // namespace

std::optional<BMessage> AnswerSoon(const std::function<BMessage()>& ask, const BMessenger& asker)
{
    const auto answering = std::make_shared<Answering>();
    if (!StartDetached("entry work", B_NORMAL_PRIORITY,
                       [answering, ask, asker] { Give(*answering, ask(), asker); })) {
        return ask();
    }
    std::unique_lock lock(answering->mutex);
    answering->isLate =
        !answering->made.wait_for(lock, kPatience, [&] { return answering->answer.has_value(); });
    return std::move(answering->answer);
}

} // namespace norvane
