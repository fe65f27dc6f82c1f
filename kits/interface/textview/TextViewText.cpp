#include "TextViewState.h"

#include <Clipboard.h>
#include <Message.h>
#include <Region.h>
#include <TextContents.h>
#include <Window.h>

#include <algorithm>
#include <cstring>
#include <string>

// What programs read and change of a text view's text.

using kits::TextAction;

// Text

void BTextView::SetText(const char* text, const text_run_array* runs)
{
    SetText(text, text != nullptr ? static_cast<int32>(std::strlen(text)) : 0, runs);
}

void BTextView::SetText(const char* text, int32 length, const text_run_array* runs)
{
    // It may be a part of the text itself.
    const std::string replacement(text != nullptr ? text : "",
                                  text != nullptr ? static_cast<size_t>(length) : 0);
    fText->geometry.SetPreview({});
    fText->inputResets++;
    if (TextLength() > 0) {
        DeleteText(0, TextLength());
    }
    if (runs != nullptr && runs->count > 0) {
        SetFontAndColor(&runs->runs[0].font, B_FONT_ALL, &runs->runs[0].color);
    }
    if (!replacement.empty()) {
        InsertText(replacement.data(), static_cast<int32>(replacement.size()), 0, runs);
    }
    fText->undo.Clear();
    fText->widest = 0;
    fText->SetSelection(0, 0);
    fText->ScrollToCaret();
}

void BTextView::AdoptText(std::unique_ptr<BTextContents> contents)
{
    fText->Adopt(*contents->fBuffer, contents->fWidest);
}

void BTextView::Insert(const char* text, const text_run_array* runs)
{
    Insert(text, text != nullptr ? static_cast<int32>(std::strlen(text)) : 0, runs);
}

void BTextView::Insert(const char* text, int32 length, const text_run_array*)
{
    if (text == nullptr || length <= 0) {
        return;
    }
    const std::string inserted(text, static_cast<size_t>(length));
    fText->EndPreview();
    const int32 from = fText->Start();
    fText->Edit(from, fText->End(), inserted, TextAction::kOther);
    Select(from + length, from + length);
    fText->ScrollToCaret();
}

void BTextView::Insert(int32 offset, const char* text, int32 length, const text_run_array*)
{
    if (text == nullptr || length <= 0) {
        return;
    }
    const std::string inserted(text, static_cast<size_t>(length));
    fText->EndPreview();
    const int32 at = fText->text.Clamp(offset);
    fText->Edit(at, at, inserted, TextAction::kOther);
    fText->LimitScrolling();
}

void BTextView::Delete()
{
    Delete(fText->Start(), fText->End());
}

void BTextView::Delete(int32 start, int32 end)
{
    fText->EndPreview();
    const int32 from = fText->text.Clamp(start);
    const int32 to = fText->text.Clamp(end);
    if (from < to) {
        fText->Edit(from, to, {}, TextAction::kOther);
        fText->LimitScrolling();
    }
}

const char* BTextView::Text() const
{
    return fText->text.Bytes().c_str();
}

std::shared_ptr<const std::string> BTextView::ShareText()
{
    return fText->text.ShareAll();
}

int32 BTextView::TextLength() const
{
    return fText->text.Length();
}

void BTextView::GetText(int32 offset, int32 length, char* buffer) const
{
    if (buffer == nullptr) {
        return;
    }
    const int32 from = std::clamp(offset, 0, TextLength());
    const int32 count = std::clamp(length, 0, TextLength() - from);
    std::memcpy(buffer, Text() + from, static_cast<size_t>(count));
    buffer[count] = '\0';
}

uint8 BTextView::ByteAt(int32 offset) const
{
    return offset >= 0 && offset < TextLength() ? static_cast<uint8>(Text()[offset]) : 0;
}

void BTextView::InsertText(const char* text, int32 length, int32 offset, const text_run_array*)
{
    fText->Replace(offset, offset, std::string_view(text, static_cast<size_t>(length)));
}

void BTextView::DeleteText(int32 start, int32 end)
{
    fText->Replace(start, end, {});
}

// Clipboard and undo

void BTextView::Cut(BClipboard* clipboard)
{
    if (!IsEditable() || !fText->HasSelection() || IsTypingHidden()) {
        return;
    }
    Copy(clipboard);
    fText->Erase(fText->Start(), fText->End(), TextAction::kCutting);
}

void BTextView::Copy(BClipboard* clipboard)
{
    if (IsSelectable()) {
        fText->CopyTo(clipboard);
    }
}

void BTextView::Paste(BClipboard* clipboard)
{
    if (IsEditable()) {
        fText->EndPreview();
        fText->PasteFrom(clipboard);
    }
}

void BTextView::Clear()
{
    if (IsEditable()) {
        fText->Erase(fText->Start(), fText->End(), TextAction::kClearing);
    }
}

bool BTextView::AcceptsPaste(BClipboard* clipboard)
{
    if (!IsEditable() || clipboard == nullptr || !clipboard->Lock()) {
        return false;
    }
    const BMessage* data = clipboard->Data();
    const bool hasText = data != nullptr && data->HasData("text/plain", B_MIME_TYPE);
    clipboard->Unlock();
    return hasText;
}

bool BTextView::AcceptsDrop(const BMessage* message)
{
    return IsEditable() && message != nullptr && message->HasData("text/plain", B_MIME_TYPE);
}

void BTextView::Undo(BClipboard*)
{
    fText->TakeBack();
}

void BTextView::Redo()
{
    fText->DoAgain();
}

bool BTextView::CanUndo() const
{
    return IsEditable() && fText->undo.CanUndo();
}

bool BTextView::CanRedo() const
{
    return IsEditable() && fText->undo.CanRedo();
}

undo_state BTextView::UndoState(bool* isRedo) const
{
    if (isRedo != nullptr) {
        *isRedo = fText->wasUndone;
    }
    if (!CanUndo()) {
        return B_UNDO_UNAVAILABLE;
    }
    switch (fText->undo.LastAction()) {
    case TextAction::kCutting:
        return B_UNDO_CUT;
    case TextAction::kPasting:
        return B_UNDO_PASTE;
    case TextAction::kClearing:
        return B_UNDO_CLEAR;
    default:
        return B_UNDO_TYPING;
    }
}

void BTextView::SetDoesUndo(bool undo)
{
    fText->doesUndo = undo;
    if (!undo) {
        fText->undo.Clear();
    }
}

bool BTextView::DoesUndo() const
{
    return fText->doesUndo;
}

// Selection

void BTextView::Select(int32 start, int32 end)
{
    fText->EndPreview();
    fText->undo.EndRun();
    fText->SetSelection(start, std::max(start, end));
}

void BTextView::SelectAll()
{
    Select(0, TextLength());
    fText->OfferSelection();
}

void BTextView::GetSelection(int32* start, int32* end) const
{
    if (start != nullptr) {
        *start = fText->Start();
    }
    if (end != nullptr) {
        *end = fText->End();
    }
}

void BTextView::FindWord(int32 offset, int32* from, int32* to)
{
    int32 start = 0;
    int32 end = 0;
    fText->movement.GetWord(fText->text.Clamp(offset), &start, &end);
    if (from != nullptr) {
        *from = start;
    }
    if (to != nullptr) {
        *to = end;
    }
}

// Places

int32 BTextView::CountLines() const
{
    return fText->geometry.CountRows();
}

int32 BTextView::CurrentLine() const
{
    return LineAt(fText->caret);
}

void BTextView::GoToLine(int32 line)
{
    const int32 offset = OffsetAt(std::clamp(line, 0, CountLines() - 1));
    Select(offset, offset);
    ScrollToSelection();
}

int32 BTextView::LineAt(int32 offset) const
{
    return fText->geometry.RowOf(fText->text.Clamp(offset));
}

int32 BTextView::LineAt(BPoint point) const
{
    return fText->geometry.RowAt(static_cast<double>(point.y));
}

BPoint BTextView::PointAt(int32 offset, float* height) const
{
    if (height != nullptr) {
        *height = LineHeight();
    }
    return fText->geometry.PointAt(fText->text.Clamp(offset));
}

int32 BTextView::OffsetAt(BPoint point) const
{
    return fText->geometry.OffsetAt(point);
}

int32 BTextView::OffsetAt(int32 line) const
{
    return line >= CountLines() ? TextLength() : fText->geometry.RowStart(line);
}

float BTextView::LineWidth(int32 line) const
{
    return line >= 0 && line < CountLines() ? fText->geometry.RowWidth(line) : 0;
}

float BTextView::WidestLine() const
{
    return fText->widest;
}

float BTextView::LineHeight(int32) const
{
    return fText->geometry.RowHeight();
}

float BTextView::TextHeight(int32 startLine, int32 endLine) const
{
    const int32 last = CountLines() - 1;
    const int32 from = std::clamp(startLine, 0, last);
    const int32 to = std::clamp(endLine, from, last);
    return LineHeight() * static_cast<float>(to - from + 1);
}

void BTextView::GetTextRegion(int32 start, int32 end, BRegion* region) const
{
    region->MakeEmpty();
    const int32 from = fText->text.Clamp(start);
    const int32 to = fText->text.Clamp(end);
    if (from >= to) {
        return;
    }
    const kits::TextGeometry& geometry = fText->geometry;
    const int32 lastRow = geometry.RowOf(to);
    for (int32 row = geometry.RowOf(from); row <= lastRow;) {
        const kits::TextGeometry::RowPlace place = geometry.PlaceOf(row);
        const kits::TextLine layout = geometry.LayoutOf(place.line);
        const int32 lineStart = fText->text.LineStart(place.line);
        const int32 rows = layout.CountRows();
        for (int32 i = place.rowInLine; i < rows && row <= lastRow; ++i, ++row) {
            const float left = static_cast<float>(geometry.RowLeft(layout, i));
            const float top = static_cast<float>(geometry.RowTop(row));
            for (const auto& [begin, stop] :
                 layout.SpansOf(i, from - lineStart, to - lineStart, kits::TextLine::kAll)) {
                region->Include(BRect(left + static_cast<float>(begin), top,
                                      left + static_cast<float>(stop) - 1, top + LineHeight() - 1));
            }
        }
    }
}

void BTextView::ScrollToOffset(int32 offset)
{
    fText->UpdateScrollBars();
    fText->ScrollTo(fText->text.Clamp(offset));
}

void BTextView::ScrollToSelection()
{
    fText->ScrollToCaret();
}
