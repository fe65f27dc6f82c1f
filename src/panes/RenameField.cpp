#include "panes/RenameField.h"

#include "MessageCodes.h"
#include "panes/DirListItem.h"
#include "panes/EditControl.h"

#include <Font.h>
#include <ScrollView.h>

namespace norvane {

void RenameField::Open(BView* list, DirListItem* row, int32 index, BRect cell,
                       const TypedName* typed)
{
    Drop();
    fRow = row;
    // The container's border lies around the field.
    fField = new EditControl(cell.InsetByCopy(1, 1), index, row->LeafName(), list, kNewNameTyped,
                             kRenameCancelled);
    // The name is edited in the letters in which the list shows it.
    BFont font;
    list->GetFont(&font);
    fField->SetFontAndColor(&font);
    fContainer = new BScrollView("renamecontainer", fField, B_FOLLOW_LEFT | B_FOLLOW_TOP, 0, false,
                                 false, B_PLAIN_BORDER);
    list->AddChild(fContainer); // adopted
    fField->MakeFocus(true);
    if (typed != nullptr) {
        fField->SetText(typed->text.c_str());
        fField->Select(typed->selectionStart, typed->selectionEnd);
        fField->ScrollToSelection();
    }
}

TypedName RenameField::Typed() const
{
    TypedName typed{fField->Text()};
    fField->GetSelection(&typed.selectionStart, &typed.selectionEnd);
    return typed;
}

void RenameField::MoveTo(BRect cell)
{
    fContainer->MoveTo(cell.LeftTop());
    fContainer->ResizeTo(cell.Width(), cell.Height());
    fField->ResizeTo(cell.Width() - 2, cell.Height() - 2);
}

bool RenameField::IsMeant()
{
    if (fStaleMessages > 0) {
        fStaleMessages--;
        return false;
    }
    return IsOpen();
}

bool RenameField::Close()
{
    if (!IsOpen()) {
        return false;
    }
    const bool hadFocus = fField->IsFocus();
    fField->MakeFocus(false);
    fContainer->RemoveSelf();
    delete fContainer; // and the field in it
    fContainer = nullptr;
    fField = nullptr;
    fRow = nullptr;
    return hadFocus;
}

bool RenameField::Drop()
{
    fStaleMessages += IsOpen() ? 1 : 0;
    return Close();
}

} // namespace norvane
