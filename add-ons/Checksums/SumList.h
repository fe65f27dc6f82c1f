#pragma once

#include "Checksums/SumJob.h"

#include <ListItem.h>
#include <ListView.h>

#include <memory>
#include <string>
#include <vector>

namespace checksums {

/// Shows the rows of a job: names, and sums or states. A row is looked up when it is drawn.
class SumList : public BListView
{
public:
    SumList(BRect frame, std::shared_ptr<const SumJob> job);
    ~SumList() override;

    /// Shows the rows that there are by now.
    void Refresh();
    /// Marks the row with this sum and brings it into sight; "" marks none. False when there is
    /// none.
    bool Mark(const std::string& sum);

    // BView
    void FrameResized(float width, float height) override;

    /// Where the sums begin in a row of that frame.
    static float SecondColumn(BRect frame);

private:
    class Row;

    void ScrollIntoSight(int32 row);
    void DrawRow(size_t place, BRect frame, bool isSelected);
    void DrawCut(const std::string& text, BPoint place, float width, rgb_color color);
    std::string Spoken(size_t place) const;

    const std::shared_ptr<const SumJob> fJob; // never null
    std::vector<std::unique_ptr<Row>> fRows;
    size_t fMarked = SIZE_MAX;
    float fBaseline = 0;
};

/// The line above the list that says what its columns are.
class SumHeader : public BView
{
public:
    explicit SumHeader(BRect frame);

    // BView
    void Draw(BRect updateRect) override;
};

} // namespace checksums
