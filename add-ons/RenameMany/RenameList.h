#pragma once

#include "RenameMany/RenamePreview.h"

#include <ListItem.h>
#include <ListView.h>

#include <memory>
#include <vector>

namespace rename_many {

/// Shows the old and the new names of all entries side by side, with what is wrong in red. A row
/// is worked out when it is drawn.
class RenameList : public BListView
{
public:
    explicit RenameList(BRect frame);
    ~RenameList() override;

    /// Shows these names; null for none.
    void ShowNames(std::shared_ptr<const Preview> preview);
    /// Selects the next row below the selected one that has a fault, from the top after the last
    /// one, and brings it into sight. False when there is none.
    bool SelectNextFault();

    // BView
    void FrameResized(float width, float height) override;

    /// Where the new names begin in a row of that frame.
    static float SecondColumn(BRect frame);

private:
    class Row;

    void DrawRow(size_t place, BRect frame, bool isSelected);
    void DrawCut(const std::string& text, BPoint place, float width, rgb_color color);
    std::string Spoken(size_t place) const;

    std::shared_ptr<const Preview> fPreview; // may be null
    std::vector<std::unique_ptr<Row>> fRows;
    float fBaseline = 0;
};

/// The line above the list that says what its columns are.
class RenameHeader : public BView
{
public:
    explicit RenameHeader(BRect frame);

    // BView
    void Draw(BRect updateRect) override;
};

} // namespace rename_many
