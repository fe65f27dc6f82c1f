#include "DetachedThread.h"
#include "MessageCodes.h"
#include "fileops/engine/ProblemList.h"
#include "fileops/engine/Restore.h"
#include "panes/DirPane.h"
#include "panes/DirView.h"
#include "panes/EntryClipboard.h"
#include "panes/OpenEntry.h"
#include "panes/PathList.h"

#include <AppDefs.h>
#include <Clipboard.h>
#include <Message.h>
#include <Window.h>

#include <memory>
#include <utility>

// What the menu of a row can do, and does.

namespace norvane {

namespace {

void PutTextOnClipboard(const std::string& text)
{
    if (!be_clipboard->Lock()) {
        return;
    }
    be_clipboard->Clear();
    be_clipboard->Data()->AddData("text/plain", B_MIME_TYPE, text.data(),
                                  static_cast<ssize_t>(text.size()));
    be_clipboard->Commit();
    be_clipboard->Unlock();
}

void RestoreAll(const std::vector<entry_ref>& entries)
{
    ProblemList problems;
    for (const entry_ref& entry : entries) {
        const std::string reason = RestoreFromTrash(entry);
        if (!reason.empty()) {
            problems.Add(entry.name, reason);
        }
    }
    problems.Show();
}

} // namespace

RowMenuFacts DirView::FactsOf(const DirListItem* row)
{
    const RowSource& source = fListing.Source();
    RowMenuFacts facts;
    facts.isLocal = Mode() != kFtpMode;
    facts.canPaste = Mode() != kQueryMode;
    facts.canRename = source.MakingFolder() != nullptr || Mode() == kQueryMode;
    facts.isDeletedForGood = source.DeletesForGood();
    facts.isInTrash = Mode() == kLocalMode && source.DeletesForGood();
    facts.hasNextPane = HasNextPane();
    if (row == nullptr) {
        return facts;
    }
    facts.isParent = row->IsParent();
    facts.isFile = source.EntryToOpen(*row) != nullptr;
    facts.canOpen = row->IsParent() || row->IsEnterable() || facts.isFile;
    facts.canView = Mode() == kLocalMode && facts.isFile;
    return facts;
}

bool DirView::HasNextPane() const
{
    for (const BView* view = fPane; view != nullptr; view = view->NextSibling()) {
        if (view != fPane && dynamic_cast<const DirPane*>(view) != nullptr) {
            return true;
        }
    }
    for (const BView* view = fPane; view != nullptr; view = view->PreviousSibling()) {
        if (view != fPane && dynamic_cast<const DirPane*>(view) != nullptr) {
            return true;
        }
    }
    return false;
}

/// A local folder by what it is: it may get another path while it is shown.
std::string DirView::PlaceName() const
{
    if (!fUpdates.IsFollowing()) {
        return std::to_string(Mode()) + " " + fListing.Source().HeaderText();
    }
    const node_ref& folder = fUpdates.FolderNode();
    return std::to_string(folder.device) + " " + std::to_string(folder.node);
}

void DirView::CarryOut(RowCommand command, DirListItem* row, const Rows& rows)
{
    CarryOutHere(command);
    if (row != nullptr) {
        CarryOutOnRow(command, *row);
    }
    if (!rows.empty() && !rows.front()->IsParent()) {
        CarryOutOnAll(command, rows);
    }
}

void DirView::CarryOutHere(RowCommand command)
{
    switch (command) {
    case RowCommand::kPaste:
        PasteEntries();
        break;
    case RowCommand::kNewFolder:
        DoNewFolder();
        break;
    case RowCommand::kRefresh:
        Refresh();
        break;
    case RowCommand::kTerminal:
        Window()->PostMessage(kOpenTerminal);
        break;
    default:
        break;
    }
}

void DirView::CarryOutOnRow(RowCommand command, DirListItem& row)
{
    const int32 index = fRows.IndexOf(&row);
    const entry_ref* file = fListing.Source().EntryToOpen(row);
    switch (command) {
    case RowCommand::kOpen:
        OpenRow(row);
        break;
    case RowCommand::kOpenWith:
        if (file != nullptr) {
            OfferPrograms(*file, BMessenger(nullptr, Window()));
        }
        break;
    case RowCommand::kView:
        ViewRow(row);
        break;
    case RowCommand::kEdit:
        EditRows({&row});
        break;
    case RowCommand::kMark:
        ToggleMark(index);
        break;
    case RowCommand::kRename:
        Select(index);
        Edit(index);
        break;
    default:
        break;
    }
}

void DirView::CarryOutOnAll(RowCommand command, const Rows& rows)
{
    switch (command) {
    case RowCommand::kCut:
    case RowCommand::kCopy:
        PutOnClipboard(rows, command);
        break;
    case RowCommand::kCopyPath:
        CopyPathsOf(rows);
        break;
    case RowCommand::kCopyToNext:
        SendToNextPane(rows, "Copy");
        break;
    case RowCommand::kMoveToNext:
        SendToNextPane(rows, "Move");
        break;
    case RowCommand::kTrash:
        TrashRows(rows);
        break;
    case RowCommand::kRestore:
        RestoreRows(rows);
        break;
    case RowCommand::kProperties:
        ShowPropertiesOf(rows);
        break;
    default:
        break;
    }
}

void DirView::PutOnClipboard(const Rows& rows, RowCommand command)
{
    const std::unique_ptr<BMessage> entries = fListing.Source().MessageFor(rows);
    if (!entries->HasRef("refs")) {
        return;
    }
    if (command == RowCommand::kCut) {
        EntryClipboard::Cut(*entries);
    } else {
        EntryClipboard::Copy(*entries);
    }
}

void DirView::CopyPathsOf(const Rows& rows)
{
    std::vector<std::string> paths;
    paths.reserve(rows.size());
    for (const DirListItem* row : rows) {
        std::string path = fListing.Source().PathOf(*row);
        if (path.starts_with("//")) { // below the root
            path.erase(0, 1);
        }
        paths.push_back(std::move(path));
    }
    PutTextOnClipboard(PathsAsText(paths));
}

void DirView::SendToNextPane(const Rows& rows, const char* type)
{
    const std::unique_ptr<BMessage> message = fListing.Source().MessageFor(rows);
    message->AddString("Dragging", "false");
    message->AddString("Direction", "Right");
    message->AddString("TypeOfCopy", type);
    Window()->PostMessage(message.get());
}

/// The watch tells of those that left.
void DirView::RestoreRows(const Rows& rows)
{
    std::vector<entry_ref> entries;
    entries.reserve(rows.size());
    for (const DirListItem* row : rows) {
        entries.push_back(*row->GetRef());
    }
    if (!StartDetached("restoring", B_NORMAL_PRIORITY,
                       [entries = std::move(entries)] { RestoreAll(entries); })) {
        ProblemList problems;
        problems.Add(rows.front()->GetEntryName(), ReasonFor(B_NO_MORE_THREADS));
        problems.Show();
    }
}

void DirView::ShowPropertiesOf(const Rows& rows)
{
    BMessage message(kShowProperties);
    for (const DirListItem* row : rows) {
        message.AddRef("refs", row->GetRef());
    }
    Window()->PostMessage(&message);
}

} // namespace norvane
