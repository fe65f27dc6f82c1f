#include "fileops/engine/LinkKeeper.h"

#include "fileops/engine/LiesIn.h"
#include "fileops/engine/MadeTargets.h"
#include "fileops/engine/OperationContext.h"
#include "fileops/engine/OperationUI.h"
#include "fileops/engine/OwnNames.h"

#include <Directory.h>
#include <Entry.h>
#include <Errors.h>
#include <Path.h>
#include <SymLink.h>
#include <fs_info.h>

namespace norvane {

namespace {

bool LeadsNowhere(status_t status)
{
    return status == B_ENTRY_NOT_FOUND || status == B_NOT_A_DIRECTORY || status == B_LINK_LIMIT;
}

/// Whether the link's text says where it leads from wherever it lies.
status_t FindWhetherWhole(const BDirectory& folder, const char* name, bool* isWhole)
{
    char text[B_PATH_NAME_LENGTH * 4];
    const ssize_t length = BSymLink(&folder, name).ReadLink(text, sizeof(text));
    *isWhole = length > 0 && text[0] == '/';
    return length < 0 ? static_cast<status_t>(length) : status_t(B_OK);
}

/// What the listing does not say; what cannot be told is taken for a folder, which will be entered
/// or tell why not.
uint32 KindOf(const BDirectory& folder, const char* name)
{
    struct stat record;
    if (folder.GetStatFor(name, &record) != B_OK || S_ISDIR(record.st_mode)) {
        return B_DIRECTORY_NODE;
    }
    return S_ISLNK(record.st_mode) ? B_SYMLINK_NODE : B_FILE_NODE;
}

} // namespace

status_t LinkKeeper::Keep(BDirectory& folder, const char* name)
{
    bool isKept = false;
    struct stat record;
    status_t status = FindWhetherWhole(folder, name, &isKept);
    if (status == B_OK && !isKept) {
        status = folder.GetStatFor(name, &record);
    }
    if (status != B_OK || isKept) {
        return status;
    }
    const BEntry pointedTo(&folder, name, true);
    struct stat target;
    status = pointedTo.InitCheck();
    if (status == B_OK) {
        status = pointedTo.GetStat(&target);
    }
    if (LeadsNowhere(status)) {
        return B_OK;
    }
    if (status == B_OK && !has_stable_nodes(folder)) {
        return B_UNSUPPORTED; // it cannot be told where that lies
    }
    if (status == B_OK) {
        status = LiesIn(pointedTo, fContext.moving, &isKept);
    }
    BPath path;
    if (status == B_OK && !isKept) {
        status = pointedTo.GetPath(&path);
    }
    return status != B_OK || isKept ? status : Replace(folder, name, record, path.Path());
}

/// Puts a link with another text in the place of the one that was looked at.
status_t LinkKeeper::Replace(BDirectory& folder, const char* name, const struct stat& record,
                             const char* text)
{
    const OwnTemporaryName beside;
    BSymLink link;
    status_t status = folder.CreateSymLink(beside.Name(), text, &link);
    if (status == B_OK) {
        fContext.access.FinishMoved(&link, BNode(&folder, name), record);
        status = folder.ExchangeChildren(beside.Name(), name);
    }
    if (status == B_OK) {
        struct stat replaced;
        const bool isIt = folder.GetStatFor(beside.Name(), &replaced) == B_OK &&
                          NodeOf(replaced) == NodeOf(record);
        if (!isIt) {
            // Others put something else there meanwhile: it gets its name back, and is not moved.
            const status_t back = folder.ExchangeChildren(beside.Name(), name);
            if (back != B_OK) {
                return back; // whatever lies there is not ours to remove
            }
            status = B_BUSY;
        }
    }
    // One of the two links is left there, if it was made.
    const status_t removed = folder.RemoveChildFile(beside.Name());
    if (removed != B_OK && removed != B_ENTRY_NOT_FOUND) {
        fContext.ui.NoteProblem(
            name, "what it replaced is still beside it, under the name of a temporary file");
    }
    return status;
}

status_t LinkKeeper::KeepBelow(BDirectory& parent, const char* name)
{
    FolderChain folders(parent);
    fFolders = &folders;
    status_t status = Enter(name);
    while (status == B_OK && !fLevels.empty()) {
        Level& level = fLevels.back();
        if (level.next == level.folders.size()) {
            fLevels.pop_back();
            folders.Leave();
        } else {
            const std::string child = std::move(level.folders[level.next++]);
            status = Enter(child);
        }
    }
    fLevels.clear();
    fFolders = nullptr;
    return status;
}

status_t LinkKeeper::Enter(const std::string& name)
{
    const std::shared_ptr<BDirectory> above = fFolders->Here();
    if (above == nullptr) {
        return B_ENTRY_NOT_FOUND;
    }
    auto folder = std::make_shared<BDirectory>();
    status_t status = folder->SetToUnmountedChild(*above, name.c_str());
    if (status == B_NO_MORE_FDS && fFolders->CloseAbove()) {
        status = folder->SetToUnmountedChild(*above, name.c_str());
    }
    struct stat record;
    if (status == B_OK) {
        status = folder->GetStat(&record);
    }
    if (status != B_OK) {
        return status;
    }
    fFolders->Enter(folder, name, NodeOf(record));
    fLevels.emplace_back();
    return KeepIn(*folder, &fLevels.back().folders);
}

status_t LinkKeeper::KeepIn(BDirectory& folder, std::vector<std::string>* folders)
{
    const char* name = nullptr;
    uint32 kind = 0;
    struct stat record;
    std::vector<std::string> links;
    status_t status = folder.GetNextName(&name, &kind);
    for (; status == B_OK; status = folder.GetNextName(&name, &kind)) {
        if (kind == 0) {
            kind = KindOf(folder, name);
        }
        if (kind == B_DIRECTORY_NODE) {
            folders->emplace_back(name);
        } else if (kind == B_SYMLINK_NODE) {
            links.emplace_back(name);
        }
        fContext.ui.EntriesVisited(0);
        if (fContext.ui.IsStopped()) {
            return B_CANCELED;
        }
    }
    status = status == B_ENTRY_NOT_FOUND ? folder.GetStat(&record) : status;
    for (const std::string& link : links) {
        status = status == B_OK ? Keep(folder, link.c_str()) : status;
    }
    if (status == B_OK && !links.empty()) {
        folder.SetTimesLike(record); // nothing of it was changed
    }
    return status;
}

} // namespace norvane
