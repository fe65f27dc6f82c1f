#include "ftp/transfers/TreeDownload.h"

#include "fileops/engine/OperationContext.h"
#include "fileops/engine/OperationUI.h"
#include "fileops/engine/ProblemList.h"
#include "ftp/transfers/Server.h"

#include <Directory.h>
#include <Errors.h>

namespace norvane {

namespace {

constexpr size_t kMostDepth = 256;
constexpr mode_t kNewFolderMode = 0777; // less the umask

} // namespace

TreeDownload::TreeDownload(const DownloadContext& context, const CopyPlace& target)
    : fDownload(context), fContext(context.operation), fUI(context.operation.ui),
      fServer(context.server), fTop(target), fTargets(target.folder), fPath(target.path)
{
}

bool TreeDownload::Run(const RemoteEntry& top)
{
    Enter(top, fTop);
    while (!fLevels.empty()) {
        const Level& level = fLevels.back();
        if (level.next < level.folders.size() && fServer.IsUsable() && !fUI.IsStopped()) {
            EnterNext();
        } else {
            Leave();
        }
    }
    return fIsWhole && !fUI.IsStopped();
}

void TreeDownload::EnterNext()
{
    Level& level = fLevels.back();
    const RemoteEntry entry = std::move(level.folders[level.next++]);
    const Folder here = fTargets.Here();
    if (here == nullptr) {
        Fail(entry.name, "the folder that it lies in is out of reach");
        return;
    }
    Enter(entry, {*here, fPath, level.target, level.isNew, fTop.hasStableNodes});
}

/// Goes into the folder on both sides, and brings its files. False when it is left alone.
bool TreeDownload::Enter(const RemoteEntry& entry, const CopyPlace& target)
{
    const std::string& name = entry.commandName;
    if (!IsLocalName(name)) {
        return Fail(entry.name, "it cannot have this name here");
    }
    if (fLevels.size() >= kMostDepth) {
        return Fail(name, "folders lie in each other deeper than they can be followed");
    }
    const std::string above = fServer.Path();
    const std::string refusal = fServer.Enter(name);
    if (!refusal.empty()) {
        return Fail(name, refusal);
    }
    bool isNew = false;
    const Folder folder = OpenTarget(target, name, &isNew);
    struct stat record;
    if (folder == nullptr || folder->GetStat(&record) != B_OK) {
        fServer.Leave(above);
        return false;
    }
    const node_ref node = NodeOf(record);
    fLevels.push_back({name, above, fPath.size(), node, isNew, {}});
    fTargets.Enter(folder, name, node);
    fPath = ShownPath(fPath, name.c_str());
    ReceiveContents();
    return true;
}

/// Makes the folder, or opens the one that is there itself: nothing is written through a link.
TreeDownload::Folder TreeDownload::OpenTarget(const CopyPlace& target, const std::string& name,
                                              bool* isNew)
{
    auto folder = std::make_shared<BDirectory>();
    status_t status = target.folder.CreateNewDirectory(name.c_str(), kNewFolderMode, folder.get());
    *isNew = status == B_OK;
    if (status == B_FILE_EXISTS) {
        status = folder->SetToChild(target.folder, name.c_str());
    }
    struct stat record;
    if (status == B_OK) {
        status = folder->GetStat(&record);
    }
    if (status != B_OK) {
        TellOpenFailed(name, status);
        return nullptr;
    }
    const node_ref node = NodeOf(record);
    if (!*isNew && (fContext.made.Has(node) || fContext.made.HasName(target.path, name.c_str()))) {
        Fail(name, "another item of this operation has its name");
        return nullptr;
    }
    if (*isNew) {
        fContext.made.Add(node);
        if (!target.hasStableNodes) {
            fContext.made.AddName(target.path, name.c_str());
        }
    }
    if (*isNew && !target.isNew) {
        fContext.journal.Note(fDownload.item, {Change::Kind::kMade, target.node, name, node});
    }
    return folder;
}

void TreeDownload::TellOpenFailed(const std::string& name, status_t status)
{
    fIsWhole = false;
    switch (status) {
    case B_BAD_VALUE:
        fUI.Tell(name, ItemAlert::kIllegalPath);
        break;
    case B_BUSY:
        fUI.Tell(name, ItemAlert::kBusyNode);
        break;
    case B_NAME_TOO_LONG:
        fUI.Tell(name, ItemAlert::kPathTooLong);
        break;
    default:
        fUI.NoteProblem(name, ReasonFor(status));
    }
}

void TreeDownload::ReceiveContents()
{
    std::vector<RemoteEntry> entries;
    const std::string refusal = fServer.List(&entries);
    if (!refusal.empty()) {
        Fail(fLevels.back().name, refusal);
        return;
    }
    const Folder here = fTargets.Here();
    const CopyPlace place{*here, fPath, fLevels.back().target, fLevels.back().isNew,
                          fTop.hasStableNodes};
    for (RemoteEntry& entry : entries) {
        if (fUI.IsStopped()) {
            return;
        }
        if (!fServer.IsUsable()) {
            Fail(fLevels.back().name, "not all that is in it arrived: " + fServer.LostBecause());
            return;
        }
        if (entry.commandName.empty()) {
            Fail(entry.name, "the server's listing does not show its name whole");
        } else if (entry.IsFolder()) {
            fLevels.back().folders.push_back(std::move(entry));
        } else if (!FileDownload(fDownload, place).Run(entry)) {
            fIsWhole = false;
        }
    }
}

void TreeDownload::Leave()
{
    const Level level = std::move(fLevels.back());
    fLevels.pop_back();
    if (level.next < level.folders.size() && !fUI.IsStopped()) {
        Fail(level.name, "not all that is in it arrived: " + fServer.LostBecause());
    }
    fTargets.Leave();
    fPath.resize(level.pathBytes);
    fServer.Leave(level.above);
}

bool TreeDownload::Fail(const std::string& name, const std::string& reason)
{
    fIsWhole = false;
    if (!fUI.IsStopped()) {
        fUI.NoteProblem(name, reason);
    }
    return false;
}

} // namespace norvane
