#include "RenameMany/RenameList.h"
#include "RenameMany/RenameWindow.h"
#include "common/DialogParts.h"

#include <Button.h>
#include <CheckBox.h>
#include <InterfaceDefs.h>
#include <MenuField.h>
#include <MenuItem.h>
#include <Message.h>
#include <MessageRunner.h>
#include <PopUpMenu.h>
#include <ScrollView.h>
#include <StringView.h>
#include <TextControl.h>

#include <algorithm>
#include <cmath>

// What is seen of the window.

namespace rename_many {

using namespace add_ons;

namespace {

constexpr float kWidth = 520;
constexpr float kHeight = 440;
constexpr float kLeastListHeight = 60;
constexpr bigtime_t kAnswersAfterFirstFrame = 200'000;
constexpr uint32 kAtTop = B_FOLLOW_LEFT | B_FOLLOW_TOP;
constexpr uint32 kAcross = B_FOLLOW_LEFT_RIGHT | B_FOLLOW_TOP;
constexpr uint32 kAtBottomRight = B_FOLLOW_RIGHT | B_FOLLOW_BOTTOM;

constexpr char kPlaceholders[] = "[N] name  [E] ending  [C] counter  [D] date";

const char* const kLabels[] = {
    "New name:", "Count from:", "Search for:", "Replace by:", "Letters:"};
const char* const kLetterChoices[] = {"As they are", "lower case", "UPPER CASE", "Title Case"};

BCheckBox* AddBox(BView* ground, float left, float top, const char* name, const char* label)
{
    auto* box = new BCheckBox(BRect(left, top, left + 10, top + FieldHeight()), name, label,
                              new BMessage(kRulesChanged), kAtTop);
    ground->AddChild(box);
    float width = 0;
    float height = 0;
    box->GetPreferredSize(&width, &height);
    box->ResizeTo(width, FieldHeight());
    return box;
}

/// As wide as so many digits and what a field has around them.
float DigitsWidth(int32 count)
{
    return std::ceil(TextWidth("0") * static_cast<float>(count)) + 12;
}

} // namespace

RenameWindow::RenameWindow(const std::vector<entry_ref>& refs)
    : BWindow(FrameOverActiveWindow(kWidth, kHeight), "RenameMany", B_TITLED_WINDOW,
              B_ASYNCHRONOUS_CONTROLS),
      fWorker(std::make_unique<RenameWorker>(refs, BMessenger(this)))
{
    SetAnswerDelay(kAnswersAfterFirstFrame, 0);
    BuildContents();
    SetState(State::kEditing);
    const status_t status = fWorker->Start();
    if (status == B_OK) {
        RulesChanged(true);
    } else {
        ShowSummary("The system has no threads left", true);
    }
}

void RenameWindow::BuildContents()
{
    fGround = MakeGround(Bounds(), "Ground");
    AddChild(fGround);
    for (const char* label : kLabels) {
        fDivider = std::max(fDivider, TextWidth(label) + kGap);
    }
    const float listTop = AddReplaceRows(AddNameRows(kEdge)) + kGap;
    const float buttonsTop = Bounds().bottom - kEdge - ButtonHeight();
    const float summaryTop = buttonsTop - kGap - LineHeight();
    AddNames(listTop, summaryTop - kRowGap);
    fSummary = AddLine(fGround,
                       BRect(kEdge, summaryTop, Bounds().right - kEdge, summaryTop + LineHeight()),
                       "Summary", "Looking at the entries…", B_FOLLOW_LEFT_RIGHT | B_FOLLOW_BOTTOM);
    AddButtons(buttonsTop);
    const float leastWidth =
        2 * kEdge + std::max(fDivider + TextWidth(kPlaceholders),
                             fNext->Bounds().Width() + fClose->Bounds().Width() +
                                 fRename->Bounds().Width() + 4 * kGap);
    SetSizeLimits(
        std::min(leastWidth, Bounds().Width()), 10'000,
        std::min(listTop + 3 * LineHeight() + kLeastListHeight + ButtonHeight(), Bounds().Height()),
        10'000);
}

float RenameWindow::AddNameRows(float top)
{
    const float right = Bounds().right - kEdge;
    const auto row = [&](float left, float end) {
        return BRect(left, top, end, top + FieldHeight());
    };
    fPattern = AddField(fGround, row(kEdge, right), "Pattern", kLabels[0], Rules().pattern.c_str(),
                        fDivider, kRulesChanged, kAcross);
    top += FieldHeight() + kRowGap;
    const float inside = kEdge + fDivider;
    const float explained = std::max(kEdge, std::min(inside, right - TextWidth(kPlaceholders)));
    AddLine(fGround, BRect(explained, top, right, top + LineHeight()), "Placeholders",
            kPlaceholders, kAcross);
    top += LineHeight() + kRowGap;
    fStart = AddField(fGround, row(kEdge, inside + DigitsWidth(5)), "Start", kLabels[1], "1",
                      fDivider, kRulesChanged, kAtTop);
    const auto addNext = [&](const BTextControl* before, const char* name, const char* label,
                             int32 digits) {
        const float left = before->Frame().right + kGap;
        const float divider = TextWidth(label) + kGap;
        return AddField(fGround, row(left, left + divider + DigitsWidth(digits)), name, label, "1",
                        divider, kRulesChanged, kAtTop);
    };
    fStep = addNext(fStart, "Step", "Step:", 3);
    fDigits = addNext(fStep, "Digits", "Digits:", 2);
    fInputs.insert(fInputs.end(), {fPattern, fStart, fStep, fDigits});
    return top + FieldHeight() + kRowGap;
}

float RenameWindow::AddReplaceRows(float top)
{
    const float right = Bounds().right - kEdge;
    const auto addField = [&](const char* name, const char* label) {
        BTextControl* field = AddField(fGround, BRect(kEdge, top, right, top + FieldHeight()), name,
                                       label, "", fDivider, kRulesChanged, kAcross);
        top += FieldHeight() + kRowGap;
        fInputs.push_back(field);
        return field;
    };
    fSearch = addField("Search", kLabels[2]);
    fReplacement = addField("Replacement", kLabels[3]);
    fIsExpression = AddBox(fGround, kEdge + fDivider, top, "IsExpression", "Regular expression");
    fInputs.push_back(fIsExpression);
    top += FieldHeight() + kRowGap;
    AddLetters(top);
    return top + FieldHeight();
}

void RenameWindow::AddLetters(float top)
{
    auto* menu = new BPopUpMenu("Letters");
    fLetters = menu;
    for (const char* choice : kLetterChoices) {
        menu->AddItem(new BMenuItem(choice, new BMessage(kRulesChanged)));
    }
    menu->ItemAt(0)->SetMarked(true);
    auto* field = new BMenuField(BRect(kEdge, top, kEdge + 2 * fDivider, top + FieldHeight()),
                                 "Letters", kLabels[4], menu, kAtTop);
    fGround->AddChild(field);
    field->SetDivider(fDivider);
    float width = 0;
    float height = 0;
    field->GetPreferredSize(&width, &height);
    field->ResizeTo(width, FieldHeight());
    fEndingToo = AddBox(fGround, field->Frame().right + 2 * kGap, top, "EndingToo", "Ending, too");
    fInputs.insert(fInputs.end(), {field, fEndingToo});
}

void RenameWindow::AddNames(float top, float bottom)
{
    const float right = Bounds().right - kEdge;
    const float border = 2;
    const BRect frame(kEdge + border, top + LineHeight() + 2 + border,
                      right - border - B_V_SCROLL_BAR_WIDTH, bottom - border);
    fList = new RenameList(frame);
    fGround->AddChild(new ColumnTitles(BRect(kEdge, top, right, top + LineHeight() + 1), *fList,
                                       "Name", "New name"));
    fGround->AddChild(new BScrollView("NamesScroll", fList, B_FOLLOW_ALL_SIDES, 0, false, true));
}

void RenameWindow::AddButtons(float top)
{
    const float right = Bounds().right - kEdge;
    // The one takes the other's place.
    fRename = AddButton(fGround, right, top, "Rename", "Rename", kDoRename, kAtBottomRight);
    fUndo = AddButton(fGround, right, top, "Undo", "Undo", kDoUndo, kAtBottomRight);
    const float width = std::max(fRename->Bounds().Width(), fUndo->Bounds().Width());
    for (BButton* button : {fRename, fUndo}) {
        button->MoveTo(right - width, top);
        button->ResizeTo(width, button->Bounds().Height());
    }
    fUndo->Hide();
    fClose =
        AddButton(fGround, right - width - kGap, top, "Close", "Close", kDoClose, kAtBottomRight);
    fNext = AddButton(fGround, kEdge + ButtonWidth("Next problem"), top, "Next", "Next problem",
                      kNextFault, B_FOLLOW_LEFT | B_FOLLOW_BOTTOM);
}

void RenameWindow::SetInputEnabled(BView* input, bool isEnabled)
{
    if (auto* control = dynamic_cast<BControl*>(input)) {
        control->SetEnabled(isEnabled);
    } else if (auto* field = dynamic_cast<BMenuField*>(input)) {
        field->SetEnabled(isEnabled);
    }
}

} // namespace rename_many
