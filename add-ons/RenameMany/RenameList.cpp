#include "RenameMany/RenameList.h"

#include "RenameMany/RenameTexts.h"
#include "common/DialogParts.h"
#include "common/StatusText.h"

#include <Font.h>
#include <InterfaceDefs.h>
#include <List.h>
#include <String.h>

#include <cmath>
#include <utility>

namespace rename_many {

namespace {

constexpr rgb_color kText = {0, 0, 0, 255};
constexpr rgb_color kFaint = {128, 128, 128, 255};
constexpr rgb_color kWrong = {170, 0, 0, 255};
constexpr rgb_color kWhite = {255, 255, 255, 255};
constexpr rgb_color kSelected = {184, 198, 222, 255};
constexpr rgb_color kGrey = {216, 216, 216, 255};
constexpr float kIndent = 4;
constexpr float kListBorder = 2;

} // namespace

/// Knows only its place: a hundred thousand of them are made at once.
class RenameList::Row : public BListItem
{
public:
    Row(RenameList* list, size_t place) : fList(list), fPlace(place) {}

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
    RenameList* fList;
    size_t fPlace;
};

RenameList::RenameList(BRect frame)
    : BListView(frame, "Names", B_SINGLE_SELECTION_LIST, B_FOLLOW_ALL_SIDES,
                B_WILL_DRAW | B_FRAME_EVENTS | B_NAVIGABLE | B_FULL_UPDATE_ON_RESIZE)
{
}

RenameList::~RenameList()
{
    MakeEmpty();
}

void RenameList::ShowNames(std::shared_ptr<const Preview> preview)
{
    fPreview = std::move(preview);
    const size_t count = fPreview != nullptr ? fPreview->names.size() : 0;
    if (count != fRows.size()) {
        MakeEmpty();
        fRows.clear();
        BList rows(static_cast<int32>(count));
        for (size_t place = 0; place < count; place++) {
            fRows.push_back(std::make_unique<Row>(this, place));
            rows.AddItem(fRows.back().get());
        }
        SetItems(&rows);
    }
    Invalidate();
}

bool RenameList::SelectNextFault()
{
    const size_t count = fPreview != nullptr ? fPreview->faults.size() : 0;
    const auto selected =
        static_cast<size_t>(CurrentSelection()) + 1; // the row below, or the first
    for (size_t step = 0; step < count; step++) {
        const size_t place = (selected + step) % count;
        if (fPreview->faults[place] != Fault::kNone) {
            Select(static_cast<int32>(place));
            ScrollToSelection();
            return true;
        }
    }
    return false;
}

void RenameList::FrameResized(float width, float height)
{
    BListView::FrameResized(width, height);
    Invalidate(); // the second column moves
}

float RenameList::SecondColumn(BRect frame)
{
    return std::floor((frame.left + frame.right) / 2);
}

void RenameList::DrawRow(size_t place, BRect frame, bool isSelected)
{
    SetLowColor(isSelected ? kSelected : kWhite);
    FillRect(frame, B_SOLID_LOW);
    if (fPreview == nullptr || place >= fPreview->names.size()) {
        return;
    }
    const Entry& entry = (*fPreview->entries)[place];
    const float baseline = frame.top + fBaseline;
    const float second = SecondColumn(frame);
    const float first = frame.left + kIndent;
    DrawCut(entry.name, BPoint(first, baseline), second - first - kIndent,
            entry.isGone ? kFaint : kText);
    float right = frame.right - kIndent;
    const Fault fault = fPreview->faults[place];
    const char* note = entry.isGone ? "no longer there" : FaultText(fault);
    if (note[0] != '\0') {
        // What is wrong has room before the name has.
        const float width = std::ceil(StringWidth(note));
        right -= width;
        DrawCut(note, BPoint(std::max(second, right), baseline), width,
                entry.isGone ? kFaint : kWrong);
        right -= add_ons::kGap;
    }
    if (right > second && !entry.isGone) {
        const bool isSame = fPreview->names[place] == entry.name;
        const rgb_color color = fault != Fault::kNone ? kWrong : isSame ? kFaint : kText;
        DrawCut(fPreview->names[place], BPoint(second, baseline), right - second, color);
    }
}

void RenameList::DrawCut(const std::string& text, BPoint place, float width, rgb_color color)
{
    BString shown(add_ons::ShownName(text).c_str());
    TruncateString(&shown, B_TRUNCATE_MIDDLE, width);
    SetHighColor(color);
    DrawString(shown.String(), place);
}

std::string RenameList::Spoken(size_t place) const
{
    if (fPreview == nullptr || place >= fPreview->names.size()) {
        return {};
    }
    std::string text = (*fPreview->entries)[place].name + ", " + fPreview->names[place];
    if (fPreview->faults[place] != Fault::kNone) {
        text += std::string(", ") + FaultText(fPreview->faults[place]);
    }
    return text;
}

RenameHeader::RenameHeader(BRect frame)
    : BView(frame, "Header", B_FOLLOW_LEFT_RIGHT | B_FOLLOW_TOP,
            B_WILL_DRAW | B_FULL_UPDATE_ON_RESIZE)
{
    SetViewColor(kGrey);
    SetLowColor(kGrey);
}

void RenameHeader::Draw(BRect /*updateRect*/)
{
    font_height height;
    GetFontHeight(&height);
    // The list's rows lie beside its scroll bar and within its border.
    BRect rows = Bounds().InsetByCopy(kListBorder, 0);
    rows.right -= B_V_SCROLL_BAR_WIDTH;
    const float baseline = std::ceil(height.ascent);
    SetHighColor(kText);
    DrawString("Name", BPoint(rows.left + kIndent, baseline));
    DrawString("New name", BPoint(RenameList::SecondColumn(rows), baseline));
}

} // namespace rename_many
