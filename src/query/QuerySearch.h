#pragma once

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
/// its threads, which die when the disk lets them.
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
    };
    struct Counts
    {
        int32 examined = 0; // whose contents were looked at
        int32 found = 0;
        int32 unreadable = 0;
    };

    /// Begins to search. Without a thread to be had it has ended with nothing when this returns.
    explicit QuerySearch(Order order);
    ~QuerySearch();
    QuerySearch(const QuerySearch&) = delete;
    QuerySearch& operator=(const QuerySearch&) = delete;

    Counts Look() const;
    /// The path of the first file that could not be read; empty: none was, or it was told before.
    std::string TakeUnreadable();
    /// What was found, volume by volume. Once, after kSearchEnded.
    std::vector<entry_ref> TakeHits();

private:
    class Work;

    const std::shared_ptr<Work> fWork;
};

} // namespace norvane
