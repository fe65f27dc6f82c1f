#include "InputMethod.h"

#include <AppDefs.h>
#include <Message.h>
#include <OS.h>

#include <QGuiApplication>
#include <QInputMethod>
#include <QInputMethodEvent>
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

int HintsFor(const InputMethodState& state)
{
    const Qt::InputMethodHints hints = state.hidesText
                                           ? Qt::ImhHiddenText | Qt::ImhSensitiveData |
                                                 Qt::ImhNoPredictiveText | Qt::ImhNoAutoUppercase
                                           : Qt::ImhNone;
    return static_cast<int>(hints);
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
    case Qt::ImHints:
        return HintsFor(state);
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

std::unique_ptr<BMessage> TextInputMessage(const InputMethodState& state, const QString& text)
{
    auto message = std::make_unique<BMessage>(B_INPUT_METHOD_EVENT);
    message->AddInt64("when", system_time());
    message->AddString("be:string", text.toUtf8().constData());
    message->AddInt32("kits:view", state.view);
    message->AddInt32("kits:resets", state.resets);
    return message;
}

int32 CaretIn(const QInputMethodEvent& event)
{
    for (const QInputMethodEvent::Attribute& attribute : event.attributes()) {
        if (attribute.type == QInputMethodEvent::Cursor) {
            return attribute.start;
        }
    }
    return static_cast<int32>(event.preeditString().size());
}

} // namespace

std::vector<std::unique_ptr<BMessage>> TextInputMessages(const InputMethodState& state,
                                                         const QInputMethodEvent& event)
{
    std::vector<std::unique_ptr<BMessage>> messages;
    if (!event.commitString().isEmpty() || event.replacementLength() > 0) {
        auto commit = TextInputMessage(state, event.commitString());
        commit->AddBool("be:confirmed", true);
        commit->AddInt32("kits:replace_from", event.replacementStart());
        commit->AddInt32("kits:replace_length", event.replacementLength());
        messages.push_back(std::move(commit));
    }
    if (messages.empty() || !event.preeditString().isEmpty()) {
        auto preview = TextInputMessage(state, event.preeditString());
        preview->AddInt32("be:selection", CaretIn(event));
        messages.push_back(std::move(preview));
    }
    return messages;
}

bool IsAnew(const InputMethodState& before, const InputMethodState& now)
{
    return now.view != before.view || now.resets != before.resets;
}

void TellInputMethod(bool isAnew)
{
    QInputMethod* inputMethod = QGuiApplication::inputMethod();
    if (isAnew) {
        inputMethod->reset();
    }
    inputMethod->update(Qt::ImQueryInput | Qt::ImEnabled | Qt::ImHints);
}

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
