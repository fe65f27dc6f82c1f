#include "Checksums/SumList.h"

#include "Checksums/SumTexts.h"
#include "common/StatusText.h"

#include <Font.h>
#include <InterfaceDefs.h>
#include <List.h>
#include <String.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace checksums {

namespace {

constexpr rgb_color kText = {0, 0, 0, 255};
constexpr rgb_color kFaint = {128, 128, 128, 255};
constexpr rgb_color kWrong = {170, 0, 0, 255};
constexpr rgb_color kRight = {0, 110, 0, 255};
constexpr rgb_color kMatch = {200, 236, 196, 255};
constexpr rgb_color kWhite = {255, 255, 255, 255};
constexpr rgb_color kSelected = {184, 198, 222, 255};
constexpr rgb_color kGrey = {216, 216, 216, 255};
constexpr float kIndent = 4;
constexpr float kListBorder = 2;
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

/// Knows only its place.
class SumList::Row : public BListItem
{
public:
    Row(SumList* list, size_t place) : fList(list), fPlace(place) {}

    // BListItem
    void DrawItem(BView* /*owner*/, BRect frame, bool /*complete*/) override
    {
        fList->DrawRow(fPlace, frame, IsSelected());
    }
    void Update(BView* owner, const BFont* font) override
    {
        font_height height;
        font->GetHeight(&height);
        SetWidth(owner->Bounds().Width());
        SetHeight(std::ceil(height.ascent + height.descent));
        fList->fBaseline = std::ceil(height.ascent);
    }
    std::string SpokenText() const override { return fList->Spoken(fPlace); }

private:
    SumList* fList;
    size_t fPlace;
};

SumList::SumList(BRect frame, std::shared_ptr<const SumJob> job)
    : BListView(frame, "Sums", B_MULTIPLE_SELECTION_LIST, B_FOLLOW_ALL_SIDES,
                B_WILL_DRAW | B_FRAME_EVENTS | B_NAVIGABLE | B_FULL_UPDATE_ON_RESIZE),
      fJob(std::move(job))
{
}

SumList::~SumList()
{
    MakeEmpty();
}

void SumList::Refresh()
{
    const size_t count = fJob->Look().rows;
    if (count > fRows.size()) {
        BList added(static_cast<int32>(count - fRows.size()));
        while (fRows.size() < count) {
            fRows.push_back(std::make_unique<Row>(this, fRows.size()));
            added.AddItem(fRows.back().get());
        }
        AddList(&added);
    }
    Invalidate();
}

bool SumList::Mark(const std::string& sum)
{
    const size_t before = fMarked;
    fMarked = sum.empty() ? SIZE_MAX : fJob->FindSum(sum);
    if (fMarked != before) {
        Invalidate();
    }
    if (fMarked != before && fMarked < fRows.size()) {
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

void SumList::FrameResized(float width, float height)
{
    BListView::FrameResized(width, height);
    Invalidate(); // the second column moves
}

float SumList::SecondColumn(BRect frame)
{
    return std::floor(frame.left + frame.Width() * kNamesPart);
}

void SumList::DrawRow(size_t place, BRect frame, bool isSelected)
{
    SetLowColor(isSelected ? kSelected : place == fMarked ? kMatch : kWhite);
    FillRect(frame, B_SOLID_LOW);
    const SumRow row = fJob->RowAt(place);
    const float baseline = frame.top + fBaseline;
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

void SumList::DrawCut(const std::string& text, BPoint place, float width, rgb_color color)
{
    BString shown(add_ons::ShownName(text).c_str());
    TruncateString(&shown, B_TRUNCATE_MIDDLE, width);
    SetHighColor(color);
    DrawString(shown.String(), place);
}

std::string SumList::Spoken(size_t place) const
{
    const SumRow row = fJob->RowAt(place);
    return row.name + ", " + TextOf(row);
}

SumHeader::SumHeader(BRect frame)
    : BView(frame, "Header", B_FOLLOW_LEFT_RIGHT | B_FOLLOW_TOP,
            B_WILL_DRAW | B_FULL_UPDATE_ON_RESIZE)
{
    SetViewColor(kGrey);
    SetLowColor(kGrey);
}

void SumHeader::Draw(BRect /*updateRect*/)
{
    font_height height;
    GetFontHeight(&height);
    // The list's rows lie beside its scroll bar and within its border.
    BRect rows = Bounds().InsetByCopy(kListBorder, 0);
    rows.right -= B_V_SCROLL_BAR_WIDTH;
    const float baseline = std::ceil(height.ascent);
    SetHighColor(kText);
    DrawString("Name", BPoint(rows.left + kIndent, baseline));
    DrawString("SHA-256", BPoint(SumList::SecondColumn(rows), baseline));
}

} // namespace checksums
