#pragma once

namespace norvane {

class CLVColumn;

/// What a column belongs to, and tells of its changes.
class ColumnOwner
{
public:
    virtual ~ColumnOwner() = default;

    /// The column is broader or narrower than it was.
    virtual void ColumnWidened(CLVColumn& column) = 0;
    /// The column was hidden, or is no longer.
    virtual void ColumnShownChanged(CLVColumn& column) = 0;
};

} // namespace norvane
