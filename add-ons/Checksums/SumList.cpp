#include "Checksums/SumList.h"

#include "Checksums/SumTexts.h"

#include <Font.h>

#include <algorithm>
#include <utility>

namespace checksums {

namespace {

constexpr rgb_color kText = {0, 0, 0, 255};
constexpr rgb_color kFaint = {128, 128, 128, 255};
constexpr rgb_color kWrong = {170, 0, 0, 255};
constexpr rgb_color kRight = {0, 110, 0, 255};
constexpr rgb_color kMatch = {200, 236, 196, 255};
constexpr rgb_color kWhite = {255, 255, 255, 255};
constexpr float kNamesPart = 0.36F; // a sum is long

rgb_color ColorOf(SumState state)
{
    if (IsTrouble(state)) {
        return kWrong;
    }
    switch (state) {
    case SumState::kWaiting:
    case SumState::kReading:
        return kFaint;
    case SumState::kSame:
        return kRight;
    default:
        return kText;
    }
}

} // namespace

SumList::SumList(BRect frame, std::shared_ptr<const SumJob> job)
    : ColumnList(frame, "Sums", B_MULTIPLE_SELECTION_LIST, kNamesPart), fJob(std::move(job))
{
}

void SumList::Refresh()
{
    SetCount(fJob->Look().rows);
}

bool SumList::Mark(const std::string& sum)
{
    const size_t before = fMarked;
    fMarked = sum.empty() ? SIZE_MAX : fJob->FindSum(sum);
    if (fMarked != before) {
        Invalidate();
    }
    if (fMarked != before && fMarked < static_cast<size_t>(CountItems())) {
        ScrollIntoSight(static_cast<int32>(fMarked));
    }
    return fMarked != SIZE_MAX;
}

void SumList::ScrollIntoSight(int32 row)
{
    const BRect frame = ItemFrame(row);
    const BRect seen = Bounds();
    if (frame.top < seen.top) {
        ScrollTo(BPoint(0, frame.top));
    } else if (frame.bottom > seen.bottom) {
        ScrollTo(BPoint(0, std::max(0.0F, frame.bottom - seen.Height())));
    }
}

void SumList::DrawRow(size_t place, BRect frame, bool isSelected)
{
    DrawGround(frame, isSelected, place == fMarked ? kMatch : kWhite);
    const SumRow row = fJob->RowAt(place);
    const float baseline = frame.top + Baseline();
    const float second = SecondColumn(frame);
    const float first = frame.left + kIndent;
    DrawCut(row.name, BPoint(first, baseline), second - first - kIndent, kText);
    const rgb_color color = place == fMarked ? kRight : ColorOf(row.state);
    const BPoint where(second, baseline);
    const float room = frame.right - kIndent - second;
    if (row.state != SumState::kSummed) {
        DrawCut(TextOf(row), where, room, color);
        return;
    }
    BFont font;
    GetFont(&font);
    BFont fixed(be_fixed_font);
    fixed.SetSize(font.Size());
    SetFont(&fixed);
    DrawCut(row.sum, where, room, color);
    SetFont(&font);
}

std::string SumList::Spoken(size_t place) const
{
    const SumRow row = fJob->RowAt(place);
    return row.name + ", " + TextOf(row);
}

} // namespace checksums
