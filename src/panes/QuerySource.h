#pragma once

#include "panes/HitFolder.h"
#include "panes/ReadSource.h"

#include <memory>
#include <string>
#include <vector>

namespace norvane {

class HitsReader;

/// The hits of a query as what a list shows.
///
/// The folders that hits lie in are watched, the first some hundred of them: a hit that goes or is
/// renamed leaves or changes its row. What comes to fit the query later is no hit.
class QuerySource : public ReadSource
{
public:
    /// `results` has the hits in its first field of refs, and the query's text as "QueryString".
    /// `folder` is the one shown before: going up leads back to it.
    QuerySource(const BMessage& results, std::string folder);

    // RowSource
    void NodeChanged(const BMessage& notice, PaneRows& rows) override;
    std::string Complaint(status_t) const override { return {}; }
    /// Null: the query is not asked again.
    std::unique_ptr<RowSource> Again() const override { return nullptr; }
    std::unique_ptr<RowSource> Up() const override;
    std::unique_ptr<RowSource> Into(const DirListItem& row) const override;
    /// The hits stay; the folder is where going up leads from now on.
    std::unique_ptr<RowSource> GoTo(const std::string& folder) override;
    FolderWork MakingFolder() const override { return nullptr; }
    EntryWork Renaming(const DirListItem& row, const std::string& newName) const override;
    bool DeletesForGood() const override { return false; }
    /// Deletes nothing.
    std::optional<OperationRequest> Delete(const std::vector<DirListItem*>&, bool) override;
    std::unique_ptr<BMessage> MessageFor(const std::vector<DirListItem*>& rows) const override;
    DropMeaning MeaningOf(const BMessage& entries, const DirListItem* onto) const override;
    PaneMode Mode() const override { return kQueryMode; }
    std::string HeaderText() const override { return fQuery; }
    std::string EmptyText() const override { return "Nothing was found."; }
    std::string PathOf(const DirListItem& row) const override { return row.GetEntryName(); }
    const std::string& LocalFolder() const override { return fFolder; }

protected:
    // ReadSource
    RowsJob& StartReading(const OpenOrder& order) override;
    void TakeOver() override;

private:
    std::string fQuery;
    std::string fFolder;
    std::vector<entry_ref> fHits;        // until they are rows
    std::shared_ptr<HitsReader> fReader; // null until it is opened, as the job
    std::unique_ptr<RowsJob> fJob;
    std::vector<HitFolder> fFolders; // watched
};

} // namespace norvane
