#pragma once

#include <Rect.h>
#include <SupportDefs.h>

#include <string>

class BScrollView;
class BView;

namespace norvane {

class DirListItem;
class EditControl;

/// What stands in a field, and which of its bytes are selected.
struct TypedName
{
    std::string text;
    int32 selectionStart = 0;
    int32 selectionEnd = 0;
};

/// The field in which a row's name is edited, over the row, as a child of the list.
///
/// Each field that was opened sends the list one message, kNewNameTyped or kRenameCancelled;
/// that of a field that was taken away before is passed over. Thread: the list's window's.
class RenameField
{
public:
    /// Opens over `cell` with the name selected, or (not null) with what was typed before, and
    /// takes the focus. Ownership: borrows list and row until it is closed or dropped.
    void Open(BView* list, DirListItem* row, int32 index, BRect cell, const TypedName* typed);
    bool IsOpen() const { return fField != nullptr; }
    /// The row that is edited, null when none is.
    DirListItem* Row() const { return fRow; }
    TypedName Typed() const;
    /// Follows its row, and the column.
    void MoveTo(BRect cell);

    /// Whether the message that arrived comes from the open field. Asked once per message.
    bool IsMeant();
    /// Takes the field away after its message; says whether it had the focus.
    bool Close();
    /// Takes the field away unasked; says whether it had the focus.
    bool Drop();

private:
    EditControl* fField = nullptr;     // in the container
    BScrollView* fContainer = nullptr; // a child of the list
    DirListItem* fRow = nullptr;
    int32 fStaleMessages = 0; // of dropped fields, on their way
};

} // namespace norvane
