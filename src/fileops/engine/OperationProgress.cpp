#include "fileops/engine/OperationProgress.h"

#include <algorithm>

namespace norvane {

namespace {

constexpr bigtime_t kSecond = 1'000'000;
// Before that the pace says nothing: the first files are in the cache, the disk is waking up.
constexpr bigtime_t kFirstEstimate = 3 * kSecond;

std::string TimeText(bigtime_t left)
{
    const int64 seconds = (left + kSecond - 1) / kSecond;
    if (seconds < 60) {
        return std::to_string(std::max<int64>(seconds, 1)) + " s";
    }
    const int64 minutes = (seconds + 30) / 60;
    if (minutes < 60) {
        return std::to_string(minutes) + " min";
    }
    return std::to_string((minutes + 30) / 60) + " h";
}

} // namespace

void OperationProgress::Start(int64 totalBytes, bigtime_t now)
{
    *this = OperationProgress();
    fTotalBytes = totalBytes;
    fStart = now;
}

void OperationProgress::StartFile(int64 sizeBytes)
{
    fFileBytes = sizeBytes;
    fFileDoneBytes = 0;
}

void OperationProgress::Add(int64 bytes)
{
    fFileDoneBytes += bytes;
    fDoneBytes += bytes;
}

int64 OperationProgress::DoneBytes() const
{
    return fTotalEntries > 0 ? static_cast<int64>(Share() * double(fTotalBytes)) : fDoneBytes;
}

double OperationProgress::Share() const
{
    const int64 done = fTotalEntries > 0 ? fDoneEntries : fDoneBytes;
    const int64 total = fTotalEntries > 0 ? fTotalEntries : fTotalBytes;
    if (done <= 0 || total <= 0) {
        return 0;
    }
    // Sources may grow while they are copied: more than all of it is all of it.
    return double(std::min(done, total)) / double(total);
}

int32 OperationProgress::Percent() const
{
    return static_cast<int32>(Share() * 100.0);
}

bigtime_t OperationProgress::TimeLeft(bigtime_t now) const
{
    const bigtime_t elapsed = now - fStart;
    const double share = Share();
    if (elapsed < kFirstEstimate || share <= 0) {
        return -1;
    }
    return static_cast<bigtime_t>(double(elapsed) * (1 - share) / share);
}

std::string OperationProgress::Title(const std::string& base, bigtime_t now) const
{
    if (Share() <= 0) {
        return base;
    }
    std::string title = base + " - " + std::to_string(Percent()) + " %";
    const bigtime_t left = TimeLeft(now);
    if (left > 0) {
        title += ", " + TimeText(left) + " left";
    }
    return title;
}

} // namespace norvane
