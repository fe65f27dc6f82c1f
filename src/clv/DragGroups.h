#pragma once

#include <SupportDefs.h>

#include <cstddef>
#include <vector>

namespace norvane {

class CLVColumn;

/// The columns of a list as runs that move together, and where one of them comes to lie when it is
/// dragged past the others. Needs no window.
///
/// A column goes with the next one when it is tied to it or shares its header cell. Runs with a
/// column that is locked at an end stay, and nothing is dragged past them. Ownership: borrows the
/// columns, as they are laid out.
class DragGroups
{
public:
    using Columns = std::vector<CLVColumn*>;

    /// Between these the left edge of a dragged group may be.
    struct Limits
    {
        float min;
        float max;
    };

    DragGroups() = default;
    /// Takes the columns in their display order.
    explicit DragGroups(const Columns& displayed);

    /// The group of a column; it must be one of the columns.
    std::size_t GroupOf(const CLVColumn* column) const;
    /// Whether the group may be dragged at all.
    bool CanMove(std::size_t group) const;
    const Columns& ColumnsOf(std::size_t group) const { return fGroups[group].columns; }
    /// Where the group lies before it is dragged.
    float LeftOf(std::size_t group) const { return fGroups[group].left; }
    Limits LimitsOf(std::size_t group) const;
    /// The display order when the group's left edge is dragged to `left`: it changes places with
    /// those whose middle it has reached.
    Columns Shifted(std::size_t group, float left) const;

private:
    struct Group
    {
        Columns columns;
        float left = 0; // of its shown columns
        float right = 0;
        bool isShown = false;
        bool isLocked = false;
        bool isMovable = true;
    };

    static void Join(Group& group, CLVColumn* column);
    std::size_t FirstReachable(std::size_t group) const;
    std::size_t LastReachable(std::size_t group) const;
    std::size_t PlaceOf(std::size_t group, float left) const;

    std::vector<Group> fGroups;
};

} // namespace norvane
