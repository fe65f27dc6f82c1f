#include "fileops/engine/MadeTargets.h"

#include "fileops/engine/OwnNames.h"

#include <Directory.h>
#include <Entry.h>
#include <Errors.h>
#include <TreeHooks.h>

namespace norvane {

namespace {

std::string Folded(std::string path)
{
    for (char& letter : path) {
        const auto byte = static_cast<unsigned char>(letter);
        if (byte >= 0x80) {
            letter = '\x80';
        } else if (letter >= 'A' && letter <= 'Z') {
            letter = static_cast<char>(letter + ('a' - 'A'));
        }
    }
    return path;
}

/// Lets a walk remove what an operation made, and nothing else.
class MadeHooks : public BTreeHooks
{
public:
    explicit MadeHooks(const MadeTargets& made) : fMade(made) {}

    // BTreeHooks
    bool ChecksEntries() const override { return true; }
    bool MayRemove(const char*, const struct stat& record) override
    {
        return fMade.Has(NodeOf(record));
    }

private:
    const MadeTargets& fMade;
};

} // namespace

void MadeTargets::AddName(const std::string& folderPath, const char* name)
{
    fFoldedPaths.insert(Folded(folderPath + "/" + name));
}

bool MadeTargets::HasName(const std::string& folderPath, const char* name) const
{
    return !fFoldedPaths.empty() && fFoldedPaths.count(Folded(folderPath + "/" + name)) > 0;
}

bool RemoveMadeTree(BDirectory& folder, const char* name, const node_ref& node,
                    const MadeTargets& made)
{
    BEntry entry(&folder, name);
    const OwnTemporaryName aside;
    struct stat record;
    if (entry.GetStat(&record) != B_OK || NodeOf(record) != node) {
        return false;
    }
    MadeHooks hooks(made);
    const status_t renamed = entry.Rename(aside.Name());
    if (renamed == B_DEVICE_FULL) {
        return entry.RemoveTree(&hooks) == B_OK; // no room for its record under another name
    }
    if (renamed != B_OK) {
        return false;
    }
    if (entry.RemoveTree(&hooks) == B_OK) {
        return true;
    }
    entry.Rename(name);
    return false;
}

bool RemoveIfNode(BDirectory& folder, const char* name, const node_ref& node)
{
    struct stat record;
    if (folder.GetStatFor(name, &record) != B_OK || NodeOf(record) != node) {
        return false;
    }
    // Between a look and a removal by name another's file may come to that name: what is removed
    // has a name that nobody else knows.
    const OwnTemporaryName aside;
    if (folder.RenameChild(name, aside.Name()) != B_OK) {
        return false;
    }
    if (folder.GetStatFor(aside.Name(), &record) == B_OK && NodeOf(record) == node) {
        return folder.RemoveChildFile(aside.Name()) == B_OK;
    }
    [[maybe_unused]] const status_t back = folder.RenameChild(aside.Name(), name);
    return false;
}

} // namespace norvane
