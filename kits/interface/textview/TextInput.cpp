#include "TextViewState.h"
#include "interface/text/TextDecoding.h"

#include "app/HandlerAccess.h"
#include "server/InputMessages.h"

#include <Message.h>
#include <ViewDescription.h>

#include <algorithm>
#include <cstdlib>

// What input methods show and enter.

namespace kits {

namespace {

// How much of a line an input method is told of, to either side of the caret.
constexpr int32 kSurrounding = 512;

int32 Within(int64 offset)
{
    return static_cast<int32>(std::clamp<int64>(offset, 0, INT32_MAX));
}

} // namespace

void TextViewState::DescribeInput(BInputDescription* description) const
{
    description->isTextField = isEditable;
    description->hidesText = text.HidesText();
    description->resets = inputResets;
    description->caret = CaretRect();
    if (text.HidesText()) {
        return;
    }
    const int32 line = text.LineOf(caret);
    const int32 from = std::max(text.LineStart(line), text.Clamp(caret - kSurrounding));
    const int32 to = std::min(text.LineEnd(line), text.Clamp(caret + kSurrounding));
    const auto shown = [this](int32 start, int32 end) {
        return DecodedText(text.Part(start, end), text.Showing()).Text().toStdString();
    };
    const int32 other = std::clamp(anchor, from, to);
    description->surroundingText = shown(from, to);
    description->caretOffset = static_cast<int32>(shown(from, caret).size());
    description->anchorOffset = static_cast<int32>(shown(from, other).size());
}

// Selects units of UTF-16 of the caret's line, as an input method counts them.
void TextViewState::SelectAround(int32 fromUnit, int32 units)
{
    // A unit has three bytes at most.
    const int32 line = text.LineOf(Start());
    const int64 reach = 3 * (std::abs(int64{fromUnit}) + units);
    const int32 from = std::max(text.LineStart(line), text.Clamp(Within(Start() - reach)));
    const int32 to = std::min(text.LineEnd(line), text.Clamp(Within(Start() + reach)));
    const DecodedText shown(text.Part(from, to), text.Showing());
    const int32 first = shown.UnitOf(Start() - from) + fromUnit;
    SetSelection(from + shown.ByteOf(first), from + shown.ByteOf(first + units));
}

void TextViewState::TakeInput(const BMessage& message)
{
    const char* entered = nullptr;
    if (!isEditable || message.FindString("be:string", &entered) != B_OK) {
        return;
    }
    // What comes for a view that has let go of the input method meanwhile is not for this one.
    const int32 addressee = message.GetInt32("kits:view", 0);
    if (!view.IsFocus() || (addressee != 0 && addressee != HandlerAccess::Token(&view)) ||
        message.GetInt32("kits:resets", inputResets) != inputResets) {
        return;
    }
    const int32 replaceFrom = message.GetInt32("kits:replace_from", 0);
    const int32 replaceLength = message.GetInt32("kits:replace_length", 0);
    if (!geometry.Preview().text.isEmpty()) {
        const int32 row = geometry.RowOf(geometry.Preview().offset);
        geometry.SetPreview({});
        InvalidateBelow(row);
    }
    if (replaceLength > 0) {
        SelectAround(replaceFrom, replaceLength);
    }
    if (message.GetBool("be:confirmed", false)) {
        if (*entered != '\0' || HasSelection()) {
            Enter(entered, TextAction::kTyping);
        }
        return;
    }
    if (HasSelection()) {
        Erase(Start(), End(), TextAction::kOther);
    }
    TextPreview preview;
    preview.text = QString::fromUtf8(entered);
    preview.offset = caret;
    preview.caret = message.GetInt32("be:selection", static_cast<int32>(preview.text.size()));
    geometry.SetPreview(preview);
    InvalidateBelow(geometry.RowOf(caret));
    ScrollToCaret();
    ShowCaret();
}

void TextViewState::EndPreview()
{
    if (geometry.Preview().text.isEmpty()) {
        return;
    }
    const std::string shown = geometry.Preview().text.toStdString();
    geometry.SetPreview({});
    InvalidateBelow(geometry.RowOf(caret));
    inputResets++;
    Enter(shown, TextAction::kTyping);
}

} // namespace kits
