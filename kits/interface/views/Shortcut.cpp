#include "Shortcut.h"

#include <InterfaceDefs.h>
#include <Message.h>

#include <cctype>

namespace kits {

namespace {

std::string KeyName(char key)
{
    switch (key) {
    case B_UP_ARROW:
        return "Up";
    case B_DOWN_ARROW:
        return "Down";
    case B_LEFT_ARROW:
        return "Left";
    case B_RIGHT_ARROW:
        return "Right";
    case B_ENTER:
        return "Enter";
    case B_BACKSPACE:
        return "Backspace";
    case B_DELETE:
        return "Delete";
    case B_INSERT:
        return "Insert";
    case B_HOME:
        return "Home";
    case B_END:
        return "End";
    case B_PAGE_UP:
        return "PageUp";
    case B_PAGE_DOWN:
        return "PageDown";
    case B_TAB:
        return "Tab";
    case B_ESCAPE:
        return "Esc";
    case B_SPACE:
        return "Space";
    default:
        return std::string(1, static_cast<char>(std::toupper(static_cast<unsigned char>(key))));
    }
}

bool IsSameKey(const char* candidate, char shortcut)
{
    if (candidate[0] == '\0' || candidate[1] != '\0') {
        return false;
    }
    return std::toupper(static_cast<unsigned char>(candidate[0])) ==
           std::toupper(static_cast<unsigned char>(shortcut));
}

} // namespace

std::string ShortcutText(char shortcut, uint32 modifiers)
{
    std::string text = "Ctrl+";
    if ((modifiers & B_OPTION_KEY) != 0) {
        text += "Alt+";
    }
    if ((modifiers & B_SHIFT_KEY) != 0) {
        text += "Shift+";
    }
    return text + KeyName(shortcut);
}

int32 MatchShortcut(const BMessage& key, char shortcut, uint32 modifiers)
{
    int32 heldKeys = 0;
    key.FindInt32("modifiers", &heldKeys);
    const auto held = static_cast<uint32>(heldKeys);
    constexpr uint32 kExact = B_SHIFT_KEY | B_OPTION_KEY;
    if (shortcut == 0 || (held & B_COMMAND_KEY) == 0 || (held & kExact) != (modifiers & kExact)) {
        return -1;
    }
    const char* candidate = nullptr;
    int32 count = 0;
    for (; key.FindString("kits:shortcut", count, &candidate) == B_OK; count++) {
        if (IsSameKey(candidate, shortcut)) {
            return count;
        }
    }
    // Named keys are known by their byte alone.
    int8 byte = 0;
    const bool isNamed = shortcut < B_SPACE || shortcut == B_DELETE;
    return isNamed && key.FindInt8("byte", &byte) == B_OK && byte == shortcut ? count : -1;
}

} // namespace kits
