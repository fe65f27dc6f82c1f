#pragma once

#include "panes/RowsJob.h"

#include <memory>
#include <string>

namespace norvane {

/// Reads a folder into rows and has it watched.
///
/// Thread: the functions are the owner's.
class ListingJob : public RowsJob
{
public:
    /// Begins to read. When it is let go of, the watch that was begun ends, unless it was taken.
    ListingJob(const std::string& folder, const OpenOrder& order);

    // After the end:
    /// The folder with its watch, which is the caller's to end. Once.
    WatchedFolder TakeFolder();
    /// Whether the folder is some volume's Trash.
    bool IsTrash();

private:
    class Reader;

    ListingJob(const std::shared_ptr<Reader>& reader, const OpenOrder& order);

    const std::shared_ptr<Reader> fReader;
};

} // namespace norvane
