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
    : TreeTransfer(context.server, context.operation.ui, target.folder, target.path, "arrived"),
      fDownload(context), fContext(context.operation), fTop(target)
{
}

bool TreeDownload::Run(const RemoteEntry& top)
{
    return Walk({top.commandName});
}

CopyPlace TreeDownload::PlaceIn(BDirectory& folder) const
{
    return Depth() == 0
               ? fTop
               : CopyPlace{folder, Path(), Current().node, Current().isNew, fTop.hasStableNodes};
}

void TreeDownload::Enter(const Branch& branch, BDirectory& parent)
{
    if (!IsLocalName(branch.name)) {
        Fail(branch.name, "it cannot have this name here");
        return;
    }
    if (Depth() >= kMostDepth) {
        Fail(branch.name, "folders lie in each other deeper than they can be followed");
        return;
    }
    const std::string above = fServer.Path();
    const std::string refusal = fServer.Enter(branch.name);
    if (!refusal.empty()) {
        Fail(branch.name, refusal);
        return;
    }
    Branch entered = branch;
    const Folder folder = OpenTarget(PlaceIn(parent), &entered);
    if (folder == nullptr) {
        fServer.Leave(above);
        return;
    }
    Entered(folder, entered, above);
    ReceiveContents();
}

/// Makes the folder, or opens the one that is there itself: nothing is written through a link.
TreeDownload::Folder TreeDownload::OpenTarget(const CopyPlace& target, Branch* branch)
{
    const char* name = branch->name.c_str();
    auto folder = std::make_shared<BDirectory>();
    status_t status = target.folder.CreateNewDirectory(name, kNewFolderMode, folder.get());
    branch->isNew = status == B_OK;
    if (status == B_FILE_EXISTS) {
        status = folder->SetToChild(target.folder, name);
    }
    struct stat record;
    if (status == B_OK) {
        status = folder->GetStat(&record);
    }
    if (status != B_OK) {
        TellOpenFailed(branch->name, status);
        return nullptr;
    }
    branch->node = NodeOf(record);
    const bool isOwn = fContext.made.Has(branch->node) || fContext.made.HasName(target.path, name);
    if (!branch->isNew && isOwn) {
        Fail(branch->name, "another item of this operation has its name");
        return nullptr;
    }
    if (branch->isNew) {
        fContext.made.Add(branch->node);
        if (!target.hasStableNodes) {
            fContext.made.AddName(target.path, name);
        }
    }
    if (branch->isNew && !target.isNew) {
        fContext.journal.Note(fDownload.item,
                              {Change::Kind::kMade, target.node, branch->name, branch->node});
    }
    return folder;
}

void TreeDownload::TellOpenFailed(const std::string& name, status_t status)
{
    NotWhole();
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
        Fail(Current().name, refusal);
        return;
    }
    const Folder here = Here();
    const CopyPlace place = PlaceIn(*here);
    for (const RemoteEntry& entry : entries) {
        if (fUI.IsStopped()) {
            return;
        }
        if (!fServer.IsUsable()) {
            FailRest();
            return;
        }
        if (entry.commandName.empty()) {
            Fail(entry.name, "the server's listing does not show its name whole");
        } else if (entry.IsFolder()) {
            HaveWait({entry.commandName});
        } else if (!FileDownload(fDownload, place).Run(entry)) {
            NotWhole();
        }
    }
}

} // namespace norvane
