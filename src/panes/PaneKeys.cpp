#include "panes/PaneKeys.h"

#include "MessageCodes.h"
#include "clv/ColumnListView.h"
#include "panes/PaneMarks.h"
#include "panes/PaneRows.h"
#include "panes/PatternMarking.h"
#include "panes/TypeAhead.h"

#include <InterfaceDefs.h>
#include <Message.h>
#include <ScrollBar.h>
#include <Window.h>

#include <algorithm>
#include <cmath>
#include <memory>

namespace norvane {

namespace {

PaneCommand FunctionOf(const KeyPress& key)
{
    switch (key.functionKey) {
    case B_F1_KEY:
        return PaneCommand::kHelp;
    case B_F2_KEY:
        return PaneCommand::kRefresh;
    case B_F3_KEY:
        return PaneCommand::kLister;
    case B_F4_KEY:
        return PaneCommand::kEditor;
    case B_F5_KEY:
        return PaneCommand::kCopy;
    case B_F6_KEY:
        return (key.modifiers & B_SHIFT_KEY) != 0 ? PaneCommand::kRename : PaneCommand::kMove;
    case B_F7_KEY:
        return (key.modifiers & B_CONTROL_KEY) != 0 ? PaneCommand::kQuery : PaneCommand::kNewFolder;
    case B_F8_KEY:
        return PaneCommand::kTrash;
    case B_F10_KEY:
        return (key.modifiers & B_SHIFT_KEY) != 0 ? PaneCommand::kMenu : PaneCommand::kNone;
    default:
        return PaneCommand::kNone;
    }
}

bool IsWith(const KeyPress& key, uint32 modifiers)
{
    return (key.modifiers & modifiers) != 0;
}

KeyMeaning PlusMeaning(const KeyPress& key)
{
    const bool isAsked = IsWith(key, B_COMMAND_KEY);
    return {isAsked ? PaneCommand::kMarkMatching : PaneCommand::kMarkAll, true};
}

KeyMeaning MinusMeaning(const KeyPress& key)
{
    const bool isAsked = IsWith(key, B_COMMAND_KEY);
    return {isAsked ? PaneCommand::kUnmarkMatching : PaneCommand::kUnmarkAll, true};
}

KeyMeaning SlashMeaning(const KeyPress& key)
{
    return IsWith(key, B_COMMAND_KEY | B_OPTION_KEY) ? KeyMeaning{}
                                                     : KeyMeaning{PaneCommand::kFilter, true};
}

/// Of a key that moves the cursor.
KeyMeaning MoveMeaning(const KeyPress& key)
{
    const bool marks =
        IsWith(key, B_SHIFT_KEY) && !IsWith(key, B_COMMAND_KEY | B_OPTION_KEY | B_CONTROL_KEY);
    return marks ? KeyMeaning{PaneCommand::kMarkTo, true} : KeyMeaning{};
}

KeyMeaning CharacterMeaning(const KeyPress& key)
{
    const bool isTyped =
        !IsWith(key, B_COMMAND_KEY | B_OPTION_KEY) && IsTypeAheadKey(key.bytes, key.byteCount);
    return isTyped ? KeyMeaning{PaneCommand::kTypeAhead, true} : KeyMeaning{};
}

/// With Alt alone they go where the list was before; else they are the list's.
KeyMeaning ArrowMeaning(const KeyPress& key, PaneCommand command)
{
    constexpr uint32 kHeld = B_SHIFT_KEY | B_COMMAND_KEY | B_CONTROL_KEY | B_OPTION_KEY;
    return (key.modifiers & kHeld) == B_OPTION_KEY ? KeyMeaning{command, true} : KeyMeaning{};
}

KeyMeaning PageMeaning(const KeyPress& key, PaneCommand sideways)
{
    return IsWith(key, B_COMMAND_KEY) ? KeyMeaning{sideways, true} : MoveMeaning(key);
}

/// Whether a key that is held too long may do it again and again.
bool MayRepeat(PaneCommand command)
{
    switch (command) {
    case PaneCommand::kTrash:
    case PaneCommand::kLister:
    case PaneCommand::kEditor:
    case PaneCommand::kCopy:
    case PaneCommand::kMove:
    case PaneCommand::kRename:
    case PaneCommand::kNewFolder:
    case PaneCommand::kQuery:
    case PaneCommand::kStop:
    case PaneCommand::kMarkMatching:
    case PaneCommand::kUnmarkMatching:
    case PaneCommand::kProperties:
    case PaneCommand::kMenu:
        return false;
    default:
        return true;
    }
}

KeyMeaning MeaningOfFirst(const KeyPress& key)
{
    switch (key.bytes[0]) {
    case B_DELETE:
        return {PaneCommand::kTrash, false};
    case B_BACKSPACE:
        return {PaneCommand::kUp, false};
    case B_LEFT_ARROW:
        return ArrowMeaning(key, PaneCommand::kBack);
    case B_RIGHT_ARROW:
        return ArrowMeaning(key, PaneCommand::kForward);
    case B_ESCAPE:
        return {PaneCommand::kStop, false};
    case B_ENTER:
        // Alone it is the list's: it opens the row.
        return IsWith(key, B_OPTION_KEY) ? KeyMeaning{PaneCommand::kProperties, true}
                                         : KeyMeaning{};
    case B_SPACE:
        return {PaneCommand::kMarkAndMeasure, true};
    case B_INSERT:
        return {PaneCommand::kMarkAndGoOn, true};
    case B_PAGE_UP:
        return PageMeaning(key, PaneCommand::kScrollLeft);
    case B_PAGE_DOWN:
        return PageMeaning(key, PaneCommand::kScrollRight);
    case '*':
        return {PaneCommand::kToggleMarks, true};
    case '+':
        return PlusMeaning(key);
    case '-':
        return MinusMeaning(key);
    case '/':
        return SlashMeaning(key);
    case B_UP_ARROW:
    case B_DOWN_ARROW:
    case B_HOME:
    case B_END:
        return MoveMeaning(key);
    case B_FUNCTION_KEY:
        return {FunctionOf(key), false};
    default:
        return CharacterMeaning(key);
    }
}

} // namespace

KeyMeaning MeaningOf(const KeyPress& key)
{
    KeyMeaning meaning = MeaningOfFirst(key);
    if (key.isRepeat && !MayRepeat(meaning.command)) {
        meaning.command = PaneCommand::kNone;
    }
    return meaning;
}

bool PaneKeys::KeyDown(const KeyPress& key)
{
    const KeyMeaning meaning = MeaningOf(key);
    if (meaning.command != PaneCommand::kMarkTo) {
        fRange.End();
    }
    CarryOut(meaning.command, key);
    return meaning.isUsedUp;
}

void PaneKeys::CarryOut(PaneCommand command, const KeyPress& key)
{
    switch (command) {
    case PaneCommand::kNone:
        break;
    case PaneCommand::kTrash:
        fTarget.Trash();
        break;
    case PaneCommand::kUp:
        fTarget.NavigateUp();
        break;
    case PaneCommand::kBack:
        fTarget.GoBack();
        break;
    case PaneCommand::kForward:
        fTarget.GoForward();
        break;
    case PaneCommand::kHelp:
        fTarget.NotifyParent(kHelp);
        break;
    case PaneCommand::kRefresh:
        fTarget.Refresh();
        break;
    case PaneCommand::kLister:
        fTarget.OpenLister();
        break;
    case PaneCommand::kEditor:
        fTarget.OpenEditor();
        break;
    case PaneCommand::kCopy:
        StartCopy("Copy");
        break;
    case PaneCommand::kMove:
        StartCopy("Move");
        break;
    case PaneCommand::kRename:
        fTarget.DoRename();
        break;
    case PaneCommand::kNewFolder:
        Post(kNewFolder);
        break;
    case PaneCommand::kQuery:
        Post(kQuery);
        break;
    case PaneCommand::kTypeAhead:
        TypeAhead(key);
        break;
    case PaneCommand::kProperties:
        Post(kShowProperties);
        break;
    case PaneCommand::kMenu:
        fTarget.OpenRowMenu();
        break;
    case PaneCommand::kScrollLeft:
        ScrollSideways(-1);
        break;
    case PaneCommand::kScrollRight:
        ScrollSideways(1);
        break;
    case PaneCommand::kStop:
        Stop();
        break;
    case PaneCommand::kFilter:
        fTarget.OpenFilter();
        break;
    default:
        ChangeMarks(command, key);
    }
}

void PaneKeys::ChangeMarks(PaneCommand command, const KeyPress& key)
{
    // The first row is "..", which is never marked; without one it is left out all the same.
    constexpr int32 kFirstMarked = 1;
    const int32 last = fRows.CountRows() - 1;
    switch (command) {
    case PaneCommand::kMarkAndMeasure:
        MarkSelected();
        fTarget.GetSize();
        break;
    case PaneCommand::kMarkAndGoOn:
        MarkSelectedAndGoOn();
        break;
    case PaneCommand::kToggleMarks:
        fMarks.ToggleAll(kFirstMarked, last);
        break;
    case PaneCommand::kMarkAll:
        fMarks.Mark(kFirstMarked, last);
        break;
    case PaneCommand::kUnmarkAll:
        fMarks.Unmark(kFirstMarked, last);
        break;
    case PaneCommand::kMarkTo:
        MarkTo(key);
        break;
    case PaneCommand::kMarkMatching:
        AskForPattern(fList, PatternUse::kMark);
        break;
    case PaneCommand::kUnmarkMatching:
        AskForPattern(fList, PatternUse::kUnmark);
        break;
    default:
        break;
    }
}

void PaneKeys::MarkSelected()
{
    if (fList.CurrentSelection() > 0) {
        fMarks.Toggle(fList.CurrentSelection());
    }
}

void PaneKeys::MarkSelectedAndGoOn()
{
    const int32 selected = fList.CurrentSelection();
    if (selected <= 0) {
        return;
    }
    fMarks.Toggle(selected);
    if (selected < fRows.CountRows() - 1) {
        fList.Select(selected + 1);
        fList.ScrollToSelection();
    }
}

/// The list moves its cursor as it does without Shift.
void PaneKeys::MarkTo(const KeyPress& key)
{
    const int32 from = fList.CurrentSelection();
    fList.ColumnListView::KeyDown(key.bytes, key.byteCount);
    fRange.Moved(from, fList.CurrentSelection());
}

/// What is nearest to a person's eye comes first.
void PaneKeys::Stop()
{
    if (!fTarget.EndFilter() && !fTarget.CancelWork()) {
        Post(kStopOperation);
    }
}

void PaneKeys::StartCopy(const char* type)
{
    if (fList.Window() == nullptr || (fMarks.IsEmpty() && fList.CurrentSelection() <= 0)) {
        return;
    }
    // With nothing marked the message carries the selected row.
    const std::unique_ptr<BMessage> message(fTarget.GetRefMsg(-1));
    if (message == nullptr) {
        return;
    }
    message->AddString("Dragging", "false");
    message->AddString("Direction", "Right");
    message->AddString("TypeOfCopy", type);
    fList.Window()->PostMessage(message.get());
}

void PaneKeys::TypeAhead(const KeyPress& key)
{
    const int32 found =
        FindByFirstCharacter(fRows, key.bytes, key.byteCount, fList.CurrentSelection());
    if (found >= 0) {
        fList.Select(found);
        fList.ScrollToSelection();
    }
}

/// By most of the width, so that what was at one edge is seen at the other.
void PaneKeys::ScrollSideways(float direction)
{
    constexpr float kShare = 0.8f;
    if (BScrollBar* bar = fList.ScrollBar(B_HORIZONTAL)) {
        float least = 0;
        float most = 0;
        bar->GetRange(&least, &most);
        const float step = std::floor(fList.Bounds().Width() * kShare);
        bar->SetValue(std::clamp(bar->Value() + direction * step, least, most));
    }
}

void PaneKeys::Post(uint32 code)
{
    if (fList.Window() != nullptr) {
        fList.Window()->PostMessage(code);
    }
}

} // namespace norvane
