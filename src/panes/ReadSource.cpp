#include "panes/ReadSource.h"

#include <OS.h>

#include <atomic>
#include <utility>

namespace norvane {

namespace {

constexpr bigtime_t kPatience = 100'000;

// When a place was waited for in vain, by any window. A start with ten of them waits for one.
std::atomic<bigtime_t> gLastInVain{0};

bigtime_t EndOfPatience(const OpenOrder& order)
{
    if (!order.list.IsValid()) {
        return B_INFINITE_TIMEOUT;
    }
    const bigtime_t now = system_time();
    if (!order.isAwaited) {
        return now;
    }
    return now - gLastInVain < 10 * kPatience ? now : now + kPatience;
}

} // namespace

status_t ReadSource::Open(const OpenOrder& order, RowTaker& taker)
{
    fTaker = &taker;
    fJob = &StartReading(order);
    if (!fJob->WaitUntil(EndOfPatience(order))) {
        gLastInVain = order.isAwaited ? system_time() : gLastInVain.load();
        return B_OK; // the rows come later
    }
    const status_t status = fJob->Status();
    if (status != B_OK) {
        return status;
    }
    TellProgress();
    HandOver();
    return B_OK;
}

void ReadSource::Proceed()
{
    if (fHasHandedOver) {
        return;
    }
    TellProgress();
    if (!fJob->Look().hasEnded) {
        return;
    }
    const status_t status = fJob->Status();
    if (status != B_OK) {
        fTaker->NotOpened(*this, status);
    } else {
        HandOver();
    }
}

void ReadSource::TellProgress()
{
    const RowsJob::Progress progress = fJob->Look();
    if (progress.entries != std::exchange(fToldEntries, progress.entries)) {
        fTaker->Counted(progress.entries);
    }
    const int32 read = progress.read - std::exchange(fToldRead, progress.read);
    if (read > 0) {
        fTaker->Read(read);
    }
}

void ReadSource::HandOver()
{
    fHasHandedOver = true;
    TakeOver();
    fTaker->Opened(*this, fJob->TakeRows());
}

} // namespace norvane
