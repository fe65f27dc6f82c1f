#pragma once

#include "panes/RowsJob.h"

#include <Entry.h>

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
    HitsReader(std::vector<entry_ref> hits, std::string dateFormat);

    // RowsReader
    status_t Read(Notes& notes, ListedRows* rows) override;

private:
    class Chunk;
    class Work;

    void AddLinks(std::vector<Chunk>& chunks, const DatePattern& dates, ListedRows* rows);

    const std::vector<entry_ref> fHits;
    const std::string fDateFormat;
};

} // namespace norvane
