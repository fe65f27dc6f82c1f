#include "ftp/transfers/TreeUpload.h"

#include "fileops/engine/MadeTargets.h"
#include "fileops/engine/OperationUI.h"
#include "fileops/engine/ProblemList.h"
#include "ftp/transfers/Server.h"

#include <Directory.h>
#include <Errors.h>
#include <fs_info.h>

namespace norvane {

TreeUpload::TreeUpload(const UploadContext& context, const LocalFolder& source)
    : TreeTransfer(context.server, context.ui, source.folder, source.path, "was sent"),
      fUpload(context)
{
}

bool TreeUpload::Run(const std::string& name, const struct stat& record)
{
    return Walk({name, NodeOf(record)});
}

void TreeUpload::Enter(const Branch& branch, BDirectory& parent)
{
    const Folder folder = Open(branch, parent);
    if (folder == nullptr) {
        return;
    }
    const std::string above = fServer.Path();
    ListedEntries listed;
    if (!fUpload.Claim(branch.name)) {
        NotWhole();
        return;
    }
    if (!EnterOnServer(branch.name, &listed)) {
        return;
    }
    Entered(folder, branch, above);
    SendContents(*folder, listed);
}

/// The local folder; null, and told, when it is not what it was.
TreeUpload::Folder TreeUpload::Open(const Branch& branch, BDirectory& parent)
{
    auto folder = std::make_shared<BDirectory>();
    const status_t status = folder->SetToChild(parent, branch.name.c_str());
    struct stat record;
    if (status == B_ENTRY_NOT_FOUND || status == B_NOT_A_DIRECTORY) {
        NotWhole();
        fUI.Tell(ShownPath(Path(), branch.name.c_str()), ItemAlert::kNoSuchFolder);
        return nullptr;
    }
    if (status != B_OK) {
        Fail(branch.name, ReasonFor(status));
        return nullptr;
    }
    if (folder->GetStat(&record) != B_OK || NodeOf(record) != branch.node) {
        Fail(branch.name, "another folder took its place");
        return nullptr;
    }
    if (is_kernel_volume(*folder)) {
        Fail(branch.name, "it belongs to the system, not to a volume");
        return nullptr;
    }
    return folder;
}

/// Makes the folder there and goes into it. One that was there before is listed: what it holds is
/// not written over without a question.
bool TreeUpload::EnterOnServer(const std::string& name, ListedEntries* listed)
{
    const std::string above = fServer.Path();
    const bool isNew = fServer.MakeFolder(name).empty();
    const std::string refusal = fServer.IsUsable() ? fServer.Enter(name) : fServer.LostBecause();
    if (!refusal.empty()) {
        Fail(name, refusal);
        return false;
    }
    if (isNew) {
        return true;
    }
    std::vector<RemoteEntry> entries;
    const std::string failure = fServer.List(&entries);
    if (!failure.empty()) {
        Fail(name, failure);
        fServer.Leave(above);
        return false;
    }
    for (RemoteEntry& entry : entries) {
        std::string key = entry.commandName.empty() ? entry.name : entry.commandName;
        listed->insert_or_assign(std::move(key), std::move(entry));
    }
    return true;
}

void TreeUpload::SendContents(BDirectory& folder, const ListedEntries& listed)
{
    const char* name = nullptr;
    status_t status = folder.GetNextName(&name);
    for (; status == B_OK; status = folder.GetNextName(&name)) {
        if (fUI.IsStopped()) {
            return;
        }
        if (!fServer.IsUsable()) {
            FailRest();
            return;
        }
        const std::string child = name;
        struct stat record;
        const status_t found = folder.GetStatFor(child.c_str(), &record);
        if (found == B_OK) {
            SendChild(folder, child, record, listed);
        } else {
            Fail(child, ReasonFor(found));
        }
    }
    if (status != B_ENTRY_NOT_FOUND) {
        TellListFailed(Current().name, status);
    }
}

void TreeUpload::SendChild(BDirectory& folder, const std::string& name, const struct stat& record,
                           const ListedEntries& listed)
{
    if (S_ISDIR(record.st_mode)) {
        HaveWait({name, NodeOf(record)});
    } else if (!S_ISREG(record.st_mode)) {
        Fail(name, "it is neither a file nor a folder");
    } else if (!FileUpload(fUpload).Run({folder, Path()}, name, listed)) {
        NotWhole();
    }
}

void TreeUpload::TellListFailed(const std::string& name, status_t status)
{
    NotWhole();
    switch (status) {
    case B_NO_MEMORY:
        fUI.Tell(name, ItemAlert::kNoMemoryToList);
        break;
    case B_BAD_VALUE:
        fUI.Tell(name, ItemAlert::kBadFolder);
        break;
    case B_FILE_ERROR:
        fUI.Tell(name, ItemAlert::kFolderNotOpen);
        break;
    case B_NAME_TOO_LONG:
        fUI.Tell(name, ItemAlert::kNameTooLongToList);
        break;
    case B_NOT_A_DIRECTORY:
        fUI.Tell(name, ItemAlert::kNoFolder);
        break;
    case B_LINK_LIMIT:
        fUI.Tell(name, ItemAlert::kLinksInCircle);
        break;
    default:
        fUI.NoteProblem(name, ReasonFor(status));
    }
}

} // namespace norvane
