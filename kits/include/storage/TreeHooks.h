#pragma once

#include <StorageDefs.h>

/// What the walks over a whole tree ask and tell: BEntry::RemoveTree() and BEntry::MeasureTree().
/// An extension of the platform.
///
/// A walk may use several threads. They call the hooks one at a time, so hooks need no lock against
/// each other; IsStopped() alone is called by any of them at any time.
class BTreeHooks
{
public:
    /// The walk has ended by then.
    virtual ~BTreeHooks();

    /// True ends the walk; looked at for every entry, and 20 times a second by the thread that
    /// began the walk, while others work. Thread: any, at any time.
    virtual bool IsStopped() const { return false; }
    /// Something stays, or cannot be read. `path` leads to it from the folder that the top entry
    /// lies in; without memory for that it is its name alone. A folder that stays only for what
    /// stays in it is not told, nor what MayRemove() kept.
    virtual void Failed(const char* path, status_t reason);

    /// Whether MayRemove() is asked, which costs the record of each entry. Looked at once.
    virtual bool ChecksEntries() const { return false; }
    /// Whether this entry, itself, may be removed; `record` is as it is now. A folder is asked
    /// about before what is in it; when it may not go, all of that stays too.
    virtual bool MayRemove(const char* path, const struct stat& record);
};
