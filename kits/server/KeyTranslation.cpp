#include "KeyTranslation.h"

#include <InputConstants.h>

#include <QChar>

#include <algorithm>
#include <array>
#include <utility>

namespace kits {

namespace {

// The system's scan codes are the kernel's numbers plus eight.
constexpr uint32 kScanOffset = 8;

// The lock bits of the native modifiers, the same on every X server and on Wayland.
constexpr uint32 kNativeCapsLock = 0x02;
constexpr uint32 kNativeNumLock = 0x10;

// Position (kernel number) to the platform's key number, for the main block; 0 where it has none.
constexpr std::array<uint8, 128> kKeyNumbers = {
    0,    0x01, 0x12, 0x13, 0x14, 0x15, 0x16, 0x17, 0x18, 0x19, 0x1a, 0x1b, // Escape, 1 to 0
    0x1c, 0x1d, 0x1e, 0x26,                                                 // - = backspace tab
    0x27, 0x28, 0x29, 0x2a, 0x2b, 0x2c, 0x2d, 0x2e, 0x2f, 0x30, 0x31, 0x32, // Q to ]
    0x47, 0x5c,                                                             // return, left Ctrl
    0x3c, 0x3d, 0x3e, 0x3f, 0x40, 0x41, 0x42, 0x43, 0x44, 0x45, 0x46, 0x11, // A to ` (grave)
    0x4b, 0x33,                                                             // left Shift, backslash
    0x4c, 0x4d, 0x4e, 0x4f, 0x50, 0x51, 0x52, 0x53, 0x54, 0x55, 0x56,       // Z to right Shift
    0x24, 0x5d, 0x5e, 0x3b,                                     // keypad *, left Alt, space, Caps
    0x02, 0x03, 0x04, 0x05, 0x06, 0x07, 0x08, 0x09, 0x0a, 0x0b, // F1 to F10
    0x22, 0x0f,                                                 // Num, Scroll
    0x37, 0x38, 0x39, 0x25, 0x48, 0x49, 0x4a, 0x3a,             // keypad 7 8 9 - 4 5 6 +
    0x58, 0x59, 0x5a, 0x64, 0x65, 0,    0,                      // keypad 1 2 3 0 .
    0x69, 0x0c, 0x0d, 0,    0,    0,    0,    0,    0,    0,    // the 102nd key, F11, F12
    0x5b, 0x60, 0x23, 0x0e, 0x5f, 0, // keypad enter, right Ctrl, keypad /, Print, right Alt
    0x20, 0x57, 0x21, 0x61, 0x63, 0x35, 0x62, 0x36, 0x1f, 0x34, // Home to Delete
    0,    0,    0,    0,    0,    0,    0,    0x10,             // Pause
    0,    0,    0,    0,    0,    0x66, 0x67, 0x68,             // the two logo keys, Menu
};

struct NamedKey
{
    int key;
    char byte;
};

// Keys whose text says nothing, or not the same with every modifier.
constexpr NamedKey kNamedKeys[] = {
    {Qt::Key_Escape, B_ESCAPE},   {Qt::Key_Tab, B_TAB},
    {Qt::Key_Backtab, B_TAB},     {Qt::Key_Backspace, B_BACKSPACE},
    {Qt::Key_Return, B_ENTER},    {Qt::Key_Enter, B_ENTER},
    {Qt::Key_Insert, B_INSERT},   {Qt::Key_Delete, B_DELETE},
    {Qt::Key_Home, B_HOME},       {Qt::Key_End, B_END},
    {Qt::Key_PageUp, B_PAGE_UP},  {Qt::Key_PageDown, B_PAGE_DOWN},
    {Qt::Key_Left, B_LEFT_ARROW}, {Qt::Key_Right, B_RIGHT_ARROW},
    {Qt::Key_Up, B_UP_ARROW},     {Qt::Key_Down, B_DOWN_ARROW},
    {Qt::Key_Space, B_SPACE},
};

struct SideKey
{
    uint32 position; // kernel number
    uint32 sides;
};

constexpr SideKey kSideKeys[] = {
    {42, B_LEFT_SHIFT_KEY},
    {54, B_RIGHT_SHIFT_KEY},
    {29, B_LEFT_COMMAND_KEY | B_LEFT_CONTROL_KEY},
    {97, B_RIGHT_COMMAND_KEY | B_RIGHT_CONTROL_KEY},
    {56, B_LEFT_OPTION_KEY},
    {100, B_RIGHT_OPTION_KEY},
    {127, B_MENU_KEY},
};

// What a US keyboard prints at a position; only letters and digits, anything else gives 0.
char UsCharacter(uint32 scanCode)
{
    struct Row
    {
        uint32 first;
        const char* characters;
    };
    constexpr Row kRows[] = {
        {2, "1234567890"}, {16, "QWERTYUIOP"}, {30, "ASDFGHJKL"}, {44, "ZXCVBNM"}};
    const uint32 position = scanCode - kScanOffset;
    for (const Row& row : kRows) {
        const std::string_view characters(row.characters);
        if (position >= row.first && position < row.first + characters.size()) {
            return characters[position - row.first];
        }
    }
    return 0;
}

bool IsCharacterKey(int key)
{
    return key >= 0x20 && key < Qt::Key_Escape && key != 0x7f;
}

std::string Utf8(int character)
{
    const char32_t value = static_cast<char32_t>(character);
    return QString::fromUcs4(&value, 1).toStdString();
}

bool IsOfForeignScript(int character)
{
    const QChar::Script script = QChar::script(static_cast<char32_t>(character));
    return script != QChar::Script_Latin && script != QChar::Script_Common &&
           script != QChar::Script_Inherited;
}

std::vector<std::string> ShortcutCandidates(const NativeKey& key)
{
    std::vector<std::string> candidates;
    const auto add = [&candidates](const std::string& candidate) {
        if (std::find(candidates.begin(), candidates.end(), candidate) == candidates.end()) {
            candidates.push_back(candidate);
        }
    };
    if (IsCharacterKey(key.key)) {
        add(Utf8(key.key));
    }
    const char printed = UsCharacter(key.scanCode);
    const bool isKeypad = (key.modifiers & Qt::KeypadModifier) != 0;
    if (printed == 0 || isKeypad) {
        return candidates;
    }
    // French top rows give digits with Shift only, and Shift+2 is "@" on others: the digit is meant
    // all the same. A letter is taken by its position only where the layout has no Latin letters at
    // all.
    const bool isDigit = printed >= '0' && printed <= '9';
    if (isDigit || (IsCharacterKey(key.key) && IsOfForeignScript(key.key))) {
        add(std::string(1, printed));
    }
    return candidates;
}

const NamedKey* FindNamed(int key)
{
    const auto found = std::find_if(std::begin(kNamedKeys), std::end(kNamedKeys),
                                    [key](const NamedKey& named) { return named.key == key; });
    return found == std::end(kNamedKeys) ? nullptr : found;
}

// F1 to F12, Print, Scroll and Pause have numbers that mean the key wherever it sits.
int32 FunctionKeyNumber(int key)
{
    if (key >= Qt::Key_F1 && key <= Qt::Key_F12) {
        return B_F1_KEY + (key - Qt::Key_F1);
    }
    switch (key) {
    case Qt::Key_Print:
    case Qt::Key_SysReq:
        return B_PRINT_KEY;
    case Qt::Key_ScrollLock:
        return B_SCROLL_KEY;
    case Qt::Key_Pause:
        return B_PAUSE_KEY;
    default:
        return 0;
    }
}

// The Menu key is known by its meaning: at its position some layouts have another key.
int32 NumberOf(const NativeKey& key)
{
    constexpr int32 kMenuKey = 0x68;
    if (key.key == Qt::Key_Menu) {
        return kMenuKey;
    }
    const int32 number = KeyNumber(key.scanCode);
    return number == kMenuKey ? 0 : number;
}

int LowerCase(int character)
{
    return static_cast<int>(QChar::toLower(static_cast<char32_t>(character)));
}

// What the key gives with no modifier, as far as the system tells.
int32 RawCharacter(const NativeKey& key)
{
    if (!IsCharacterKey(key.key)) {
        return 0;
    }
    const char printed = UsCharacter(key.scanCode);
    const bool isAsciiDigit = printed >= '0' && printed <= '9';
    const bool isShifted = (key.modifiers & Qt::ShiftModifier) != 0;
    if (isAsciiDigit && isShifted && (key.modifiers & Qt::KeypadModifier) == 0) {
        return printed;
    }
    return LowerCase(key.key);
}

bool IsPrintable(const QString& text)
{
    return !text.isEmpty() && text.at(0).unicode() >= 0x20 && text.at(0).unicode() != 0x7f;
}

std::string CharacterBytes(const NativeKey& key)
{
    // With Ctrl the text is a control byte on some keys and the character on others: it is not
    // looked at.
    if ((key.modifiers & Qt::ControlModifier) != 0) {
        if (!IsCharacterKey(key.key)) {
            return {};
        }
        const bool isShifted = (key.modifiers & Qt::ShiftModifier) != 0;
        return Utf8(isShifted ? key.key : LowerCase(key.key));
    }
    if (IsPrintable(key.text)) {
        return key.text.toStdString();
    }
    return {};
}

} // namespace

int32 KeyNumber(uint32 scanCode)
{
    const uint32 position = scanCode - kScanOffset;
    return position < kKeyNumbers.size() ? kKeyNumbers[position] : 0;
}

bool IsModifierKey(int key)
{
    switch (key) {
    case Qt::Key_Shift:
    case Qt::Key_Control:
    case Qt::Key_Alt:
    case Qt::Key_AltGr:
    case Qt::Key_Meta:
    case Qt::Key_Super_L:
    case Qt::Key_Super_R:
    case Qt::Key_Hyper_L:
    case Qt::Key_Hyper_R:
    case Qt::Key_CapsLock:
    case Qt::Key_NumLock:
    case Qt::Key_Mode_switch:
        return true;
    default:
        return false;
    }
}

bool LoneAlt::Changed(uint32 before, uint32 now, uint64 when, uint64 taken)
{
    constexpr uint32 kHeld = B_SHIFT_KEY | B_COMMAND_KEY | B_CONTROL_KEY | B_OPTION_KEY;
    if (before == now) {
        return false; // a repeat
    }
    const bool wasAlone = fIsDown && (before & kHeld) == B_OPTION_KEY && (now & kHeld) == 0 &&
                          (taken == 0 || taken < fPressed);
    fIsDown = (before & kHeld) == 0 && (now & kHeld) == B_OPTION_KEY;
    fPressed = when;
    return wasAlone;
}

int32 KeyCode(const NativeKey& key)
{
    // Scan codes stay far below this bit.
    constexpr int32 kByMeaning = 0x40000000;
    return key.scanCode != 0 ? static_cast<int32>(key.scanCode) : (key.key | kByMeaning);
}

PlatformKey TranslateKey(const NativeKey& key)
{
    PlatformKey result;
    result.key = NumberOf(key);
    const int32 function = FunctionKeyNumber(key.key);
    if (function != 0) {
        result.key = function;
        result.bytes = std::string(1, B_FUNCTION_KEY);
        return result;
    }
    if (const NamedKey* named = FindNamed(key.key)) {
        result.bytes = std::string(1, named->byte);
        result.rawChar = static_cast<uint8>(named->byte);
        return result;
    }
    result.bytes = CharacterBytes(key);
    result.rawChar = RawCharacter(key);
    result.shortcuts = ShortcutCandidates(key);
    return result;
}

void ModifierSides::Changed(uint32 scanCode, bool isPressed)
{
    for (const SideKey& side : kSideKeys) {
        if (side.position + kScanOffset == scanCode) {
            fHeld = isPressed ? fHeld | side.sides : fHeld & ~side.sides;
        }
    }
}

uint32 ModifierSides::Modifiers(Qt::KeyboardModifiers modifiers, uint32 nativeModifiers) const
{
    uint32 result = fHeld & B_MENU_KEY;
    if ((modifiers & Qt::ShiftModifier) != 0) {
        result |= B_SHIFT_KEY | (fHeld & (B_LEFT_SHIFT_KEY | B_RIGHT_SHIFT_KEY));
    }
    if ((modifiers & Qt::ControlModifier) != 0) {
        constexpr uint32 kSides =
            B_LEFT_COMMAND_KEY | B_LEFT_CONTROL_KEY | B_RIGHT_COMMAND_KEY | B_RIGHT_CONTROL_KEY;
        result |= B_COMMAND_KEY | B_CONTROL_KEY | (fHeld & kSides);
    }
    if ((modifiers & Qt::AltModifier) != 0) {
        result |= B_OPTION_KEY | (fHeld & (B_LEFT_OPTION_KEY | B_RIGHT_OPTION_KEY));
    }
    if ((nativeModifiers & kNativeCapsLock) != 0) {
        result |= B_CAPS_LOCK;
    }
    if ((nativeModifiers & kNativeNumLock) != 0) {
        result |= B_NUM_LOCK;
    }
    return result;
}

} // namespace kits
