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

using MeantRows = std::vector<DirListItem*>;

bool HasNextPane(const BView* pane)
{
    for (const BView* view = pane; view != nullptr; view = view->NextSibling()) {
        if (view != pane && dynamic_cast<const DirPane*>(view) != nullptr) {
            return true;
        }
    }
    for (const BView* view = pane; view != nullptr; view = view->PreviousSibling()) {
        if (view != pane && dynamic_cast<const DirPane*>(view) != nullptr) {
            return true;
        }
    }
    return false;
}

/// What is done to no row.
void DoHere(DirView& list, RowCommand command)
{
    switch (command) {
    case RowCommand::kPaste:
        list.PasteEntries();
        break;
    case RowCommand::kNewFolder:
        list.DoNewFolder();
        break;
    case RowCommand::kRefresh:
        list.Refresh();
        break;
    case RowCommand::kTerminal:
        list.Window()->PostMessage(kOpenTerminal);
        break;
    default:
        break;
    }
}

/// The message that carries local entries; null for others.
std::unique_ptr<BMessage> EntriesOf(const RowSource& source, const MeantRows& rows)
{
    std::unique_ptr<BMessage> entries = source.MessageFor(rows);
    return entries->HasRef("refs") ? std::move(entries) : nullptr;
}

std::string PathsOf(const RowSource& source, const MeantRows& rows)
{
    std::vector<std::string> paths;
    paths.reserve(rows.size());
    for (const DirListItem* row : rows) {
        std::string path = source.PathOf(*row);
        if (path.starts_with("//")) { // below the root
            path.erase(0, 1);
        }
        paths.push_back(std::move(path));
    }
    return PathsAsText(paths);
}

void SendToNextPane(BWindow& window, const RowSource& source, const MeantRows& rows,
                    const char* type)
{
    const std::unique_ptr<BMessage> message = source.MessageFor(rows);
    message->AddString("Dragging", "false");
    message->AddString("Direction", "Right");
    message->AddString("TypeOfCopy", type);
    window.PostMessage(message.get());
}

void ShowProperties(BWindow& window, const MeantRows& rows)
{
    BMessage message(kShowProperties);
    for (const DirListItem* row : rows) {
        message.AddRef("refs", row->GetRef());
    }
    window.PostMessage(&message);
}

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

/// The watch tells of those that left.
void Restore(const MeantRows& rows)
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
    facts.hasNextPane = HasNextPane(fPane);
    if (row == nullptr) {
        return facts;
    }
    facts.isParent = row->IsParent();
    facts.isFile = source.EntryToOpen(*row) != nullptr;
    facts.canOpen = row->IsParent() || row->IsEnterable() || facts.isFile;
    facts.canView = Mode() == kLocalMode && facts.isFile;
    return facts;
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

/// The Menu key gives no character.
void DirView::UnmappedKeyDown(const BMessage& message)
{
    constexpr int32 kMenuKey = 0x68;
    if (message.GetInt32("key", 0) == kMenuKey && !message.HasInt32("be:key_repeat")) {
        OpenRowMenu();
    }
}

void DirView::CarryOut(RowCommand command, DirListItem* row, const MeantRows& rows)
{
    DoHere(*this, command);
    const int32 index = row != nullptr ? fRows.IndexOf(row) : -1;
    if (index >= 0) { // no filter keeps it out by now
        CarryOutOnRow(command, index);
    }
    if (!rows.empty() && !rows.front()->IsParent()) {
        CarryOutOnAll(command, rows);
    }
}

/// What keys do to the selected row: so it is selected.
void DirView::CarryOutOnRow(RowCommand command, int32 index)
{
    const entry_ref* file = fListing.Source().EntryToOpen(*RowAt(index));
    switch (command) {
    case RowCommand::kOpen:
        Select(index);
        Invoke();
        break;
    case RowCommand::kOpenWith:
        if (file != nullptr) {
            OfferPrograms(*file, BMessenger(nullptr, Window()));
        }
        break;
    case RowCommand::kView:
        Select(index);
        OpenLister();
        break;
    case RowCommand::kEdit:
        Select(index);
        OpenEditor();
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

void DirView::CarryOutOnAll(RowCommand command, const MeantRows& rows)
{
    const RowSource& source = fListing.Source();
    switch (command) {
    case RowCommand::kCut:
        if (const auto entries = EntriesOf(source, rows)) {
            EntryClipboard::Cut(*entries);
        }
        break;
    case RowCommand::kCopy:
        if (const auto entries = EntriesOf(source, rows)) {
            EntryClipboard::Copy(*entries);
        }
        break;
    case RowCommand::kCopyPath:
        PutTextOnClipboard(PathsOf(source, rows));
        break;
    case RowCommand::kCopyToNext:
        SendToNextPane(*Window(), source, rows, "Copy");
        break;
    case RowCommand::kMoveToNext:
        SendToNextPane(*Window(), source, rows, "Move");
        break;
    case RowCommand::kTrash:
        TrashRows(rows);
        break;
    case RowCommand::kRestore:
        Restore(rows);
        break;
    case RowCommand::kProperties:
        ShowProperties(*Window(), rows);
        break;
    default:
        break;
    }
}

} // namespace norvane
