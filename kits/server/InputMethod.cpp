#include "InputMethod.h"

#include <QInputMethodQueryEvent>
#include <QRectF>
#include <QString>
#include <QVariant>

namespace kits {

namespace {

// The kits count bytes of UTF-8, the toolkit UTF-16 units.
int Utf16Offset(const std::string& text, int32 bytes)
{
    return static_cast<int>(QString::fromUtf8(text.data(), bytes).size());
}

QVariant Answer(const InputMethodState& state, Qt::InputMethodQuery query)
{
    switch (query) {
    case Qt::ImEnabled:
        return state.isEnabled;
    case Qt::ImCursorRectangle:
    case Qt::ImAnchorRectangle:
        return QRectF(static_cast<qreal>(state.caret.left), static_cast<qreal>(state.caret.top),
                      static_cast<qreal>(state.caret.Width() + 1),
                      static_cast<qreal>(state.caret.Height() + 1));
    case Qt::ImSurroundingText:
        return QString::fromStdString(state.surroundingText);
    case Qt::ImCursorPosition:
        return Utf16Offset(state.surroundingText, state.caretOffset);
    case Qt::ImAnchorPosition:
        return Utf16Offset(state.surroundingText, state.anchorOffset);
    default:
        return {};
    }
}

} // namespace

void AnswerInputMethod(const InputMethodState& state, QInputMethodQueryEvent& event)
{
    for (uint32 bit = 1; bit != 0; bit <<= 1) {
        const auto query = static_cast<Qt::InputMethodQuery>(bit);
        if ((event.queries() & query) != 0) {
            event.setValue(query, Answer(state, query));
        }
    }
    event.accept();
}

} // namespace kits
