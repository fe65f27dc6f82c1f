#include "panes/DirView.h"

#include "panes/TypeAhead.h"

#include <InterfaceDefs.h>
#include <Message.h>
#include <Window.h>

#include <memory>

// The keys that a pane understands. Those that are not used up here go on to the list.

namespace norvane {

int32 DirView::CurrentInt32(const char* field) const
{
    int32 value = 0;
    const BMessage* message = Window() != nullptr ? Window()->CurrentMessage() : nullptr;
    if (message != nullptr) {
        message->FindInt32(field, &value);
    }
    return value;
}

void DirView::KeyDown(const char* bytes, int32 byteCount)
{
    if (!HandleKey(bytes, byteCount)) {
        ColumnListView::KeyDown(bytes, byteCount);
    }
}

bool DirView::HandleKey(const char* bytes, int32 byteCount)
{
    const int32 last = CountItems() - 1;
    switch (bytes[0]) {
    case B_DELETE:
        if (!IsRepeat()) {
            Trash();
        }
        return false;
    case B_BACKSPACE:
        NavigateUp();
        return false;
    case B_SPACE:
        MarkSelected();
        GetSize();
        return true;
    case B_INSERT:
        MarkSelectedAndGoOn();
        return true;
    case '*':
        ToggleMarks(1, last);
        return true;
    case '+':
        Mark(1, last);
        return true;
    case '-':
        Unmark(1, last);
        return true;
    case B_FUNCTION_KEY:
        return HandleFunctionKey(CurrentInt32("key"));
    default:
        return TypeAhead(bytes, byteCount);
    }
}

void DirView::MarkSelected()
{
    if (CurrentSelection() > 0) {
        ToggleMark(CurrentSelection());
    }
}

void DirView::MarkSelectedAndGoOn()
{
    const int32 selected = CurrentSelection();
    if (selected <= 0) {
        return;
    }
    ToggleMark(selected);
    if (selected < CountItems() - 1) {
        Select(selected + 1);
        ScrollToSelection();
    }
}

bool DirView::IsRepeat() const
{
    return CurrentInt32("be:key_repeat") != 0;
}

bool DirView::HandleFunctionKey(int32 key)
{
    switch (key) {
    case B_F1_KEY:
        NotifyParent(kHelp);
        break;
    case B_F2_KEY:
        Refresh();
        break;
    case B_F5_KEY:
    case B_F6_KEY:
    case B_F7_KEY:
    case B_F8_KEY:
        // A key held too long must not start one operation after the other.
        if (!IsRepeat()) {
            StartOperation(key, static_cast<uint32>(CurrentInt32("modifiers")));
        }
        break;
    default:
        break;
    }
    return false;
}

void DirView::StartOperation(int32 key, uint32 held)
{
    switch (key) {
    case B_F5_KEY:
        StartCopy("Copy");
        break;
    case B_F6_KEY:
        if ((held & B_SHIFT_KEY) != 0) {
            DoRename();
        } else {
            StartCopy("Move");
        }
        break;
    case B_F7_KEY:
        Window()->PostMessage((held & B_CONTROL_KEY) != 0 ? kQuery : kNewFolder);
        break;
    case B_F8_KEY:
        Trash();
        break;
    default:
        break;
    }
}

void DirView::StartCopy(const char* type)
{
    if (Window() == nullptr || (fMarks.IsEmpty() && CurrentSelection() <= 0)) {
        return;
    }
    // With nothing marked the message carries the selected row.
    const std::unique_ptr<BMessage> message(GetRefMsg(-1));
    if (message == nullptr) {
        return;
    }
    message->AddString("Dragging", "false");
    message->AddString("Direction", "Right");
    message->AddString("TypeOfCopy", type);
    Window()->PostMessage(message.get());
}

bool DirView::TypeAhead(const char* bytes, int32 byteCount)
{
    const uint32 held = static_cast<uint32>(CurrentInt32("modifiers"));
    if ((held & (B_COMMAND_KEY | B_OPTION_KEY)) != 0 || !IsTypeAheadKey(bytes, byteCount)) {
        return false;
    }
    const int32 found = FindByFirstCharacter(fSource, bytes, byteCount, CurrentSelection());
    if (found >= 0) {
        Select(found);
        ScrollToSelection();
    }
    return true;
}

} // namespace norvane
