#pragma once

#include "Checksums/SumJob.h"
#include "common/ColumnList.h"

#include <memory>
#include <string>

namespace checksums {

/// Shows the rows of a job: names, and sums or states.
class SumList : public add_ons::ColumnList
{
public:
    SumList(BRect frame, std::shared_ptr<const SumJob> job);

    /// Shows the rows that there are by now.
    void Refresh();
    /// Marks the row with this sum and brings it into sight; "" marks none. False when there is
    /// none.
    bool Mark(const std::string& sum);

private:
    void ScrollIntoSight(int32 row);

    // ColumnList
    void DrawRow(size_t place, BRect frame, bool isSelected) override;
    std::string Spoken(size_t place) const override;

    const std::shared_ptr<const SumJob> fJob; // never null
    size_t fMarked = SIZE_MAX;
};

} // namespace checksums
