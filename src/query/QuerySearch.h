#pragma once

#include "query/SearchCounts.h"

#include <Entry.h>
#include <Messenger.h>
#include <SupportDefs.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace norvane {

/// Searches volumes for the entries of a predicate, and their contents when that is asked for,
/// on threads of its own.
///
/// Letting go of it ends the search: it tells nobody anything from then on, and nobody waits for
/// its threads, which die when the disk lets them. A volume that does not answer ends the search
/// of that volume alone.
///
/// Thread: the functions are the owner's.
class QuerySearch
{
public:
    struct Order
    {
        std::string predicate;
        std::optional<std::string> text; // what the files must hold
        BMessenger window;               // is sent kSearchEnded, with int32 "search"
        int32 number = 0;                // that "search"
        dev_t volume = 0;                // the only one to be searched; 0: all
        int32 patience = 30;             // seconds in which a volume may be silent
    };
    /// Begins to search. Without a thread to be had it has ended with nothing when this returns.
    explicit QuerySearch(Order order);
    ~QuerySearch();
    QuerySearch(const QuerySearch&) = delete;
    QuerySearch& operator=(const QuerySearch&) = delete;

    SearchCounts Look() const;
    /// The path of the first file that could not be read; empty: none was, or it was told before.
    std::string TakeUnreadable();
    /// The names of the volumes that did not answer, once.
    std::vector<std::string> TakeSilent();
    /// What was found, volume by volume. Once, after kSearchEnded.
    std::vector<entry_ref> TakeHits();

private:
    class Work;

    const std::shared_ptr<Work> fWork;
};

} // namespace norvane
