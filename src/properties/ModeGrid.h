#pragma once

#include "properties/ModeChange.h"

#include <vector>

class BStringView;
class BView;

namespace norvane {

class ModeBox;

/// The check boxes for permissions, in rows for owner, group and others and one for what is
/// special, with the number that they make.
///
/// Thread: the window's, or with it locked.
class ModeGrid
{
public:
    /// Ownership: `page` adopts the boxes, and outlives this.
    explicit ModeGrid(BView& page);

    /// Shows what entries have, and lets it be changed.
    void SetTo(const ModeMix& mix);
    /// Says that none of the entries has any: links.
    void SetToNone();
    void SetEnabled(bool isEnabled);
    /// What the person touched.
    ModeChange Change() const;
    /// The number follows the boxes.
    void ShowNumber();
    /// The room that the rows' labels need, and what all of a row needs behind its label.
    float WidestLabel() const;
    float BoxesWidth() const;
    /// Lays all out from (left, top) on, the boxes `divider` further right; returns the lower end.
    float Place(float left, float top, float divider);

private:
    ModeMix Now() const;

    BView& fPage;
    std::vector<BStringView*> fLabels; // of the rows, children of the page
    std::vector<ModeBox*> fBoxes;      // row by row, children of the page
    BStringView* fNumber = nullptr;    // a child of the page
    bool fHasNone = false;
};

} // namespace norvane
