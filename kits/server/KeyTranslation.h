#pragma once

#include <SupportDefs.h>

#include <QString>
#include <Qt>

#include <string>
#include <vector>

namespace kits {

/// What the system says of a key, apart from the window it was meant for.
struct NativeKey
{
    int key = 0; // Qt::Key
    QString text;
    Qt::KeyboardModifiers modifiers;
    uint32 scanCode = 0; // position + 8, the same on every layout; 0: unknown
    uint32 nativeModifiers = 0;
};

/// The same in the platform's terms.
struct PlatformKey
{
    int32 key = 0;     // the platform's number of the position, or of the function key
    std::string bytes; // UTF-8; empty: the key has no character (an "unmapped" key)
    int32 rawChar = 0; // what it gives without any modifier
    std::vector<std::string> shortcuts; // the characters a menu shortcut is tried with, in order
};

/// Pure: the same key gives the same answer, whatever came before.
PlatformKey TranslateKey(const NativeKey& key);

/// The platform's number of a position (scan code of the system), 0 for one it has none for.
int32 KeyNumber(uint32 scanCode);

/// Shift, Ctrl and the like: they change the modifiers and make no key message.
bool IsModifierKey(int key);

/// What tells one held key from another: its position, or the key itself where no position is
/// known.
int32 KeyCode(const NativeKey& key);

/// Keeps which of the left and right modifier keys are held.
class ModifierSides
{
public:
    void Changed(uint32 scanCode, bool isPressed);
    void Clear() { fHeld = 0; }
    /// The platform's modifiers, with the sides that are known.
    uint32 Modifiers(Qt::KeyboardModifiers modifiers, uint32 nativeModifiers) const;

private:
    uint32 fHeld = 0;
};

/// Tells when Alt was pressed and released with nothing between, which opens menus.
class LoneAlt
{
public:
    /// The modifiers were `before` and are `now`, by a key at `when`. `taken` is when another
    /// program last took the pointer or the keyboard, 0 for never. True when Alt was released
    /// alone. Units: milliseconds.
    bool Changed(uint32 before, uint32 now, uint64 when, uint64 taken);
    /// Something else happened: another key, a button, the wheel, another focus.
    void Disturb() { fIsDown = false; }

private:
    bool fIsDown = false; // and nothing else has happened since
    uint64 fPressed = 0;
};

} // namespace kits
