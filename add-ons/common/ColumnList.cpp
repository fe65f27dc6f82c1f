#include "common/ColumnList.h"

#include "common/StatusText.h"

#include <Font.h>
#include <InterfaceDefs.h>
#include <List.h>
#include <ListItem.h>
#include <String.h>

#include <cmath>

namespace add_ons {

namespace {

constexpr rgb_color kText = {0, 0, 0, 255};
constexpr rgb_color kSelected = {184, 198, 222, 255};
constexpr rgb_color kGrey = {216, 216, 216, 255};
constexpr float kTitleIndent = 4;
constexpr float kListBorder = 2;

} // namespace

class ColumnList::Row : public BListItem
{
public:
    Row(ColumnList* list, size_t place) : fList(list), fPlace(place) {}

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
    ColumnList* fList;
    size_t fPlace;
};

ColumnList::ColumnList(BRect frame, const char* name, list_view_type type, float firstPart)
    : BListView(frame, name, type, B_FOLLOW_ALL_SIDES,
                B_WILL_DRAW | B_FRAME_EVENTS | B_NAVIGABLE | B_FULL_UPDATE_ON_RESIZE),
      fFirstPart(firstPart)
{
}

ColumnList::~ColumnList()
{
    MakeEmpty();
}

void ColumnList::SetCount(size_t count)
{
    if (count < fRows.size()) {
        MakeEmpty();
        fRows.clear();
    }
    BList added(static_cast<int32>(count - fRows.size()));
    while (fRows.size() < count) {
        fRows.push_back(std::make_unique<Row>(this, fRows.size()));
        added.AddItem(fRows.back().get());
    }
    if (added.CountItems() > 0) {
        AddList(&added);
    }
    Invalidate();
}

void ColumnList::FrameResized(float width, float height)
{
    BListView::FrameResized(width, height);
    Invalidate(); // the second column moves
}

float ColumnList::SecondColumn(BRect frame) const
{
    return std::floor(frame.left + frame.Width() * fFirstPart);
}

void ColumnList::DrawGround(BRect frame, bool isSelected, rgb_color color)
{
    SetLowColor(isSelected ? kSelected : color);
    FillRect(frame, B_SOLID_LOW);
}

void ColumnList::DrawCut(const std::string& text, BPoint place, float width, rgb_color color)
{
    BString shown(ShownName(text).c_str());
    TruncateString(&shown, B_TRUNCATE_MIDDLE, width);
    SetHighColor(color);
    DrawString(shown.String(), place);
}

ColumnTitles::ColumnTitles(BRect frame, const ColumnList& list, const char* first,
                           const char* second)
    : BView(frame, "Header", B_FOLLOW_LEFT_RIGHT | B_FOLLOW_TOP,
            B_WILL_DRAW | B_FULL_UPDATE_ON_RESIZE),
      fList(list), fFirst(first), fSecond(second)
{
    SetViewColor(kGrey);
    SetLowColor(kGrey);
}

void ColumnTitles::Draw(BRect /*updateRect*/)
{
    font_height height;
    GetFontHeight(&height);
    // The list's rows lie beside its scroll bar and within its border.
    BRect rows = Bounds().InsetByCopy(kListBorder, 0);
    rows.right -= B_V_SCROLL_BAR_WIDTH;
    const float baseline = std::ceil(height.ascent);
    SetHighColor(kText);
    DrawString(fFirst.c_str(), BPoint(rows.left + kTitleIndent, baseline));
    DrawString(fSecond.c_str(), BPoint(fList.SecondColumn(rows), baseline));
}

} // namespace add_ons
