#pragma once

#include <ListView.h>

#include <memory>
#include <string>
#include <vector>

namespace add_ons {

/// A list of two columns whose rows know nothing but their places: what a row shows is asked when
/// it is drawn, so that a hundred thousand of them are made at once.
///
/// Thread: that of its window.
class ColumnList : public BListView
{
public:
    /// `firstPart`: how much of a row the first column has, between 0 and 1.
    ColumnList(BRect frame, const char* name, list_view_type type, float firstPart);
    ~ColumnList() override;

    /// From now on there are so many rows, from the first place on. Those that stay keep what is
    /// selected when there are only more than before.
    void SetCount(size_t count);
    /// Where the second column begins in a row of that frame.
    float SecondColumn(BRect frame) const;

    // BView
    void FrameResized(float width, float height) override;

protected:
    static constexpr float kIndent = 4; // of a row's texts

    /// Draws a row, on a ground of its own.
    virtual void DrawRow(size_t place, BRect frame, bool isSelected) = 0;
    /// What assistive programs say of it.
    virtual std::string Spoken(size_t place) const = 0;

    /// Fills a row's ground: as what is selected, else in `color`.
    void DrawGround(BRect frame, bool isSelected, rgb_color color);
    /// Draws a text cut in its middle to the width.
    void DrawCut(const std::string& text, BPoint place, float width, rgb_color color);
    /// From a row's top to the foot of its letters.
    float Baseline() const { return fBaseline; }

private:
    class Row;

    const float fFirstPart;
    std::vector<std::unique_ptr<Row>> fRows;
    float fBaseline = 0;
};

/// The line above a list that says what its two columns are.
class ColumnTitles : public BView
{
public:
    /// Borrows the list, which outlives it or is in the same window.
    ColumnTitles(BRect frame, const ColumnList& list, const char* first, const char* second);

    // BView
    void Draw(BRect updateRect) override;

private:
    const ColumnList& fList;
    const std::string fFirst;
    const std::string fSecond;
};

} // namespace add_ons
