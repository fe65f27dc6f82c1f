#pragma once

#include "RenameMany/RenamePreview.h"
#include "common/ColumnList.h"

#include <memory>

namespace rename_many {

/// Shows the old and the new names of all entries side by side, with what is wrong in red.
class RenameList : public add_ons::ColumnList
{
public:
    explicit RenameList(BRect frame);

    /// Shows these names; null for none.
    void ShowNames(std::shared_ptr<const Preview> preview);
    /// Selects the next row below the selected one that has a fault, from the top after the last
    /// one, and brings it into sight. False when there is none.
    bool SelectNextFault();

private:
    // ColumnList
    void DrawRow(size_t place, BRect frame, bool isSelected) override;
    std::string Spoken(size_t place) const override;

    std::shared_ptr<const Preview> fPreview; // may be null
};

} // namespace rename_many
