#include "properties/TreeWalk.h"

#include "fileops/engine/FolderChain.h"

#include <Directory.h>
#include <Errors.h>
#include <fs_info.h>

#include <memory>
#include <vector>

namespace norvane {

namespace {

/// A folder that the walk is in or below.
struct Level
{
    std::string name;
    std::vector<std::string> folders; // in it, still to be gone into; the last one first
};

/// Device numbers do not show what is mounted there of the same volume.
bool IsMountPoint(const BDirectory& folder, const char* name, const struct stat& record)
{
    bool is = false;
    return S_ISDIR(record.st_mode) && is_mount_point(folder, name, &is) == B_OK && is;
}

} // namespace

struct TreeWalk::State
{
    explicit State(BDirectory& top) : chain(top), device(0)
    {
        struct stat record;
        if (top.GetStat(&record) == B_OK) {
            device = record.st_dev;
        }
    }

    FolderChain chain;
    dev_t device; // that the walk stays on
    std::vector<Level> levels;
};

std::string TreeWalk::PathOf(const char* name) const
{
    std::string path;
    for (size_t i = 1; fState != nullptr && i < fState->levels.size(); i++) { // the first: the top
        path += fState->levels[i].name + "/";
    }
    return path + name;
}

void TreeWalk::Walk(BDirectory& top)
{
    State state(top);
    fState = &state;
    state.levels.push_back({"", {}});
    Read(top);
    while (!state.levels.empty()) {
        Level& level = state.levels.back();
        if (!level.folders.empty() && !fVisitor.IsStopped()) {
            const std::string name = std::move(level.folders.back());
            level.folders.pop_back();
            Enter(name);
        } else if (state.levels.size() > 1) {
            Leave();
        } else {
            break;
        }
    }
    fState = nullptr;
}

void TreeWalk::Read(BDirectory& folder)
{
    folder.Rewind();
    const char* name = nullptr;
    status_t status = folder.GetNextName(&name);
    for (; status == B_OK; status = folder.GetNextName(&name)) {
        if (fVisitor.IsStopped()) {
            return;
        }
        struct stat record;
        const status_t found = folder.GetStatFor(name, &record);
        if (found == B_ENTRY_NOT_FOUND) {
            continue; // it went meanwhile
        }
        if (found != B_OK) {
            fVisitor.Failed(PathOf(name), found);
            continue;
        }
        if (record.st_dev != fState->device || IsMountPoint(folder, name, record)) {
            continue;
        }
        if (fVisitor.Before(folder, name, record) && S_ISDIR(record.st_mode)) {
            fState->levels.back().folders.emplace_back(name);
        }
    }
    if (status != B_ENTRY_NOT_FOUND) {
        fVisitor.Failed(PathOf("."), status);
    }
}

void TreeWalk::Enter(const std::string& name)
{
    const std::shared_ptr<BDirectory> above = fState->chain.Here();
    if (above == nullptr) {
        fVisitor.Failed(PathOf(name.c_str()), B_ENTRY_NOT_FOUND);
        return;
    }
    auto folder = std::make_shared<BDirectory>();
    status_t status = folder->SetToUnmountedChild(*above, name.c_str());
    if (status == B_NO_MORE_FDS && fState->chain.CloseAbove()) {
        status = folder->SetToUnmountedChild(*above, name.c_str());
    }
    if (status == B_BUSY || status == B_NOT_A_DIRECTORY || status == B_ENTRY_NOT_FOUND) {
        return; // mounted there, or something else by now
    }
    struct stat record;
    if (status == B_OK) {
        status = folder->GetStat(&record);
    }
    if (status != B_OK) {
        fVisitor.NotEntered(*above, name.c_str(), status);
        return;
    }
    fState->chain.Enter(folder, name, node_ref(record.st_dev, record.st_ino));
    fState->levels.push_back({name, {}});
    Read(*folder);
}

void TreeWalk::Leave()
{
    const std::string name = std::move(fState->levels.back().name);
    const std::shared_ptr<BDirectory> folder = fState->chain.Here();
    fState->levels.pop_back();
    if (folder != nullptr) {
        fVisitor.After(*folder, name.c_str());
    } else {
        fVisitor.Failed(PathOf(name.c_str()), B_ENTRY_NOT_FOUND);
    }
    fState->chain.Leave();
}

} // namespace norvane
