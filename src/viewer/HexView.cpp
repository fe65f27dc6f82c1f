#include "viewer/HexView.h"

#include "MessageCodes.h"
#include "viewer/ViewerKeys.h"

#include <Font.h>
#include <InterfaceDefs.h>
#include <Message.h>
#include <ViewDescription.h>
#include <Window.h>

#include <algorithm>
#include <cmath>

namespace norvane {

namespace {

constexpr float kBarBreadth = 14;
constexpr float kMargin = 4;
constexpr rgb_color kQuiet = {110, 110, 110, 255};
constexpr rgb_color kText = {0, 0, 0, 255};
constexpr rgb_color kLetters = {0, 60, 130, 255};
constexpr rgb_color kMark = {255, 226, 130, 255};
constexpr rgb_color kRule = {226, 226, 226, 255};
// What is read around what is seen, so that single steps need not wait.
constexpr int64 kAround = int64{16} * 1024;

} // namespace

HexView::HexView(BRect frame, const std::string& path)
    : BView(frame, "hexView", B_FOLLOW_ALL_SIDES,
            B_WILL_DRAW | B_FRAME_EVENTS | B_NAVIGABLE | B_FULL_UPDATE_ON_RESIZE),
      fPath(path)
{
    SetViewColor(255, 255, 255);
    SetLowColor(255, 255, 255);
    SetFont(be_fixed_font);
    font_height height;
    be_fixed_font->GetHeight(&height);
    fAscent = std::ceil(height.ascent);
    fLine = std::ceil(height.ascent + height.descent + height.leading);
    fLetter = be_fixed_font->StringWidth("00000000") / 8;
}

HexView::~HexView() = default;

void HexView::AttachedToWindow()
{
    BView::AttachedToWindow();
    fReading = std::make_unique<FilePartReading>(fPath, BMessenger(this));
    FitRows();
    Refresh();
}

int64 HexView::Room() const
{
    return std::max<int64>(1, static_cast<int64>((Bounds().Height() + 1 - kMargin) / fLine));
}

float HexView::ColumnX(int32 column) const
{
    return std::round(kMargin + static_cast<float>(column) * fLetter);
}

/// As many bytes in a row as the width has room for; the first one seen stays so.
void HexView::FitRows()
{
    const int64 first = fTop * fRows.bytesInRow;
    const auto columns = static_cast<int32>((Bounds().Width() - 2 * kMargin) / fLetter);
    fRows = HexRows::Fitting(std::max<int64>(0, fRows.fileSize), columns);
    fTop =
        std::clamp<int64>(first / fRows.bytesInRow, 0, std::max<int64>(0, fRows.Count() - Room()));
    if (fBar != nullptr) {
        fBar->ShowTop(fTop, fRows.Count(), Room());
    }
}

void HexView::SetTop(int64 row)
{
    const int64 top = std::clamp<int64>(row, 0, std::max<int64>(0, fRows.Count() - Room()));
    if (top != fTop) {
        fTop = top;
        Invalidate();
    }
    if (fBar != nullptr) {
        fBar->ShowTop(fTop, fRows.Count(), Room());
    }
    if (!fPart.Covers(fRows.OffsetOf(fTop), fRows.OffsetOf(fTop + Room() + 1))) {
        AskForSeen();
    }
}

void HexView::GoTo(int64 offset)
{
    if (fRows.fileSize > 0) {
        fMarked = std::clamp<int64>(offset, 0, fRows.fileSize - 1);
        SetTop(fMarked / fRows.bytesInRow);
        Invalidate();
    }
}

void HexView::Refresh()
{
    AskForSeen();
}

void HexView::AskForSeen()
{
    if (fReading != nullptr) {
        const int64 first = std::max<int64>(0, fRows.OffsetOf(fTop) - kAround);
        const int64 last = fRows.OffsetOf(fTop + Room() + 1);
        fReading->Ask(first, static_cast<size_t>(last - first + kAround));
    }
}

void HexView::TakePart()
{
    FilePart part = fReading->Take();
    if (!part.isRead) {
        return;
    }
    const bool isThere = part.fileSize >= 0;
    fPart = std::move(part);
    // What is gone keeps its rows, and they are blank.
    if (isThere && fPart.fileSize != fRows.fileSize) {
        fRows.fileSize = fPart.fileSize;
        FitRows();
        SetTop(fTop);
    }
    Invalidate();
}

std::string_view HexView::BytesOf(int64 row) const
{
    const int64 from = row * fRows.bytesInRow - fPart.start;
    if (from < 0 || from >= static_cast<int64>(fPart.bytes.size())) {
        return {};
    }
    return std::string_view(fPart.bytes)
        .substr(static_cast<size_t>(from), static_cast<size_t>(fRows.bytesInRow));
}

std::string HexView::RowText(int64 row) const
{
    const std::string_view bytes = BytesOf(row);
    return fRows.Offset(row) + "  " + fRows.Digits(bytes) + "  " + HexRows::Characters(bytes);
}

void HexView::Draw(BRect updateRect)
{
    SetHighColor(kRule);
    const float rule = ColumnX(fRows.CharacterAt(0)) - std::round(fLetter);
    StrokeLine(BPoint(rule, updateRect.top), BPoint(rule, updateRect.bottom));
    SetDrawingMode(B_OP_OVER);
    const int64 last = std::min(fRows.Count(), fTop + Room() + 1);
    for (int64 row = fTop; row < last; row++) {
        DrawRow(row);
    }
    SetDrawingMode(B_OP_COPY);
}

void HexView::DrawRow(int64 row)
{
    const float top = kMargin + static_cast<float>(row - fTop) * fLine;
    if (fMarked >= 0 && fMarked / fRows.bytesInRow == row) {
        DrawMark(row, top);
    }
    const float baseLine = top + fAscent;
    const std::string_view bytes = BytesOf(row);
    SetHighColor(kQuiet);
    DrawString(fRows.Offset(row).c_str(), BPoint(ColumnX(0), baseLine));
    SetHighColor(kText);
    DrawString(fRows.Digits(bytes).c_str(), BPoint(ColumnX(fRows.DigitsAt(0)), baseLine));
    SetHighColor(kLetters);
    DrawString(HexRows::Characters(bytes).c_str(), BPoint(ColumnX(fRows.CharacterAt(0)), baseLine));
}

void HexView::DrawMark(int64 row, float top)
{
    const auto byte = static_cast<int32>(fMarked - row * fRows.bytesInRow);
    SetHighColor(kMark);
    for (const auto& [column, letters] :
         {std::pair(fRows.DigitsAt(byte), 2), std::pair(fRows.CharacterAt(byte), 1)}) {
        FillRect(BRect(ColumnX(column), top, ColumnX(column + letters) - 1, top + fLine - 1));
    }
}

void HexView::FrameResized(float width, float height)
{
    BView::FrameResized(width, height);
    FitRows();
    SetTop(fTop);
    Invalidate();
}

void HexView::KeyDown(const char* bytes, int32 byteCount)
{
    const int64 page = std::max<int64>(1, Room() - 1);
    switch (bytes[0]) {
    case B_UP_ARROW:
        SetTop(fTop - 1);
        break;
    case B_DOWN_ARROW:
        SetTop(fTop + 1);
        break;
    case B_PAGE_UP:
        SetTop(fTop - page);
        break;
    case B_PAGE_DOWN:
        SetTop(fTop + page);
        break;
    case B_HOME:
        SetTop(0);
        break;
    case B_END:
        SetTop(fRows.Count());
        break;
    default:
        if (!ViewerKey(*this, bytes[0])) {
            BView::KeyDown(bytes, byteCount);
        }
    }
}

void HexView::MouseDown(BPoint)
{
    MakeFocus();
}

void HexView::MessageReceived(BMessage* message)
{
    float turned = 0;
    if (message->what == kFilePartRead) {
        TakePart();
    } else if (message->what == B_MOUSE_WHEEL_CHANGED &&
               message->FindFloat("be:wheel_delta_y", &turned) == B_OK) {
        SetTop(fTop + std::lround(turned));
    } else {
        BView::MessageReceived(message);
    }
}

void HexView::Describe(BViewDescription* description) const
{
    const int64 last = std::min(fRows.Count(), fTop + Room());
    for (int64 row = fTop; row < last; row++) {
        description->value += RowText(row) + "\n";
    }
}

BView* MakeHexPane(BRect frame, const std::string& path, HexView** view)
{
    auto* pane = new BView(frame, "hexPane", B_FOLLOW_ALL_SIDES, B_WILL_DRAW);
    pane->SetViewColor(255, 255, 255);
    BRect inside = frame.OffsetToCopy(0, 0);
    inside.right -= kBarBreadth + 1;
    *view = new HexView(inside, path);
    inside.left = inside.right + 1;
    inside.right = frame.Width();
    auto* bar = new HexBar(inside, *view);
    (*view)->SetBar(bar);
    pane->AddChild(*view); // adopted
    pane->AddChild(bar);   // adopted
    return pane;
}

} // namespace norvane
