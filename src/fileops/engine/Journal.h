#pragma once

#include <EntryRef.h>
#include <NodeRef.h>
#include <SupportDefs.h>

#include <string>
#include <vector>

namespace norvane {

/// One change that an operation made to a folder.
struct Change
{
    enum class Kind : uint8 {
        kMade,     // a file, a link or a folder with all in it, where nothing was
        kReplaced, // what was there is gone
        kMoved,    // as a whole, by its name
        kDeleted,
    };
    Kind kind;
    node_ref folder;  // in which it happened
    std::string name; // there
    node_ref node;    // what has that name now; of a deletion: had it
};

/// What became of one item of an operation.
struct ItemResult
{
    enum class Ending : uint8 {
        kUnknown,    // nothing was done with it
        kWhole,      // all of it was done
        kPartly,     // the source is where it was
        kInOwnTrash, // the source is in the Trash of its volume
    };
    entry_ref source;
    Ending ending = Ending::kUnknown;
    std::vector<Change> changes; // the topmost of what was made, in the order of making
};

/// What an operation did, item by item. Of a new folder only its top is noted, of a merged one what
/// was made or replaced in it.
///
/// Thread: the operation's.
class Journal
{
public:
    /// Makes room for what becomes of the next item.
    void AddItem(const entry_ref& source)
    {
        fItems.push_back({source, ItemResult::Ending::kUnknown, {}});
    }
    void Note(size_t item, Change change) { fItems[item].changes.push_back(std::move(change)); }
    void End(size_t item, ItemResult::Ending ending) { fItems[item].ending = ending; }

    const std::vector<ItemResult>& Items() const { return fItems; }

private:
    std::vector<ItemResult> fItems;
};

} // namespace norvane
