#include "Driver.h"
#include "Native.h"

#include <QGuiApplication>
#include <QInputMethodEvent>
#include <QString>
#include <QWindow>
#include <qpa/qwindowsysteminterface.h>

#include <string_view>

namespace kits::testing {

namespace {

// A key of the US layout: what it is called, where it sits, what it types.
struct SyntheticKey
{
    int key = 0;
    quint32 scanCode = 0;
    QString text;
    bool needsShift = false;
};

constexpr quint32 kScanOffset = 8;

struct NamedByte
{
    char byte;
    int key;
    quint32 position;
};

constexpr NamedByte kNamed[] = {
    {B_ENTER, Qt::Key_Return, 28},     {B_ESCAPE, Qt::Key_Escape, 1},
    {B_TAB, Qt::Key_Tab, 15},          {B_BACKSPACE, Qt::Key_Backspace, 14},
    {B_INSERT, Qt::Key_Insert, 110},   {B_DELETE, Qt::Key_Delete, 111},
    {B_HOME, Qt::Key_Home, 102},       {B_END, Qt::Key_End, 107},
    {B_PAGE_UP, Qt::Key_PageUp, 104},  {B_PAGE_DOWN, Qt::Key_PageDown, 109},
    {B_LEFT_ARROW, Qt::Key_Left, 105}, {B_RIGHT_ARROW, Qt::Key_Right, 106},
    {B_UP_ARROW, Qt::Key_Up, 103},     {B_DOWN_ARROW, Qt::Key_Down, 108},
    {B_SPACE, Qt::Key_Space, 57},
};

struct Row
{
    quint32 position;
    std::string_view plain;
    std::string_view shifted;
};

constexpr Row kRows[] = {
    {2, "1234567890-=", "!@#$%^&*()_+"},
    {16, "qwertyuiop[]", "QWERTYUIOP{}"},
    {30, "asdfghjkl;'`", "ASDFGHJKL:\"~"},
    {43, "\\zxcvbnm,./", "|ZXCVBNM<>?"},
};

SyntheticKey KeyOfCharacter(QChar character)
{
    SyntheticKey key;
    key.key = character.toUpper().unicode();
    key.text = QString(character);
    for (const Row& row : kRows) {
        const size_t plain = row.plain.find(character.toLatin1());
        const size_t shifted = row.shifted.find(character.toLatin1());
        const size_t place = plain != std::string_view::npos ? plain : shifted;
        if (character.unicode() < 0x80 && place != std::string_view::npos) {
            key.scanCode = row.position + static_cast<quint32>(place) + kScanOffset;
            key.needsShift = plain == std::string_view::npos;
        }
    }
    return key;
}

SyntheticKey KeyOfByte(char byte)
{
    for (const NamedByte& named : kNamed) {
        if (named.byte == byte) {
            SyntheticKey key;
            key.key = named.key;
            key.scanCode = named.position + kScanOffset;
            key.text = byte == B_SPACE ? QStringLiteral(" ") : QString();
            return key;
        }
    }
    return KeyOfCharacter(QChar::fromLatin1(byte));
}

SyntheticKey KeyOfFunction(int32 number)
{
    SyntheticKey key;
    key.key = Qt::Key_F1 + (number - B_F1_KEY);
    const quint32 index = static_cast<quint32>(number - B_F1_KEY);
    key.scanCode = (index < 10 ? 59 + index : 87 + index - 10) + kScanOffset;
    return key;
}

SyntheticKey KeyOfModifier(uint32 modifier)
{
    SyntheticKey key;
    if (modifier == B_SHIFT_KEY) {
        key.key = Qt::Key_Shift;
        key.scanCode = kScanOffset + 42;
    } else if (modifier == B_COMMAND_KEY) {
        key.key = Qt::Key_Control;
        key.scanCode = kScanOffset + 29;
    } else {
        key.key = Qt::Key_Alt;
        key.scanCode = kScanOffset + 56;
    }
    return key;
}

Qt::KeyboardModifiers ModifiersOf(uint32 modifiers)
{
    Qt::KeyboardModifiers result;
    result.setFlag(Qt::ShiftModifier, (modifiers & B_SHIFT_KEY) != 0);
    result.setFlag(Qt::ControlModifier, (modifiers & (B_COMMAND_KEY | B_CONTROL_KEY)) != 0);
    result.setFlag(Qt::AltModifier, (modifiers & B_OPTION_KEY) != 0);
    return result;
}

// Ctrl turns letters into control bytes before a program sees them.
QString TextWith(const SyntheticKey& key, Qt::KeyboardModifiers modifiers)
{
    if ((modifiers & Qt::ControlModifier) != 0 && key.key >= Qt::Key_A && key.key <= Qt::Key_Z) {
        return QString(QChar(key.key - Qt::Key_A + 1));
    }
    if ((modifiers & Qt::ShiftModifier) != 0 && key.text.size() == 1) {
        return key.text.toUpper();
    }
    return key.text;
}

// Thread: the server's.
void Deliver(const SyntheticKey& key, QEvent::Type type, uint32 modifiers)
{
    Qt::KeyboardModifiers held = ModifiersOf(modifiers);
    held.setFlag(Qt::ShiftModifier, key.needsShift || (modifiers & B_SHIFT_KEY) != 0);
    const bool isBacktab = key.key == Qt::Key_Tab && (held & Qt::ShiftModifier) != 0;
    const int code = isBacktab ? static_cast<int>(Qt::Key_Backtab) : key.key;
    QWindowSystemInterface::handleExtendedKeyEvent(QGuiApplication::focusWindow(), type, code, held,
                                                   key.scanCode, 0, 0, TextWith(key, held));
    QWindowSystemInterface::sendWindowSystemEvents(QEventLoop::AllEvents);
}

void Send(const SyntheticKey& key, QEvent::Type type, uint32 modifiers)
{
    OnServer([&] { Deliver(key, type, modifiers); });
}

// Both at once: the press may end the window, and a release that finds no window is lost, as none
// ever is on a screen.
void Type(const SyntheticKey& key, uint32 modifiers)
{
    OnServer([&] {
        Deliver(key, QEvent::KeyPress, modifiers);
        Deliver(key, QEvent::KeyRelease, modifiers);
    });
}

} // namespace

void TypeKey(char byte, uint32 modifiers)
{
    Type(KeyOfByte(byte), modifiers);
}

void TypeFunctionKey(int32 key, uint32 modifiers)
{
    Type(KeyOfFunction(key), modifiers);
}

void TypeText(const char* text)
{
    for (const QChar character : QString::fromUtf8(text)) {
        const bool isNamed = character == QLatin1Char('\n') || character == QLatin1Char('\t') ||
                             character == QLatin1Char(' ');
        Type(isNamed ? KeyOfByte(character.toLatin1()) : KeyOfCharacter(character), 0);
    }
}

void PressKey(char byte, uint32 modifiers)
{
    Send(KeyOfByte(byte), QEvent::KeyPress, modifiers);
}

void ReleaseKey(char byte, uint32 modifiers)
{
    Send(KeyOfByte(byte), QEvent::KeyRelease, modifiers);
}

void PressFunctionKey(int32 key, uint32 modifiers)
{
    Send(KeyOfFunction(key), QEvent::KeyPress, modifiers);
}

void ReleaseFunctionKey(int32 key, uint32 modifiers)
{
    Send(KeyOfFunction(key), QEvent::KeyRelease, modifiers);
}

// A modifier's own event carries what was held before it, as on a screen; QKeyEvent::modifiers()
// adds or takes it away.
void PressModifier(uint32 modifier)
{
    Send(KeyOfModifier(modifier), QEvent::KeyPress, 0);
}

void ReleaseModifier(uint32 modifier)
{
    Send(KeyOfModifier(modifier), QEvent::KeyRelease, modifier);
}

void HoldKey(char byte, int32 repeats, uint32 modifiers)
{
    for (int32 press = 0; press <= repeats; ++press) {
        PressKey(byte, modifiers);
    }
    ReleaseKey(byte, modifiers);
}

void CommitText(const char* text)
{
    OnServer([text] {
        QInputMethodEvent event;
        event.setCommitString(QString::fromUtf8(text));
        if (QWindow* window = QGuiApplication::focusWindow()) {
            QCoreApplication::sendEvent(window, &event);
        }
    });
}

} // namespace kits::testing
