#pragma once

#include "panes/LinkTargets.h"
#include "panes/RowsJob.h"

#include <Directory.h>
#include <Entry.h>

#include <string>
#include <vector>

namespace norvane {

class DatePattern;

/// Reads the hits of a query into rows, which show their paths. Hits that are gone have none.
class HitsReader : public RowsReader
{
public:
    /// The hits, one after the other as they were found: those of a folder mostly stand together.
    HitsReader(std::vector<entry_ref> hits, std::string dateFormat);

    // RowsReader
    status_t Read(Notes& notes, ListedRows* rows) override;

private:
    struct Link
    {
        LinkQuestion question;
        std::string path;
    };

    void ReadHit(const entry_ref& hit, const DatePattern& dates, ListedRows* rows);
    void EnterFolder(const entry_ref& hit);
    void AddRow(entry_ref hit, const BEntryRecord& record, mode_t target, std::string path,
                const DatePattern& dates, ListedRows* rows);
    void AddLinks(const DatePattern& dates, ListedRows* rows);

    std::vector<entry_ref> fHits;
    const std::string fDateFormat;
    // The folder of the last hit.
    BDirectory fFolder;
    node_ref fNode;
    std::string fPath; // with a slash at its end
    std::vector<Link> fLinks;
};

} // namespace norvane
