#pragma once

#include "viewer/FilePart.h"
#include "viewer/HexRows.h"

#include <ScrollBar.h>
#include <View.h>

#include <memory>
#include <string>

namespace norvane {

class HexView;

/// The bar beside the rows of a file of any size. Its values are whole numbers of rows where a
/// float can count them; beyond that arrows and pages still go by rows, and only dragging is
/// coarser than they are.
class HexBar : public BScrollBar
{
public:
    explicit HexBar(BRect frame, HexView* view);

    /// Shows that `top` of all rows, of which `room` are seen, is the uppermost; moves nothing.
    void ShowTop(int64 top, int64 rows, int64 room);

    // BScrollBar
    void ValueChanged(float newValue) override;
    void MessageReceived(BMessage* message) override;

private:
    HexView* const fView; // borrowed
    int64 fLast = 0;      // the largest of what may be uppermost
    float fTold = 0;
    bool fIsShowing = false;
};

/// Any file as bytes, of which only what is seen is read.
class HexView : public BView
{
public:
    HexView(BRect frame, const std::string& path);
    ~HexView() override;

    /// The bar is beside it and lives as long.
    void SetBar(HexBar* bar) { fBar = bar; }
    int64 Top() const { return fTop; }
    const HexRows& Rows() const { return fRows; }
    /// What is seen of a row, as one text; blank where nothing is known.
    std::string RowText(int64 row) const;
    /// How many rows are wholly seen, at least one.
    int64 Room() const;
    /// Makes a row the uppermost, or the nearest that can be.
    void SetTop(int64 row);
    /// Shows and marks the byte at that offset, or the last one; nothing in an empty file.
    void GoTo(int64 offset);
    /// Reads again what is seen: the file has changed.
    void Refresh();

    // BView
    void AttachedToWindow() override;
    void Draw(BRect updateRect) override;
    void FrameResized(float width, float height) override;
    void KeyDown(const char* bytes, int32 byteCount) override;
    void MouseDown(BPoint where) override;
    void MessageReceived(BMessage* message) override;
    bool TakesDrops() const override { return true; }
    void Describe(BViewDescription* description) const override;

private:
    void FitRows();
    void AskForSeen();
    void TakePart();
    void DrawRow(int64 row);
    void DrawMark(int64 row, float top);
    std::string_view BytesOf(int64 row) const;
    float ColumnX(int32 column) const;

    const std::string fPath;
    std::unique_ptr<FilePartReading> fReading; // null before it is attached
    HexBar* fBar = nullptr;                    // borrowed
    HexRows fRows;
    FilePart fPart;
    int64 fTop = 0;
    int64 fMarked = -1; // the byte that was gone to; negative: none
    float fLetter = 1;  // view units
    float fLine = 1;
    float fAscent = 0;
};

/// The view with its bar, to fill `frame`; the view is put into `view`.
BView* MakeHexPane(BRect frame, const std::string& path, HexView** view);

} // namespace norvane
