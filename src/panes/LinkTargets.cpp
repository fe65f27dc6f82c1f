#include "panes/LinkTargets.h"

#include "DetachedThread.h"
#include "MessageCodes.h"

#include <Message.h>
#include <OS.h>

#include <chrono>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <utility>

namespace norvane {

namespace {

constexpr bigtime_t kPatience = 1'000'000;
// After one that did not answer the next ones get so long: they mostly lead to the same disk.
constexpr bigtime_t kShortPatience = 100'000;
// So many threads wait for disks at most.
constexpr int kMostStuck = 8;
constexpr int64 kUnknown = -1;

int64 TargetOf(const entry_ref& link)
{
    struct stat st = {};
    return BEntry(&link, true).GetStat(&st) == B_OK ? static_cast<int64>(st.st_mode) : 0;
}

BMessage AnswerTo(const LinkQuestion& question, int64 target)
{
    BMessage answer(kLinkAnswered);
    answer.AddString("name", question.link.name);
    answer.AddInt64("device", static_cast<int64>(question.folder.device));
    answer.AddInt64("directory", static_cast<int64>(question.folder.node));
    answer.AddInt32("number", question.number);
    answer.AddInt64("target", target);
    answer.AddData("record", B_RAW_TYPE, &question.record, sizeof(question.record));
    return answer;
}

} // namespace

bool LinkAnswer::Read(const BMessage& message)
{
    const char* found = nullptr;
    int64 device = 0;
    int64 directory = 0;
    int64 mode = 0;
    const void* bytes = nullptr;
    ssize_t size = 0;
    if (message.what != kLinkAnswered || message.FindString("name", &found) != B_OK ||
        message.FindInt64("device", &device) != B_OK ||
        message.FindInt64("directory", &directory) != B_OK ||
        message.FindInt32("number", &number) != B_OK ||
        message.FindInt64("target", &mode) != B_OK ||
        message.FindData("record", B_RAW_TYPE, &bytes, &size) != B_OK ||
        size != static_cast<ssize_t>(sizeof(record))) {
        return false;
    }
    name = found;
    folder = node_ref(static_cast<dev_t>(device), static_cast<ino_t>(directory));
    target = static_cast<mode_t>(mode);
    record = *static_cast<const BEntryRecord*>(bytes);
    return true;
}

/// The questions, which the threads share with the owner.
class LinkTargets::Queue : public std::enable_shared_from_this<Queue>
{
public:
    explicit Queue(const BMessenger& target) : fTarget(target) {}

    /// `result`, which may be null, takes the answer instead of a message, unless it comes late.
    void Add(const LinkQuestion& question, int64* result);
    void WaitForResults();
    void LetGo();

private:
    struct Item
    {
        LinkQuestion question;
        int64* result = nullptr;
    };
    struct Helper
    {
        int64* result = nullptr; // of what it is asking just now
        bigtime_t since = 0;     // 0 while it asks nothing
        bool isStuck = false;
    };

    bool StartHelper();
    void Help();
    bool IsAnyFree() const;
    void GiveUpWaiting(bigtime_t patience);

    const BMessenger fTarget;

    std::mutex fMutex; // guards all below
    std::condition_variable fAnswered;
    std::deque<Item> fItems;
    std::vector<Helper*> fHelpers; // those that run
    int fStarting = 0;             // those that will
    int fWaitingFor = 0;           // results that are not there
    bool fIsLetGo = false;
};

/// With fMutex held, which the new thread waits for.
bool LinkTargets::Queue::StartHelper()
{
    if (!StartDetached("link targets", B_NORMAL_PRIORITY,
                       [queue = shared_from_this()] { queue->Help(); })) {
        return false;
    }
    fStarting++;
    return true;
}

void LinkTargets::Queue::Help()
{
    Helper me;
    std::unique_lock lock(fMutex);
    fStarting--;
    fHelpers.push_back(&me);
    while (!fItems.empty() && !fIsLetGo && !me.isStuck) {
        Item item = std::move(fItems.front());
        fItems.pop_front();
        me.result = item.result;
        me.since = system_time();
        lock.unlock();
        const int64 target = TargetOf(item.question.link);
        lock.lock();
        me.since = 0;
        if (me.result != nullptr) {
            *me.result = target;
            fWaitingFor--;
            fAnswered.notify_all();
        } else if (!fIsLetGo) {
            BMessage answer = AnswerTo(item.question, target);
            fTarget.SendMessage(&answer);
        }
    }
    std::erase(fHelpers, &me);
}

bool LinkTargets::Queue::IsAnyFree() const
{
    const bigtime_t now = system_time();
    for (const Helper* helper : fHelpers) {
        if (!helper->isStuck && (helper->since == 0 || now - helper->since < kShortPatience)) {
            return true;
        }
    }
    return fStarting > 0 || static_cast<int>(fHelpers.size()) >= kMostStuck;
}

void LinkTargets::Queue::Add(const LinkQuestion& question, int64* result)
{
    {
        const std::lock_guard lock(fMutex);
        fItems.push_back({question, result});
        fWaitingFor += result != nullptr ? 1 : 0;
        if (IsAnyFree() || StartHelper() || !fHelpers.empty()) {
            return;
        }
        fStarting++;
    }
    Help(); // there is no thread to be had
}

void LinkTargets::Queue::WaitForResults()
{
    bigtime_t patience = kPatience;
    std::unique_lock lock(fMutex);
    while (fWaitingFor > 0) {
        const int before = fWaitingFor;
        fAnswered.wait_for(lock, std::chrono::microseconds(patience),
                           [&] { return fWaitingFor < before; });
        if (fWaitingFor == before) {
            GiveUpWaiting(patience);
            patience = kShortPatience;
        }
    }
}

/// Whoever asks for too long answers by message; the next ones are asked by another thread, or are
/// not waited for either.
void LinkTargets::Queue::GiveUpWaiting(bigtime_t patience)
{
    int stuck = 0;
    for (Helper* helper : fHelpers) {
        if (helper->result != nullptr && helper->since != 0 &&
            system_time() - helper->since >= patience / 2) {
            helper->isStuck = true;
            *helper->result = kUnknown;
            helper->result = nullptr;
            fWaitingFor--;
        }
        stuck += helper->isStuck ? 1 : 0;
    }
    const bool areTooMany = stuck >= kMostStuck;
    for (Item& item : fItems) {
        if (areTooMany && item.result != nullptr) {
            *item.result = kUnknown;
            item.result = nullptr;
            fWaitingFor--;
        }
    }
    if (!fItems.empty() && !IsAnyFree()) {
        [[maybe_unused]] const bool isStarted = StartHelper(); // else those that run go on
    }
}

void LinkTargets::Queue::LetGo()
{
    const std::lock_guard lock(fMutex);
    fIsLetGo = true;
    fItems.clear();
}

LinkTargets::LinkTargets(const BMessenger& target) : fQueue(std::make_shared<Queue>(target)) {}

LinkTargets::~LinkTargets()
{
    fQueue->LetGo();
}

std::vector<int64> LinkTargets::FindAll(const std::vector<LinkQuestion>& links)
{
    std::vector<int64> targets(links.size(), kUnknown);
    for (std::size_t i = 0; i < links.size(); i++) {
        fQueue->Add(links[i], &targets[i]);
    }
    fQueue->WaitForResults();
    return targets;
}

void LinkTargets::Ask(const LinkQuestion& link)
{
    fQueue->Add(link, nullptr);
}

} // namespace norvane
