#pragma once

#include "panes/ListingJob.h"
#include "panes/ReadSource.h"

#include <memory>

namespace norvane {

/// A local folder as what a list shows.
class FolderSource : public ReadSource
{
public:
    explicit FolderSource(std::string path) : fPath(std::move(path)) {}

    // RowSource
    std::string Complaint(status_t status) const override;
    std::optional<WatchedFolder> Folder() const override { return fFolder; }
    std::unique_ptr<RowSource> Again() const override;
    std::unique_ptr<RowSource> Up() const override;
    std::unique_ptr<RowSource> Into(const DirListItem& row) const override;
    std::unique_ptr<RowSource> GoTo(const std::string& folder) override;
    FolderWork MakingFolder() const override;
    EntryWork Renaming(const DirListItem& row, const std::string& newName) const override;
    bool DeletesForGood() const override { return fIsTrash; }
    std::optional<OperationRequest> Delete(const std::vector<DirListItem*>& rows,
                                           bool isForGood) override;
    std::unique_ptr<BMessage> MessageFor(const std::vector<DirListItem*>& rows) const override;
    DropMeaning MeaningOf(const BMessage& entries, const DirListItem* onto) const override;
    PaneMode Mode() const override { return kLocalMode; }
    std::string HeaderText() const override { return fPath; }
    std::string PathOf(const DirListItem& row) const override;
    std::string NameAbove() const override;
    const std::string& LocalFolder() const override { return fPath; }

protected:
    // ReadSource
    RowsJob& StartReading(const OpenOrder& order) override;
    void TakeOver() override;

private:
    const std::string fPath;
    std::unique_ptr<ListingJob> fJob; // kept: what links lead to may come later
    bool fIsTrash = false;            // as it was when it was read
    std::optional<WatchedFolder> fFolder;
};

/// What is said of a local folder that cannot be opened or read.
std::string UnreadableText(const std::string& path, status_t status);

/// The message of local entries that come from the place called `from`.
std::unique_ptr<BMessage> LocalEntries(const std::vector<DirListItem*>& rows,
                                       const std::string& from);

/// What renames a local entry; one that has the new name is not replaced.
/// Errors: those of finding and of renaming the entry.
EntryWork RenamingEntry(const entry_ref& ref, const std::string& newName);

} // namespace norvane
