#include "query/QueryViews.h"

#include "MessageCodes.h"
#include "fileops/windows/DialogLayout.h"

#include <CheckBox.h>
#include <Font.h>
#include <MenuField.h>
#include <MenuItem.h>
#include <Message.h>
#include <PopUpMenu.h>
#include <StringView.h>
#include <TextControl.h>

#include <algorithm>
#include <cmath>
#include <span>

namespace norvane {

namespace {

constexpr rgb_color kGrey = {216, 216, 216, 255};
constexpr float kEdge = 8;
constexpr float kGap = 6;
constexpr float kIndent = 18; // of boxes that belong to the one above
constexpr float kFieldPadding = 6;
constexpr float kRowGap = 4;

struct Choice
{
    const char* label;
    uint32 what;
    int32 volumes = -1; // put into the message when it is not below 0
};

constexpr Choice kNameChoices[] = {{"contains", kNameContains},
                                   {"is not", kNameIsNot},
                                   {"is", kNameIs},
                                   {"starts with", kNameStartsWith},
                                   {"ends with", kNameEndsWith}};
constexpr Choice kVolumeChoices[] = {{"All BFS Volumes", kVolumesChoice, 0},
                                     {"Select Volume(s)", kVolumesChoice, 1}};
constexpr Choice kAgeChoices[] = {
    {"Hours", kHours}, {"Days", kDays}, {"Weeks", kWeeks}, {"Years", kYears}};
constexpr Choice kSizeChoices[] = {
    {" = ", kSizeEqual}, {" > ", kSizeAtLeast}, {" < ", kSizeAtMost}};
constexpr Choice kSizeUnits[] = {
    {"Bytes", kBytes}, {"Kilobytes", kKilobytes}, {"Megabytes", kMegabytes}};

float RowHeight()
{
    return LineHeight() + kFieldPadding;
}

float RowTop(int32 row)
{
    return kEdge + static_cast<float>(row) * (RowHeight() + kRowGap);
}

/// Adds a field for the choices, as wide as it has to be; returns where it ends.
float AddMenu(BView* page, float left, float top, const char* name, std::span<const Choice> choices,
              size_t chosen)
{
    auto* menu = new BPopUpMenu(name);
    for (const Choice& choice : choices) {
        auto message = std::make_unique<BMessage>(choice.what);
        if (choice.volumes >= 0) {
            message->AddInt32("Volumes", choice.volumes);
        }
        menu->AddItem(new BMenuItem(choice.label, message.release())); // adopted
    }
    menu->ItemAt(static_cast<int32>(chosen))->SetMarked(true);
    auto* field =
        new BMenuField(BRect(left, top, left + 10, top + RowHeight()), name, nullptr, menu);
    page->AddChild(field);
    float width = 0;
    float height = 0;
    field->GetPreferredSize(&width, &height);
    field->ResizeTo(width, RowHeight());
    return left + width;
}

/// Adds a box as wide as its label.
BCheckBox* AddBox(BView* page, float left, float top, const char* name, const char* label,
                  uint32 what = 0)
{
    auto* box = new BCheckBox(BRect(left, top, left + 10, top + RowHeight()), name, label,
                              what != 0 ? new BMessage(what) : nullptr);
    page->AddChild(box);
    float width = 0;
    float height = 0;
    box->GetPreferredSize(&width, &height);
    box->ResizeTo(width, RowHeight());
    return box;
}

BTextControl* AddField(BView* page, float left, float top, float right, const char* name)
{
    auto* field =
        new BTextControl(BRect(left, top, right, top + RowHeight()), name, nullptr, "", nullptr);
    page->AddChild(field);
    return field;
}

/// As wide as so many digits and what a field has around them.
float DigitsWidth(int32 count)
{
    return std::ceil(BFont().StringWidth("0") * static_cast<float>(count)) + 12;
}

} // namespace

GeneralView::GeneralView(BRect frame)
    : BView(frame, "General", B_FOLLOW_ALL_SIDES, B_WILL_DRAW | B_FULL_UPDATE_ON_RESIZE)
{
    SetViewColor(kGrey);
    const float right = Bounds().right - kEdge;
    const float nameLeft = AddMenu(this, kEdge, RowTop(0), "Name", kNameChoices, 0) + kGap;
    fName = AddField(this, nameLeft, RowTop(0), right, "Text1");
    AddMenu(this, kEdge, RowTop(1), "Volumes", kVolumeChoices, 0);
    AddBox(this, kEdge, RowTop(2), "Archives", "Search Archives (ZIP,TAR,GZ)");
    fFindText = AddBox(this, kEdge, RowTop(3), "FindText", "Find Text:");
    fText = AddField(this, fFindText->Frame().right + kGap, RowTop(3), right, "TextToFind");
    const BCheckBox* words =
        AddBox(this, kEdge + kIndent, RowTop(4), "WholeWords", "Whole Words Only");
    AddBox(this, words->Frame().right + 2 * kGap, RowTop(4), "CaseSensative", "Case Sensative");
    AddBox(this, kEdge + kIndent, RowTop(5), "ASCII", "ASCII Charset");
}

void GeneralView::FocusName()
{
    fName->MakeFocus(true);
}

void GeneralView::Tell(QueryCriteria* criteria) const
{
    criteria->name = fName->Text();
}

bool GeneralView::SearchesText() const
{
    return fFindText->Value() != B_CONTROL_OFF;
}

const char* GeneralView::Text() const
{
    return fText->Text();
}

AdvancedView::AdvancedView(BRect frame)
    : BView(frame, "Advanced", B_FOLLOW_ALL_SIDES, B_WILL_DRAW | B_FULL_UPDATE_ON_RESIZE)
{
    SetViewColor(kGrey);
    fBetween = AddBox(this, kEdge, RowTop(0), "DateBetween", "Date Between", kDateChoice);
    const float dateLeft = fBetween->Frame().right + kGap;
    fFirst = AddDate(dateLeft, RowTop(0), {"Date1m", "Date1d", "Date1y"});
    auto* caption = new BStringView(
        BRect(kEdge, RowTop(1), dateLeft - kGap, RowTop(1) + RowHeight()), "And", "And");
    caption->SetAlignment(B_ALIGN_RIGHT);
    AddChild(caption);
    fSecond = AddDate(dateLeft, RowTop(1), {"Date2m", "Date2d", "Date2y"});

    fNotOlder = AddBox(this, kEdge, RowTop(2), "NotOlderThan", "Not Older Than", kDateChoice);
    const float ageLeft = fNotOlder->Frame().right + kGap;
    fAge = AddField(this, ageLeft, RowTop(2), ageLeft + DigitsWidth(6), "TextControl");
    AddMenu(this, fAge->Frame().right + kGap, RowTop(2), "Units", kAgeChoices, 1);

    fHasSize = AddBox(this, kEdge, RowTop(3), "FileSize", "File Size");
    const float sizeLeft = AddMenu(this, fHasSize->Frame().right + kGap, RowTop(3),
                                   "FileSizeOperators", kSizeChoices, 2) +
                           kGap;
    fSize = AddField(this, sizeLeft, RowTop(3), sizeLeft + DigitsWidth(8), "FileSize");
    AddMenu(this, fSize->Frame().right + kGap, RowTop(3), "FileSizeUnits", kSizeUnits, 1);
}

AdvancedView::DateFields AdvancedView::AddDate(float left, float top,
                                               const std::array<const char*, 3>& names)
{
    DateFields fields{};
    fields.month = AddField(this, left, top, left + DigitsWidth(2), names[0]);
    left = fields.month->Frame().right + kGap;
    fields.day = AddField(this, left, top, left + DigitsWidth(2), names[1]);
    left = fields.day->Frame().right + kGap;
    fields.year = AddField(this, left, top, left + DigitsWidth(4), names[2]);
    return fields;
}

QueryCriteria::Date AdvancedView::DateFields::Date() const
{
    return {month->Text(), day->Text(), year->Text()};
}

void AdvancedView::Tell(QueryCriteria* criteria) const
{
    criteria->isDateBetween = fBetween->Value() != B_CONTROL_OFF;
    criteria->first = fFirst.Date();
    criteria->second = fSecond.Date();
    criteria->isNotOlderThan = fNotOlder->Value() != B_CONTROL_OFF;
    criteria->age = fAge->Text();
    criteria->hasSize = fHasSize->Value() != B_CONTROL_OFF;
    criteria->size = fSize->Text();
}

void AdvancedView::DateChoiceChanged(const void* source)
{
    if (source == fNotOlder) {
        fBetween->SetValue(B_CONTROL_OFF);
    } else if (source == fBetween) {
        fNotOlder->SetValue(B_CONTROL_OFF);
    }
}

LoadSaveView::LoadSaveView(BRect frame) : BView(frame, "Load/Save", B_FOLLOW_ALL_SIDES, B_WILL_DRAW)
{
    SetViewColor(kGrey);
}

} // namespace norvane
