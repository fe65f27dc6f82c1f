#include "panes/FolderSource.h"

#include "MessageCodes.h"
#include "panes/PathText.h"

#include <Directory.h>
#include <Font.h>
#include <String.h>

#include <utility>

namespace norvane {

std::string UnreadableText(const std::string& folder, status_t status)
{
    const std::string path = BFont::VisibleText(folder.c_str()).String();
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

std::unique_ptr<BMessage> LocalEntries(const std::vector<DirListItem*>& rows,
                                       const std::string& from)
{
    auto message = std::make_unique<BMessage>(kLocalEntries);
    for (const DirListItem* row : rows) {
        message->AddRef("refs", row->GetRef());
    }
    message->AddString("From", from.c_str());
    return message;
}

EntryWork RenamingEntry(const entry_ref& ref, const std::string& newName)
{
    return [ref, newName] {
        BEntry entry(&ref);
        return entry.InitCheck() == B_OK ? entry.Rename(newName.c_str(), false) : entry.InitCheck();
    };
}

// Rows

RowsJob& FolderSource::StartReading(const OpenOrder& order)
{
    fJob = std::make_unique<ListingJob>(fPath, order);
    return *fJob;
}

void FolderSource::TakeOver()
{
    fFolder = fJob->TakeFolder();
    fIsTrash = fJob->IsTrash();
}

std::string FolderSource::Complaint(status_t status) const
{
    // A folder that is not there needs no telling: whoever asked sees that nothing happens.
    return status == B_ENTRY_NOT_FOUND ? std::string() : UnreadableText(fPath, status);
}

// Other places

std::unique_ptr<RowSource> FolderSource::Again() const
{
    return std::make_unique<FolderSource>(fPath);
}

std::unique_ptr<RowSource> FolderSource::Up() const
{
    return fPath != "/" ? std::make_unique<FolderSource>(ParentFolder(fPath)) : nullptr;
}

std::unique_ptr<RowSource> FolderSource::Into(const DirListItem& row) const
{
    return row.IsEnterable() ? std::make_unique<FolderSource>(JoinPath(fPath, row.GetEntryName()))
                             : nullptr;
}

std::unique_ptr<RowSource> FolderSource::GoTo(const std::string& folder)
{
    return std::make_unique<FolderSource>(folder);
}

// Changes of entries

FolderWork FolderSource::MakingFolder() const
{
    if (!fFolder.has_value()) {
        return nullptr;
    }
    // In the folder that is shown, wherever it is by now.
    return [inside = fFolder->inside](const std::string& name) {
        BDirectory folder;
        const status_t status = BEntry(&inside).GetParent(&folder);
        return status == B_OK ? folder.CreateDirectory(name.c_str(), nullptr) : status;
    };
}

EntryWork FolderSource::Renaming(const DirListItem& row, const std::string& newName) const
{
    return RenamingEntry(*row.GetRef(), newName); // the watch tells the list
}

std::optional<OperationRequest> FolderSource::Delete(const std::vector<DirListItem*>& rows,
                                                     bool isForGood)
{
    auto message = std::make_unique<BMessage>(kDeleteRequest);
    message->AddBool(kForGood, isForGood);
    for (const DirListItem* row : rows) {
        message->AddRef("refs", row->GetRef());
    }
    return OperationRequest{"Delete", fPath, std::move(message)};
}

// Messages

std::unique_ptr<BMessage> FolderSource::MessageFor(const std::vector<DirListItem*>& rows) const
{
    return LocalEntries(rows, fPath);
}

DropMeaning FolderSource::MeaningOf(const BMessage& entries, const DirListItem* onto) const
{
    using Act = DropMeaning::Act;
    const bool isRemote = entries.what == kRemoteEntries;
    if (!isRemote && !entries.HasRef("refs")) {
        return {Act::kPassOn};
    }
    // A folder's row stands for that folder.
    const bool isIntoRow = onto != nullptr && !onto->IsParent() && onto->IsEnterable();
    const std::string target = isIntoRow ? JoinPath(fPath, onto->GetEntryName()) : fPath;
    const char* from = nullptr;
    if (entries.FindString("From", &from) == B_OK && target == from) {
        return {Act::kIgnore};
    }
    if (target == "/") {
        return {Act::kRefuse, "Warning",
                "Sorry can't copy files or folders to the root of the file system!"};
    }
    return {Act::kOperate,
            "",
            "",
            {isRemote ? "Download" : "Copy", target, std::make_unique<BMessage>(entries)}};
}

// Texts

std::string FolderSource::PathOf(const DirListItem& row) const
{
    return fPath + "/" + row.GetEntryName(); // below the root with two slashes
}

std::string FolderSource::NameAbove() const
{
    return fPath.substr(fPath.rfind('/') + 1);
}

} // namespace norvane
