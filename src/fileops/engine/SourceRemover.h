#pragma once

#include "fileops/engine/CopyPlace.h"
#include "fileops/engine/FolderChain.h"

#include <SupportDefs.h>

#include <sys/stat.h>

#include <memory>
#include <string>
#include <vector>

class BEntry;

namespace norvane {

class MoveLedger;
class OperationUI;

/// Where the copy of a moved item lies.
struct CopiedItem
{
    BDirectory& folder;
    std::string name;
    bool hasStableNodes = true; // of its volume
};

/// Deletes the source of a move: exactly what was read, as far as its copy is still there.
///
/// The item gets a hidden name first, so that nothing that others put in its place is deleted in
/// its stead; what has to stay gets its own name back. Thread: the operation's.
class SourceRemover
{
public:
    /// Ownership: borrows all for its own life.
    SourceRemover(OperationUI& ui, const MoveLedger& ledger, const CopiedItem& copy);

    /// Says whether nothing of the item is left.
    bool Remove(BEntry& item);

private:
    struct Child
    {
        std::string name;
        struct stat record;
    };
    /// A folder whose contents are being deleted.
    struct Level
    {
        std::string name;       // as it is told
        std::string sourceName; // the top has another on the disk
        uint64 place;
        std::vector<Child> folders;
        size_t next = 0; // of them
        bool stays = false;
    };

    bool RemoveAside(BEntry& item, const std::string& name, const std::string& aside);
    bool RemoveTree(BDirectory& parent, const std::string& name, const std::string& aside,
                    const struct stat& record);
    bool Enter(const std::string& name, const std::string& sourceName,
               const std::string& targetName, uint64 place, const struct stat& record);
    void RemoveFiles(BDirectory& source, BDirectory& target);
    void RemoveFile(BDirectory& source, BDirectory& target, const Child& child);
    void Leave();
    bool MayGo(const std::string& name, uint64 place, const struct stat& record,
               const BDirectory& target, const char* targetName);
    void Stays(const std::string& name, const char* reason);
    void Keep();

    OperationUI& fUI;
    const MoveLedger& fLedger;
    const CopiedItem& fCopy;
    std::unique_ptr<FolderChain> fSources;
    std::unique_ptr<FolderChain> fTargets;
    std::vector<Level> fLevels;
    bool fIsGone = true; // so far
};

} // namespace norvane
