#include "fileops/engine/ProblemList.h"
#include "panes/DirPane.h"
#include "panes/DirView.h"
#include "panes/NewName.h"
#include "panes/PathText.h"
#include "settings/MsgBox.h"

#include <Directory.h>
#include <Entry.h>
#include <Message.h>
#include <Window.h>

#include <cmath>
#include <string>

// New folders, and the field in which a row's name is edited.

namespace norvane {

namespace {

constexpr int32 kNameColumn = 1;

void TellRenameFailed(const char* reason)
{
    MsgBox("Foo", (std::string("Could not rename: ") + reason).c_str(), "OK", B_INFO_ALERT);
}

void TellNotMade(const char* name, status_t status)
{
    ProblemList problems;
    problems.Add(name, ReasonFor(status));
    problems.Show();
}

} // namespace

// New folders

void DirView::DoNewFolder()
{
    if (fMode != kLocalMode) {
        return;
    }
    std::string name;
    const status_t status = MakeNewFolder(
        [this](const std::string& candidate) {
            // A file of that name, or a folder that is not listed yet, is in the way too.
            const int32 index = fOrder.Find(candidate.c_str());
            const bool isTaken = index >= 0 && RowAt(index)->IsDir();
            return isTaken ? B_FILE_EXISTS : MakeFolder(candidate.c_str());
        },
        &name);
    if (status == B_FILE_EXISTS) {
        MsgBox("Foo", kTooManyNewFolders, "OK", B_INFO_ALERT);
        return;
    }
    if (status != B_OK) {
        TellNotMade(name.c_str(), status);
        return;
    }
    const entry_ref ref = RefOf(name.c_str());
    AddEntry(&ref);
    const int32 index = fOrder.Find(name.c_str());
    if (index >= 0) {
        Select(index);
        ScrollToSelection();
        Edit(index);
    }
}

status_t DirView::MakeFolder(const char* name) const
{
    BDirectory folder(fPath.c_str());
    return folder.InitCheck() == B_OK ? folder.CreateDirectory(name, nullptr) : folder.InitCheck();
}

void DirView::MkDir(const char* name)
{
    if (fMode != kLocalMode) {
        return;
    }
    const status_t status = ReasonAgainstName(name) == nullptr ? MakeFolder(name) : B_BAD_VALUE;
    if (status != B_OK) {
        TellNotMade(name, status);
    }
}

// The rename field

void DirView::DoRename()
{
    const int32 index = CurrentSelection();
    if (fMode != kFtpMode && index >= 0) {
        Edit(index);
    }
}

void DirView::Edit(int32 index)
{
    DirListItem* row = RowAt(index);
    const CLVColumn* column = ColumnAt(kNameColumn);
    if (row == nullptr || row->IsParent() || column == nullptr || Window() == nullptr) {
        return;
    }
    BRect cell = ItemFrame(index);
    cell.left = column->Begin();
    cell.right = cell.left + std::round(column->Width());
    fRename.Open(this, row, index, cell);
}

void DirView::PlaceRenameField()
{
    if (fRename.IsOpen()) {
        fRename.MoveTo(ItemFrame(IndexOfRow(fRename.Row())).top);
    }
}

void DirView::DropRenameField()
{
    if (fRename.IsOpen()) {
        FieldClosed(fRename.Drop());
    }
}

void DirView::FieldClosed(bool hadFocus)
{
    if (hadFocus) {
        MakeFocus(true);
    } else if (auto* pane = dynamic_cast<DirPane*>(fPane)) {
        pane->HightlighHeader(pane->GotFocus());
    }
}

void DirView::RenameEnded(bool isCommitted)
{
    if (!fRename.IsMeant()) {
        return;
    }
    const std::string name = fRename.Text();
    DirListItem* row = fRename.Row();
    FieldClosed(fRename.Close());
    if (isCommitted && name != row->GetRef()->name) {
        RenameRow(row, name.c_str());
    }
}

void DirView::Rename(const char* newName, int32 index)
{
    DirListItem* row = RowAt(index < 0 ? CurrentSelection() : index);
    if (row != nullptr && !row->IsParent() && fMode != kFtpMode) {
        RenameRow(row, newName);
    }
}

void DirView::RenameRow(DirListItem* row, const char* newName)
{
    if (const char* reason = ReasonAgainstName(newName)) {
        TellRenameFailed(reason);
        return;
    }
    entry_ref ref = *row->GetRef();
    BEntry entry(&ref);
    const status_t status =
        entry.InitCheck() == B_OK ? entry.Rename(newName, false) : entry.InitCheck();
    if (status != B_OK) {
        TellRenameFailed(ReasonFor(status));
        return;
    }
    // Of a folder's row the watch tells; nobody watches the entries of a query.
    if (fMode == kQueryMode && ref.set_name(newName) == B_OK) {
        RebuildRow(row, ref);
    }
}

} // namespace norvane
