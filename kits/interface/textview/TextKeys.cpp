#include "TextViewState.h"

#include <AppDefs.h>
#include <Clipboard.h>
#include <InterfaceDefs.h>
#include <Message.h>
#include <Window.h>

#include <algorithm>
#include <cstring>

// What keys do in a text view.

namespace kits {

namespace {

constexpr uint32 kHeld = B_SHIFT_KEY | B_COMMAND_KEY | B_OPTION_KEY;

uint32 ModifiersOf(const BMessage& key)
{
    return static_cast<uint32>(key.GetInt32("modifiers", 0)) & kHeld;
}

const char* BytesOf(const BMessage& key)
{
    const char* bytes = nullptr;
    return key.FindString("bytes", &bytes) == B_OK && bytes != nullptr ? bytes : "";
}

// The letter a shortcut is meant by: the layout's own, else what the key's place gives.
char LetterAmong(const BMessage& key, const char* letters)
{
    const char* candidate = nullptr;
    for (int32 i = 0; key.FindString("kits:shortcut", i, &candidate) == B_OK; ++i) {
        const char letter = candidate[0];
        const char lower =
            letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
        if (lower != '\0' && candidate[1] == '\0' && std::strchr(letters, lower) != nullptr) {
            return lower;
        }
    }
    return '\0';
}

bool IsAmong(char byte, std::string_view bytes)
{
    return bytes.find(byte) != std::string_view::npos;
}

constexpr char kMoves[] = {B_LEFT_ARROW, B_RIGHT_ARROW, B_UP_ARROW, B_DOWN_ARROW, B_HOME, B_END};

// Whether the view acts on a key with Command held.
bool IsCommandFor(const TextViewState& state, const BMessage& key)
{
    const char byte = BytesOf(key)[0];
    const bool isShifted = (ModifiersOf(key) & B_SHIFT_KEY) != 0;
    if (state.isSelectable) {
        if (IsAmong(byte, {kMoves, sizeof(kMoves)}) || (byte == B_INSERT && !isShifted)) {
            return true;
        }
        if (!isShifted && LetterAmong(key, "ac") != '\0') {
            return true;
        }
    }
    if (!state.isEditable) {
        return false;
    }
    if (LetterAmong(key, "z") != '\0') {
        return state.doesUndo;
    }
    return byte == B_BACKSPACE || byte == B_DELETE ||
           (!isShifted && LetterAmong(key, "xv") != '\0');
}

/// One key, on its way through a view.
class KeyAction
{
public:
    KeyAction(TextViewState& state, const char* bytes, int32 count)
        : fState(state), fBytes(bytes), fCount(count)
    {
        const BMessage* message =
            state.view.Window() != nullptr ? state.view.Window()->CurrentMessage() : nullptr;
        fKey = message != nullptr && message->what == B_KEY_DOWN ? message : nullptr;
        fModifiers = fKey != nullptr ? ModifiersOf(*fKey) : 0;
        fReach = (fModifiers & B_SHIFT_KEY) != 0 ? TextViewState::Reach::kSelection
                                                 : TextViewState::Reach::kCaret;
    }

    bool Run()
    {
        if (fCount <= 0 || (fModifiers & B_OPTION_KEY) != 0) {
            return false;
        }
        if (IsCommand() && (fKey == nullptr || !IsCommandFor(fState, *fKey))) {
            return false;
        }
        if (fCount == 1 && Named(fBytes[0])) {
            return true;
        }
        if (IsCommand()) {
            return Letter(LetterAmong(*fKey, "acxvz"));
        }
        return Character();
    }

private:
    bool IsCommand() const { return (fModifiers & B_COMMAND_KEY) != 0; }
    bool IsShifted() const { return (fModifiers & B_SHIFT_KEY) != 0; }

    bool Named(char byte)
    {
        switch (byte) {
        case B_LEFT_ARROW:
        case B_RIGHT_ARROW:
        case B_UP_ARROW:
        case B_DOWN_ARROW:
        case B_HOME:
        case B_END:
        case B_PAGE_UP:
        case B_PAGE_DOWN:
            return fState.isEditable ? Move(byte) : Look(byte);
        case B_BACKSPACE:
            return fState.isEditable && EraseBack();
        case B_DELETE:
            return fState.isEditable && EraseOn();
        case B_INSERT:
            return Insert();
        default:
            return false;
        }
    }

    bool Move(char byte)
    {
        const float page = (fState.view.Bounds().Height() + 1) / fState.geometry.RowHeight();
        const int32 rows = std::max<int32>(1, static_cast<int32>(page) - 1);
        // One line has nowhere to go up or down to: others may want these keys.
        const bool isSingle = fState.text.IsSingleLine();
        switch (byte) {
        case B_LEFT_ARROW:
        case B_RIGHT_ARROW:
            fState.MoveAside(byte == B_RIGHT_ARROW, IsCommand(), fReach);
            return true;
        case B_UP_ARROW:
        case B_DOWN_ARROW:
            if (!isSingle) {
                fState.MoveByRows(byte == B_UP_ARROW ? -1 : 1, fReach);
            }
            return !isSingle;
        case B_PAGE_UP:
        case B_PAGE_DOWN:
            if (!isSingle) {
                fState.MoveByRows(byte == B_PAGE_UP ? -rows : rows, fReach);
            }
            return !isSingle;
        default:
            if (IsCommand()) {
                fState.MoveTo(byte == B_END ? fState.text.Length() : 0, fReach);
            } else {
                fState.MoveToEdge(byte == B_END, fReach);
            }
            return true;
        }
    }

    // Text that cannot be edited has no caret: the keys scroll.
    bool Look(char byte)
    {
        const float row = fState.geometry.RowHeight();
        const BRect seen = fState.view.Bounds();
        const float most = std::max(0.0f, fState.ContentHeight() - (seen.Height() + 1));
        float top = seen.top;
        switch (byte) {
        case B_UP_ARROW:
            top -= row;
            break;
        case B_DOWN_ARROW:
            top += row;
            break;
        case B_PAGE_UP:
            top -= seen.Height() + 1 - row;
            break;
        case B_PAGE_DOWN:
            top += seen.Height() + 1 - row;
            break;
        case B_HOME:
            top = 0;
            break;
        case B_END:
            top = most;
            break;
        default:
            return false;
        }
        fState.view.ScrollTo(BPoint(seen.left, std::clamp(top, 0.0f, most)));
        return true;
    }

    bool EraseBack()
    {
        const int32 to = fState.End();
        int32 from = fState.Start();
        if (from == to) {
            from = IsCommand() ? fState.movement.PreviousWord(to)
                               : fState.movement.PreviousCharacter(to);
        }
        fState.Erase(from, to, TextAction::kErasing);
        return true;
    }

    bool EraseOn()
    {
        const int32 from = fState.Start();
        int32 to = fState.End();
        if (from != to && IsShifted() && !IsCommand()) {
            fState.view.Cut(be_clipboard);
            return true;
        }
        if (from == to) {
            to = IsCommand() ? fState.movement.NextWord(from) : fState.movement.NextCharacter(from);
        }
        fState.Erase(from, to, TextAction::kErasing);
        return true;
    }

    bool Insert()
    {
        if (IsCommand() && !IsShifted()) {
            fState.view.Copy(be_clipboard);
            return true;
        }
        if (IsShifted() && !IsCommand() && fState.isEditable) {
            fState.view.Paste(be_clipboard);
            return true;
        }
        return false;
    }

    bool Letter(char letter)
    {
        switch (letter) {
        case 'a':
            fState.view.SelectAll();
            return true;
        case 'c':
            fState.view.Copy(be_clipboard);
            return true;
        case 'x':
            fState.view.Cut(be_clipboard);
            return true;
        case 'v':
            fState.view.Paste(be_clipboard);
            return true;
        case 'z':
            if (IsShifted()) {
                fState.view.Redo();
            } else {
                fState.view.Undo(be_clipboard);
            }
            return true;
        default:
            return false;
        }
    }

    bool Character()
    {
        const uint8 first = static_cast<uint8>(fBytes[0]);
        const bool isSingle = fState.text.IsSingleLine();
        const bool isText = first >= 0x20 && first != 0x7f;
        const bool isBreak = fCount == 1 && (fBytes[0] == B_ENTER || fBytes[0] == B_TAB);
        if (!fState.isEditable || (!isText && (!isBreak || isSingle))) {
            return false;
        }
        std::string entered(fBytes, static_cast<size_t>(fCount));
        if (fBytes[0] == B_ENTER && fState.indents) {
            entered += Indentation();
        }
        fState.Enter(entered, TextAction::kTyping);
        return true;
    }

    // The blanks that the caret's line begins with, up to the caret.
    std::string Indentation() const
    {
        const int32 start = fState.text.LineStart(fState.text.LineOf(fState.Start()));
        const std::string_view line = fState.text.Part(start, fState.Start());
        return std::string(line.substr(0, std::min(line.size(), line.find_first_not_of(" \t"))));
    }

    TextViewState& fState;
    const char* fBytes;
    int32 fCount;
    const BMessage* fKey = nullptr; // null for keys that others made up
    uint32 fModifiers = 0;
    TextViewState::Reach fReach = TextViewState::Reach::kCaret;
};

} // namespace

bool TextViewState::WantsKey(const BMessage& key) const
{
    const uint32 held = ModifiersOf(key);
    if ((held & B_OPTION_KEY) != 0) {
        return false;
    }
    if ((held & B_COMMAND_KEY) != 0) {
        return IsCommandFor(*this, key);
    }
    // A line break is text, even in a window whose default button answers Enter.
    return isEditable && !text.IsSingleLine() && BytesOf(key)[0] == B_ENTER;
}

bool TextViewState::Key(const char* bytes, int32 count)
{
    EndPreview();
    return KeyAction(*this, bytes, count).Run();
}

} // namespace kits
