#pragma once

#include "panes/RememberedRows.h"
#include "panes/RowMenu.h"

#include <Point.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

class BMessage;

namespace norvane {

class ColumnListView;
class DirListItem;
class PaneMarks;
class PaneRows;

/// A list as what its menus are about.
class MenuTarget
{
public:
    virtual ~MenuTarget() = default;

    /// What can be done with a row; null: with the place alone. The mark is asked of the row
    /// itself.
    virtual RowMenuFacts FactsOf(const DirListItem* row) = 0;
    /// Names the place shown: what was chosen for another one is not done.
    virtual std::string PlaceName() const = 0;
    /// Does what was chosen: with the row that the menu was opened for, or with all the rows that
    /// it acts on. Of the place's menu there are none.
    virtual void CarryOut(RowCommand command, DirListItem* row,
                          const std::vector<DirListItem*>& rows) = 0;
};

/// The menus of a list's rows, and of the place below them: opens them, and finds the entries again
/// that were meant when something is chosen.
///
/// By the mouse a menu acts on the marks when its row is one of them, else on its row alone; by a
/// key on what is marked, else on the row, as other keys do. What is for one entry (opening,
/// renaming, the mark) is for the row in each case. While a menu stands open rows may go, be
/// renamed or be those of another place: what is chosen then is done with the entries that were
/// meant, or not at all.
///
/// Thread: the list's window's.
class PaneMenus
{
public:
    PaneMenus(ColumnListView& list, PaneRows& rows, PaneMarks& marks, MenuTarget& target)
        : fList(list), fRows(rows), fMarks(marks), fTarget(target)
    {
    }

    /// Opens the selected row's menu below its name; without one that of the row marked first, else
    /// that of the place.
    void OpenByKey();
    /// Opens a row's menu, or for null that of the place, at a point of the screen; without either
    /// nothing.
    void OpenAt(std::optional<DirListItem*> row, BPoint screen);
    /// Handles a kRowMenuChosen.
    void Chosen(const BMessage& choice);

private:
    std::vector<DirListItem*> ActedOn(DirListItem* row, bool isByKey) const;
    std::unique_ptr<BPopUpMenu> Make(const DirListItem* row);
    void Remember(DirListItem* row, const std::vector<DirListItem*>& rows);
    BPoint BelowName(int32 index, BPopUpMenu& menu) const;

    ColumnListView& fList;
    PaneRows& fRows;
    PaneMarks& fMarks;
    MenuTarget& fTarget;

    int32 fNumber = 0;  // of the menu that was opened last
    std::string fPlace; // of that
    bool fIsOfPlace = false;
    RememberedRows fRow;
    RememberedRows fActedOn;
};

} // namespace norvane
