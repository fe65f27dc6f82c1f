#include "Checksums/SumTexts.h"

#include "Checksums/SumLines.h"
#include "common/StatusText.h"

#include <iterator>

namespace checksums {

namespace {

using add_ons::Grouped;

constexpr size_t kStates = static_cast<size_t>(SumState::kRefused) + 1;

struct Count
{
    SumState state;
    const char* text;
};

// In the order in which they are told.
constexpr Count kCounts[] = {
    {SumState::kSame, "OK"},
    {SumState::kSummed, "done"},
    {SumState::kDiffers, "different"},
    {SumState::kMissing, "missing"},
    {SumState::kUnreadable, "unreadable"},
    {SumState::kChanged, "changed while read"},
    {SumState::kRefused, "outside of the folder"},
    {SumState::kWaiting, "not read"},
};

/// A FIFO or a device is not even opened.
const char* ReasonOf(status_t status)
{
    return status == B_BAD_VALUE ? "no regular file" : add_ons::StatusText(status);
}

std::string Files(size_t count)
{
    return count == 1 ? "1 file" : Grouped(count) + " files";
}

} // namespace

std::string TextOf(const SumRow& row)
{
    switch (row.state) {
    case SumState::kWaiting:
        return "waiting";
    case SumState::kReading:
        return "reading…";
    case SumState::kSummed:
        return row.sum;
    case SumState::kSame:
        return "OK";
    case SumState::kDiffers:
        return "differs";
    case SumState::kMissing:
        return "missing";
    case SumState::kUnreadable:
        return std::string("unreadable: ") + ReasonOf(row.reason);
    case SumState::kChanged:
        return "changed while it was read";
    case SumState::kRefused:
        return "refused: leads out of the folder";
    }
    return {};
}

bool IsTrouble(SumState state)
{
    switch (state) {
    case SumState::kDiffers:
    case SumState::kMissing:
    case SumState::kUnreadable:
    case SumState::kChanged:
    case SumState::kRefused:
        return true;
    default:
        return false;
    }
}

std::string SummaryOf(const SumJob& job)
{
    const SumJob::Progress progress = job.Look();
    if (!progress.hasEnded) {
        return progress.isFinding ? "Looking for files: " + Grouped(progress.rows)
                                  : Grouped(progress.finished) + " of " + Files(progress.rows);
    }
    size_t counts[kStates] = {};
    for (const SumRow& row : job.Rows()) {
        counts[static_cast<size_t>(row.state)]++;
    }
    std::string text = (progress.wasStopped ? "Stopped. " : "") + Files(progress.rows);
    const char* before = ": ";
    for (const Count& one : kCounts) {
        const size_t count = counts[static_cast<size_t>(one.state)];
        if (count > 0) {
            text += before + Grouped(count) + " " + one.text;
            before = ", ";
        }
    }
    if (progress.otherLines > 0) {
        text +=
            ". " + (progress.otherLines == 1 ? std::string("1 line is no sum")
                                             : Grouped(progress.otherLines) + " lines are no sums");
    }
    return text;
}

std::string LinesOf(const std::vector<SumRow>& rows)
{
    std::string lines;
    for (const SumRow& row : rows) {
        if (!row.sum.empty()) {
            lines += LineOf({row.name, row.sum});
        }
    }
    return lines;
}

} // namespace checksums
