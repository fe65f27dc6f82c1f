#pragma once

#include "panes/HitFolder.h"
#include "panes/RowsJob.h"

#include <Entry.h>

#include <mutex>
#include <string>
#include <vector>

namespace norvane {

class DatePattern;

/// Reads the hits of a query into rows, which show their paths. Hits that are gone have none.
///
/// Many hits are read by several threads, each some hundred at a time.
class HitsReader : public RowsReader
{
public:
    /// The hits, one after the other as they were found: those of a folder mostly stand together.
    HitsReader(std::vector<entry_ref> hits, const OpenOrder& order);

    /// The folders that are watched. Once, after Read().
    std::vector<HitFolder> TakeFolders();

    // RowsReader
    status_t Read(Notes& notes, ListedRows* rows) override;
    void LetGo() override;

private:
    class Chunk;
    class Work;

    void Watch(const node_ref& node, const std::string& path);
    void AddLinks(std::vector<Chunk>& chunks, const DatePattern& dates, ListedRows* rows);

    const std::vector<entry_ref> fHits;
    const std::string fDateFormat;
    const BMessenger fWatcher;

    std::mutex fMutex;               // guards all below
    std::vector<HitFolder> fFolders; // watched, and nobody took them
};

} // namespace norvane
