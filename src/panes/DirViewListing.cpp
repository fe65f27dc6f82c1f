#include "panes/DirView.h"

#include "panes/DatePattern.h"
#include "panes/FolderReader.h"
#include "panes/PathText.h"
#include "settings/HomeFolder.h"
#include "settings/MsgBox.h"

#include <Entry.h>
#include <OS.h>
#include <Path.h>
#include <ScrollBar.h>
#include <Window.h>

#include <utility>

// Listing folders and query results, and going from one folder to another.

namespace norvane {

namespace {

std::string UnreadableText(const std::string& path, status_t status)
{
    switch (status) {
    case B_NOT_A_DIRECTORY:
        return "The directory, " + path + ", is not valid.\nThe volume may not be mounted.";
    case B_NAME_TOO_LONG:
        return "The name returned for an entry is too long.";
    case B_BAD_VALUE:
        return "Invalid input value, or the directory object was not initialized properly.";
    case B_FILE_ERROR:
        return "The directory object was not initialized properly.";
    case B_LINK_LIMIT:
        return "Link limit exceeded.  It is possible that a cyclic link exists in your file "
               "system.";
    case B_NO_MEMORY:
        return "Not enough memory to traverse the directory.";
    default:
        return "The directory, " + path + ", cannot be read.";
    }
}

// Beyond so many rows giving their memory back takes longer than an answer to a key may.
constexpr int32 kManyRows = 20'000;

int32 DeleteRowList(void* rows)
{
    delete static_cast<std::vector<std::unique_ptr<DirListItem>>*>(rows);
    return B_OK;
}

/// Deletes the rows on a thread of its own, or here when there is none.
void DeleteInBackground(std::unique_ptr<std::vector<std::unique_ptr<DirListItem>>> rows)
{
    const thread_id thread =
        spawn_thread(&DeleteRowList, "row deleter", B_LOW_PRIORITY, rows.get());
    if (thread >= 0 && resume_thread(thread) == B_OK) {
        [[maybe_unused]] const auto* taken = rows.release(); // adopted by the thread
    }
}

} // namespace

int DirView::Populate(const char* path)
{
    return List(path, Complaint::kAlert);
}

int DirView::List(const std::string& path, Complaint complaint)
{
    if (fShowsProgress) {
        fNotifier.StartProgress();
    }
    FolderReader reader;
    status_t watchStatus = B_OK;
    status_t status = reader.Open(path);
    if (status == B_OK) {
        status = BeginWatch(reader, &watchStatus);
    }
    if (status == B_OK) {
        ReadRecords(reader);
        RowList folders;
        RowList files;
        reader.TakeRows(DatePattern::For(fDateFormat), folders, files);
        DeleteRows();
        fMode = kLocalMode;
        fPath = path;
        ShowRows(std::move(folders), std::move(files));
    } else if (!fIsWatching || reader.Node() != fWatched) {
        EndWatch(reader.Node());
    }
    if (fShowsProgress) {
        fNotifier.StopProgress();
    }
    if (status == B_OK) {
        NotifyParent(MSG_PANE_INFO);
        TakeWatch(reader, watchStatus, complaint);
        return 1;
    }
    if (complaint == Complaint::kAlert && status != B_ENTRY_NOT_FOUND) {
        MsgBox("Err", UnreadableText(path, status).c_str(), "OK", B_INFO_ALERT);
    }
    return -1;
}

void DirView::ReadRecords(FolderReader& reader)
{
    if (fShowsProgress) {
        fNotifier.SetProgressMax(reader.CountEntries() + 1);
    }
    int32 told = 0;
    while (reader.ReadMore()) {
        if (fShowsProgress) {
            fNotifier.Step(reader.CountRead() - told);
            told = reader.CountRead();
        }
    }
}

void DirView::ShowRows(RowList folders, RowList files)
{
    BList rows(static_cast<int32>(folders.size() + files.size()) + 1);
    fIndex.Reserve(folders.size() + files.size());
    for (RowList* group : {&folders, &files}) {
        for (std::unique_ptr<DirListItem>& row : *group) {
            if (!row->IsParent()) {
                fIndex.Add(row.get());
            }
            fTotals.Add(*row);
            rows.AddItem(row.release()); // ours, deleted by DeleteRows()
        }
    }
    AddList(&rows);
}

int DirView::Populate(BMessage* queryResults)
{
    Clear();
    fMode = kQueryMode;
    fQuery.clear();
    const char* query = nullptr;
    if (queryResults->FindString("QueryString", &query) == B_OK) {
        fQuery = query;
    }
    NotifyParent(MSG_PANE_INFO);
    char* field = nullptr;
    type_code type = 0;
    int32 count = 0;
    if (queryResults->GetInfo(B_REF_TYPE, 0, &field, &type, &count) != B_OK) {
        count = 0;
    }
    if (fShowsProgress) {
        fNotifier.StartProgress();
        fNotifier.SetProgressMax(count);
    }
    RowList folders;
    RowList files;
    for (int32 i = 0; i < count; i++) {
        entry_ref ref;
        if (queryResults->FindRef(field, i, &ref) == B_OK) {
            BEntry entry(&ref);
            auto row = std::make_unique<DirListItem>(&entry, ViewColor(), false, kQueryMode,
                                                     fDateFormat.c_str());
            (row->IsDir() ? folders : files).push_back(std::move(row));
        }
        if (fShowsProgress) {
            fNotifier.Step();
        }
    }
    ShowRows(std::move(folders), std::move(files));
    NotifyParent(MSG_PANE_INFO);
    if (fShowsProgress) {
        fNotifier.StopProgress();
    }
    return 1;
}

void DirView::Clear()
{
    StopNodeMonitoring();
    DeleteRows();
}

void DirView::DeleteRows()
{
    DropRenameField();
    const int32 count = CountItems();
    // Deleted once the list has let go of them.
    auto rows = std::make_unique<RowList>(static_cast<std::size_t>(count));
    for (int32 i = 0; i < count; i++) {
        (*rows)[static_cast<std::size_t>(i)].reset(RowAt(i));
    }
    fMeasure.Cancel();
    fAnchor = nullptr;
    fReplaced = nullptr;
    fPress.reset();
    fMarks.Clear();
    fIndex.Clear();
    fOrder.Clear();
    fTotals = {};
    fMovedIn.clear();
    MakeEmpty();
    if (count > kManyRows) {
        DeleteInBackground(std::move(rows));
    }
}

void DirView::Refresh()
{
    if (fMode == kLocalMode) {
        Populate(fPath.c_str());
    }
}

void DirView::SetPath(const char* path)
{
    Populate(path != nullptr ? path : "/");
}

void DirView::GoToDir(const char* path)
{
    const std::string folder = ResolveFolder(path, fPath, HomeFolder());
    if (fMode == kQueryMode) {
        // The results stay until the next listing; that one shows the folder.
        fPath = fDownPath = folder;
        NotifyParent(MSG_PANE_INFO);
    } else if (Populate(folder.c_str()) == 1) {
        fDownPath = folder;
    }
}

void DirView::NavigateUp()
{
    if (fMode == kQueryMode) {
        if (Populate(fPath.c_str()) == 1) {
            fMayNavigateDown = true;
        }
        return;
    }
    if (fMode != kLocalMode || fPath == "/") {
        return;
    }
    const std::string left = fPath;
    if (Populate(ParentFolder(fPath).c_str()) == 1) {
        fDownPath = left;
        fMayNavigateDown = true;
    }
}

void DirView::NavigateDown()
{
    if (fMayNavigateDown) {
        Populate(std::string(fDownPath).c_str());
    }
}

status_t DirView::Invoke(BMessage*)
{
    const DirListItem* row = RowAt(CurrentSelection());
    if (row == nullptr) {
        return B_ERROR;
    }
    if (row->IsParent()) {
        NavigateUp();
    } else if (row->IsEnterable()) {
        EnterFolder(*row);
    }
    return B_OK;
}

void DirView::EnterFolder(const DirListItem& row)
{
    // A query's row shows its whole path; a folder's row only its name.
    const std::string path =
        fMode == kQueryMode ? row.GetEntryName() : JoinPath(fPath, row.GetEntryName());
    if (Populate(path.c_str()) == 1) {
        fMayNavigateDown = false;
    }
}

} // namespace norvane
