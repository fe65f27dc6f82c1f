#pragma once

#include <EntryChanges.h>
#include <Messenger.h>
#include <Node.h>

#include <memory>
#include <string>

namespace norvane {

class PaneRows;

/// The watch of a folder that hits of a query lie in; it ends with the object.
///
/// A list that goes from one query's hits to another's has a folder watched twice for a moment; the
/// system knows one watch for both. Thread: any, one at a time.
class HitWatch
{
public:
    /// `watcher` is told of the folder's entries. IsOn() tells whether that can be.
    HitWatch(const node_ref& folder, const BMessenger& watcher);
    ~HitWatch();
    HitWatch(const HitWatch&) = delete;
    HitWatch& operator=(const HitWatch&) = delete;

    bool IsOn() const { return fIsOn; }

private:
    const node_ref fFolder;
    const BMessenger fWatcher;
    bool fIsOn = false;
};

/// A watched folder of hits.
struct HitFolder
{
    node_ref node;
    std::string path; // with a slash at its end, as its hits show it
    std::unique_ptr<HitWatch> watch;
};

/// Brings the row of a hit, where there is one, up to date with what happened in its folder.
void ApplyToHits(const BEntryChange& change, const std::string& folderPath, PaneRows& rows);

} // namespace norvane
