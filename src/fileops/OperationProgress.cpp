#include "fileops/OperationProgress.h"

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

int32 OperationProgress::Percent() const
{
    if (fTotalBytes <= 0) {
        return 0;
    }
    // Sources may grow while they are copied: more than all of it is all of it.
    const int64 done = std::min(fDoneBytes, fTotalBytes);
    return static_cast<int32>(double(done) / double(fTotalBytes) * 100.0);
}

bigtime_t OperationProgress::TimeLeft(bigtime_t now) const
{
    const bigtime_t elapsed = now - fStart;
    if (elapsed < kFirstEstimate || fDoneBytes <= 0 || fTotalBytes <= 0) {
        return -1;
    }
    const int64 leftBytes = std::max<int64>(fTotalBytes - fDoneBytes, 0);
    return static_cast<bigtime_t>(double(elapsed) * double(leftBytes) / double(fDoneBytes));
}

std::string OperationProgress::Title(const std::string& base, bigtime_t now) const
{
    if (fDoneBytes <= 0 || fTotalBytes <= 0) {
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
