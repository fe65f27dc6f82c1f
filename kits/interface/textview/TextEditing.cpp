#include "TextViewState.h"

#include <algorithm>

// How a text view's text changes.

namespace kits {

namespace {

// More than any path or command has: what is pasted by mistake does not fill a field with
// megabytes.
constexpr int32 kMostLineBytes = 64 * 1024;

uint32 CodePoint(std::string_view character)
{
    const auto byte = [character](size_t i) {
        return uint32{static_cast<uint8>(character[i])};
    };
    switch (character.size()) {
    case 2:
        return (byte(0) & 0x1f) << 6 | (byte(1) & 0x3f);
    case 3:
        return (byte(0) & 0x0f) << 12 | (byte(1) & 0x3f) << 6 | (byte(2) & 0x3f);
    case 4:
        return (byte(0) & 0x07) << 18 | (byte(1) & 0x3f) << 12 | (byte(2) & 0x3f) << 6 |
               (byte(3) & 0x3f);
    default:
        return byte(0);
    }
}

// Text from elsewhere has other ends of lines, too.
std::string WithPlainBreaks(std::string_view text)
{
    std::string plain;
    plain.reserve(text.size());
    for (size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '\r') {
            plain += text[i];
        } else if (i + 1 >= text.size() || text[i + 1] != '\n') {
            plain += '\n';
        }
    }
    return plain;
}

void MakeOneLine(std::string& text)
{
    text.erase(text.find_last_not_of('\n') + 1); // a copied line brings its end along
    std::replace_if(
        text.begin(), text.end(), [](char byte) { return byte == '\n' || byte == '\t'; }, ' ');
}

} // namespace

void TextViewState::Replace(int32 from, int32 to, std::string_view inserted)
{
    from = text.Clamp(from);
    to = std::max(from, text.Clamp(to));
    const int32 firstLine = text.LineOf(from);
    const int32 removedLines = text.LineOf(to) - firstLine + 1;
    const int32 rowsBefore = geometry.CountRows();
    const int32 firstRow = geometry.RowOf(text.LineStart(firstLine));
    const int32 added = static_cast<int32>(inserted.size());
    text.Replace(from, to, inserted);
    geometry.TextReplaced(from, to - from, removedLines, added);
    const int32 lastLine = text.LineOf(from + added);
    // A place behind the change moves along with its text.
    const auto follow = [=](int32& offset) {
        if (offset >= to) {
            offset += added - (to - from);
        } else if (offset > from) {
            offset = from;
        }
    };
    follow(anchor);
    follow(caret);
    follow(paste.anchor);
    follow(paste.caret);
    goalX = -1;
    if (geometry.CountRows() != rowsBefore) {
        InvalidateBelow(firstRow);
    } else {
        InvalidateRows(firstRow, geometry.RowOf(text.LineEnd(lastLine)));
    }
}

void TextViewState::Adopt(TextBuffer& other, float widestLine)
{
    geometry.SetPreview({});
    inputResets++;
    const bool goesOn =
        std::string_view(other.Bytes()).substr(0, text.Bytes().size()) == text.Bytes();
    const BRect seen = view.Bounds();
    const double top = static_cast<double>(seen.top);
    const int32 anchored = geometry.RowStart(geometry.RowAt(top));
    const double within = top - geometry.RowTop(geometry.RowOf(anchored));
    text.TakeFrom(other);
    geometry.Reset();
    undo.Clear();
    widest = widestLine;
    goalX = -1;
    view.Invalidate();
    if (goesOn) {
        const double now = geometry.RowTop(geometry.RowOf(anchored)) + within;
        view.ScrollTo(BPoint(seen.left, static_cast<float>(std::max(0.0, now))));
    } else {
        SetSelection(0, 0);
        view.ScrollTo(BPoint(0, 0));
    }
    LimitScrolling();
}

void TextViewState::Edit(int32 from, int32 to, std::string_view inserted, TextAction action)
{
    if (from == to && inserted.empty()) {
        return;
    }
    if (doesUndo && !isUndoing) {
        undo.Record({{from, std::string(text.Part(from, to)), std::string(inserted)},
                     action,
                     anchor,
                     caret});
        wasUndone = false;
    }
    if (from < to) {
        TextViewAccess::Delete(view, from, to);
    }
    if (!inserted.empty()) {
        TextViewAccess::Insert(view, inserted, from);
    }
}

std::string TextViewState::Allowed(std::string_view entered, int32 removedBytes) const
{
    std::string plain = WithPlainBreaks(entered);
    if (text.IsSingleLine()) {
        MakeOneLine(plain);
    }
    std::string allowed;
    for (size_t place = 0; place < plain.size();) {
        const std::string_view rest = std::string_view(plain).substr(place);
        const size_t length = static_cast<size_t>(std::max<int32>(1, Utf8Length(rest)));
        const uint32 code = CodePoint(rest.substr(0, length));
        // A NUL would end the text for those who ask for it as a string.
        if (code != 0 && disallowed.count(code) == 0) {
            allowed += rest.substr(0, length);
        }
        place += length;
    }
    const int32 most = text.IsSingleLine() ? std::min(maxBytes, kMostLineBytes) : maxBytes;
    const int32 room = std::max(0, most - (text.Length() - removedBytes));
    return std::string(CutAtCharacter(allowed, room));
}

void TextViewState::Enter(std::string_view entered, TextAction action)
{
    const int32 from = Start();
    const int32 to = End();
    const std::string allowed = Allowed(entered, to - from);
    if (allowed.empty() && !entered.empty()) {
        return; // nothing to replace the selection with
    }
    const int32 behind = text.Length() - to;
    Edit(from, to, allowed, action);
    // Not by what was entered: who overrides InsertText() may have put something else there.
    const int32 end = text.Length() - behind;
    SetSelection(end, end);
    ScrollToCaret();
    if (edited) {
        edited();
    }
}

void TextViewState::Erase(int32 from, int32 to, TextAction action)
{
    if (from >= to) {
        return;
    }
    Edit(from, to, {}, action);
    SetSelection(from, from);
    ScrollToCaret();
    if (edited) {
        edited();
    }
}

void TextViewState::TakeBack()
{
    EndPreview();
    if (!undo.CanUndo() || !isEditable) {
        return;
    }
    const TextUndo::Step step = undo.TakeBack();
    isUndoing = true;
    Edit(step.change.offset, step.change.offset + static_cast<int32>(step.change.inserted.size()),
         step.change.removed, step.action);
    isUndoing = false;
    wasUndone = true;
    SetSelection(step.selectionStart, step.selectionEnd);
    ScrollToCaret();
    if (edited) {
        edited();
    }
}

void TextViewState::DoAgain()
{
    EndPreview();
    if (!undo.CanRedo() || !isEditable) {
        return;
    }
    const TextUndo::Step step = undo.DoAgain();
    isUndoing = true;
    Edit(step.change.offset, step.change.offset + static_cast<int32>(step.change.removed.size()),
         step.change.inserted, step.action);
    isUndoing = false;
    const int32 end = step.change.offset + static_cast<int32>(step.change.inserted.size());
    SetSelection(end, end);
    ScrollToCaret();
    if (edited) {
        edited();
    }
}

} // namespace kits
