#include "fileops/engine/ProblemList.h"
#include "panes/DirView.h"
#include "panes/NewName.h"
#include "panes/PathText.h"
#include "panes/SoonAnswer.h"
#include "settings/MsgBox.h"

#include <Message.h>

#include <cstring>
#include <memory>
#include <optional>
#include <string>
#include <utility>

// New folders, and new names of entries.

namespace norvane {

namespace {

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

constexpr char kIsNew[] = "new"; // the folder's name was made up, and is to be typed

/// What became of a folder that was to be made, and what a look at it found. Waits for the disk.
BMessage FolderAnswer(const std::string& name, status_t status, const entry_ref& inside,
                      const char* flag)
{
    BMessage answer(kFolderMade);
    answer.AddString("name", name.c_str());
    answer.AddInt32("status", status);
    if (flag[0] != '\0') {
        answer.AddBool(flag, true);
    }
    entry_ref ref = inside;
    if (status == B_OK && ref.name != nullptr && ref.set_name(name.c_str()) == B_OK) {
        const BEntryRecord record = LookAt(ref);
        answer.AddData("record", B_RAW_TYPE, &record, sizeof(record));
        answer.AddInt64("device", static_cast<int64>(ref.device));
        answer.AddInt64("directory", static_cast<int64>(ref.directory));
    }
    return answer;
}

} // namespace

// New folders

void DirView::DoNewFolder()
{
    const FolderWork make = fListing.Source().MakingFolder();
    if (make == nullptr) {
        return;
    }
    const auto isListed = [this](int32 number) {
        const DirListItem* row = fRows.FindRow(NewFolderName(number).c_str());
        return row != nullptr && row->IsDir();
    };
    int32 first = 1;
    while (first < kLastFolderNumber && isListed(first)) {
        first++;
    }
    // A file of that name, or a folder that is not listed yet, is in the way too.
    AnswerSoonOrLater([make, first, inside = fUpdates.Inside()] {
        std::string name;
        const status_t status = MakeNewFolder(make, first, &name);
        return FolderAnswer(name, status, inside, kIsNew);
    });
}

void DirView::MkDir(const char* name)
{
    const FolderWork make = fListing.Source().MakingFolder();
    if (make == nullptr) {
        return;
    }
    if (ReasonAgainstName(name) != nullptr) {
        TellNotMade(name, B_BAD_VALUE);
        return;
    }
    AnswerSoonOrLater([make, wanted = std::string(name), inside = fUpdates.Inside()] {
        return FolderAnswer(wanted, make(wanted), inside, "");
    });
}

void DirView::FolderMade(const BMessage& answer)
{
    const char* name = answer.GetString("name", "");
    const status_t status = answer.GetInt32("status", B_ERROR);
    const bool isNew = answer.HasBool(kIsNew);
    if (status == B_FILE_EXISTS && isNew) {
        MsgBox("Foo", kTooManyNewFolders, "OK", B_INFO_ALERT);
    } else if (status != B_OK) {
        TellNotMade(name, status);
    } else if (isNew && IsInShown(answer) && !EditNamed(name)) {
        fNameToEdit = name;
    }
}

/// Whether what was made lies in the folder shown, as far as that can be told.
bool DirView::IsInShown(const BMessage& answer) const
{
    const node_ref& shown = fUpdates.FolderNode();
    return !fUpdates.IsFollowing() ||
           (answer.GetInt64("device", 0) == static_cast<int64>(shown.device) &&
            answer.GetInt64("directory", 0) == static_cast<int64>(shown.node));
}

/// Does not wait for the watch to tell of a new folder: its name is to be typed now.
void DirView::ShowMade(const BMessage& answer)
{
    const void* bytes = nullptr;
    ssize_t size = 0;
    if (answer.what == kFolderMade && fUpdates.IsFollowing() && IsInShown(answer) &&
        answer.FindData("record", B_RAW_TYPE, &bytes, &size) == B_OK &&
        size == static_cast<ssize_t>(sizeof(BEntryRecord))) {
        fUpdates.AddMade(answer.GetString("name", ""), *static_cast<const BEntryRecord*>(bytes));
    }
}

/// An answer that is not there within a moment comes by message.
void DirView::AnswerSoonOrLater(const std::function<BMessage()>& ask)
{
    if (const std::optional<BMessage> answer = AnswerSoon(ask, BMessenger(this))) {
        // No notice was handled since it was asked for; after a later answer they know better.
        ShowMade(*answer);
        EntryAnswered(*answer);
    }
}

void DirView::EntryAnswered(const BMessage& answer)
{
    if (answer.what == kFolderMade) {
        FolderMade(answer);
    } else {
        Renamed(answer);
    }
}

bool DirView::EditNamed(const std::string& name)
{
    const DirListItem* row = name.empty() ? nullptr : fRows.FindRow(name.c_str());
    if (row == nullptr) {
        return false;
    }
    if (row->IsFilteredAway()) {
        EndFilter(); // what was just made is to be seen
    }
    const int32 index = fRows.IndexOf(row);
    Select(index);
    ScrollToSelection();
    Edit(index);
    return true;
}

// Renaming

void DirView::DoRename()
{
    if (CurrentSelection() >= 0) {
        Edit(CurrentSelection());
    }
}

void DirView::RenameEnded(bool isCommitted)
{
    if (const std::optional<RowRenaming::Typed> typed = fRename.Ended(isCommitted)) {
        RenameRow(typed->row, typed->name);
    }
}

void DirView::Rename(const char* newName, int32 index)
{
    DirListItem* row = RowAt(index < 0 ? CurrentSelection() : index);
    if (row != nullptr && !row->IsParent()) {
        const auto length = static_cast<int32>(std::strlen(newName));
        RenameRow(row, {newName, 0, length});
    }
}

void DirView::RenameRow(DirListItem* row, const TypedName& name)
{
    if (const char* reason = ReasonAgainstName(name.text.c_str())) {
        RenameFailed(row, reason, name);
        return;
    }
    const EntryWork rename = fListing.Source().Renaming(*row, name.text);
    AnswerSoonOrLater(
        [rename, ref = *row->GetRef(), oldName = std::string(row->GetEntryName()), name]() mutable {
            BMessage answer(kEntryRenamed);
            answer.AddString("row", oldName.c_str());
            answer.AddInt32("status", rename());
            answer.AddInt32("selection", name.selectionStart);
            answer.AddInt32("selection", name.selectionEnd);
            if (ref.name != nullptr && ref.set_name(name.text.c_str()) == B_OK) {
                answer.AddRef("refs", &ref);
            }
            return answer;
        });
}

/// What was typed is not lost: it can be changed, unless the row went or the person works
/// elsewhere.
void DirView::RenameFailed(DirListItem* row, const char* reason, const TypedName& name)
{
    TellRenameFailed(reason);
    if (row != nullptr && IsFocus() && !fRename.IsOpen()) {
        Select(fRows.IndexOf(row));
        fRename.Begin(fRows.IndexOf(row), &name);
    }
}

void DirView::Renamed(const BMessage& answer)
{
    const status_t status = answer.GetInt32("status", B_ERROR);
    entry_ref ref;
    DirListItem* row = fRows.FindRow(answer.GetString("row", ""));
    const bool isKnown = row != nullptr && row->HasNode() && answer.FindRef("refs", &ref) == B_OK;
    if (status != B_OK) {
        // Another folder's row may have that name by now.
        const bool isInPlace = isKnown && row->GetRef()->device == ref.device &&
                               row->GetRef()->directory == ref.directory;
        const TypedName name{isInPlace ? ref.name : "", answer.GetInt32("selection", 0, 0),
                             answer.GetInt32("selection", 1, 0)};
        RenameFailed(isInPlace ? row : nullptr, ReasonFor(status), name);
        return;
    }
    // Of a folder's row the watch tells; nobody watches a local entry in any other place.
    if (fUpdates.IsFollowing() || !isKnown) {
        return;
    }
    if (Mode() != kQueryMode) {
        fRows.Rebuild(row, ref);
        return;
    }
    // The same as its folder's watch tells, whichever comes first.
    const std::string path = ParentFolder(row->GetEntryName());
    fRows.RebuildHit(row, ref.name, JoinPath(path, ref.name), LookAt(ref));
}

} // namespace norvane
