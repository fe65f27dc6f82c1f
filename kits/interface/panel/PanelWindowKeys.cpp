#include "PanelList.h"
#include "PanelWindow.h"

#include <InterfaceDefs.h>
#include <Message.h>
#include <TextControl.h>
#include <TextView.h>

// The keys of a panel: all can be done with them.

namespace kits {

void PanelWindow::DispatchMessage(BMessage* message, BHandler* target)
{
    if (message->what != B_KEY_DOWN || !TakeKey(*message, target)) {
        BWindow::DispatchMessage(message, target);
    }
}

/// Keys in the field or the list that mean the panel.
bool PanelWindow::TakeKey(const BMessage& key, const BHandler* target)
{
    int8 byte = 0;
    const auto modifiers = static_cast<uint32>(key.GetInt32("modifiers", 0));
    if (key.FindInt8("byte", &byte) != B_OK) {
        return false;
    }
    CatchUp();
    if (byte == B_ESCAPE) {
        if (fField->TextLength() == 0) {
            Cancel();
            return true;
        }
        fField->SetText("");
        TypedSomething();
        fField->MakeFocus(true);
        return true;
    }
    const bool isInField = target == fField->TextView();
    if (!isInField && target != fList) {
        return false;
    }
    switch (byte) {
    case B_ENTER:
        Accept(false);
        return true;
    case B_BACKSPACE:
        if (fField->TextLength() == 0) {
            Up();
            return true;
        }
        return false;
    default:
        return isInField && MoveInList(byte, modifiers);
    }
}

bool PanelWindow::MoveInList(int8 byte, uint32 modifiers)
{
    if (byte == B_UP_ARROW && (modifiers & (B_COMMAND_KEY | B_OPTION_KEY)) != 0) {
        Up();
        return true;
    }
    const bool isEnd = byte == B_HOME || byte == B_END; // a text that is there has its own
    if (byte != B_UP_ARROW && byte != B_DOWN_ARROW && byte != B_PAGE_UP && byte != B_PAGE_DOWN &&
        !(isEnd && fField->TextLength() == 0)) {
        return false;
    }
    const char bytes[2] = {static_cast<char>(byte), '\0'};
    fList->KeyDown(bytes, 1);
    return true;
}

} // namespace kits
