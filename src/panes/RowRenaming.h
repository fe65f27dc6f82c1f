#pragma once

#include "panes/RenameField.h"

#include <optional>
#include <string>

namespace norvane {

class ColumnListView;
class DirListItem;
class PaneRows;

/// The editing of a row's name in its place: one field at a time, over the row's name cell, which
/// moves and goes with its row.
///
/// Thread: the list's window's.
class RowRenaming
{
public:
    /// A name that was typed, and the row that is to have it.
    struct Typed
    {
        DirListItem* row;
        TypedName name;
    };

    RowRenaming(ColumnListView& list, PaneRows& rows) : fList(list), fRows(rows) {}

    /// Opens the field over a row, scrolled into sight; nothing for "..", for no row and outside a
    /// window. A field that is open goes. `typed` is what was typed into one before; null: the
    /// row's name.
    void Begin(int32 index, const TypedName* typed = nullptr);
    bool IsOpen() const { return fField.IsOpen(); }
    /// Handles the field's message, of another name or of none; the name typed, when there is one
    /// and it differs. The field is gone then, and the list has the focus back that it had.
    std::optional<Typed> Ended(bool isCommitted);
    /// Takes the field away without renaming.
    void Drop();

    /// A row goes away.
    void Forget(const DirListItem* row);
    /// Rows or columns may have moved.
    void Follow();

private:
    BRect NameCell(int32 index) const;
    void GiveFocusBack(bool hadFocus);

    ColumnListView& fList;
    PaneRows& fRows;
    RenameField fField;
};

} // namespace norvane
