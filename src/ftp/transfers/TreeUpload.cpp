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
    : fUpload(context), fUI(context.ui), fServer(context.server), fTop(source),
      fSources(source.folder), fPath(source.path)
{
}

bool TreeUpload::Run(const std::string& name, const struct stat& record)
{
    Enter({name, record}, fTop.folder);
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

void TreeUpload::EnterNext()
{
    Level& level = fLevels.back();
    const Child child = std::move(level.folders[level.next++]);
    const Folder here = fSources.Here();
    if (here == nullptr) {
        Fail(child.name, "the folder that it lies in is out of reach");
        return;
    }
    Enter(child, *here);
}

/// Goes into the folder on both sides, and sends its files; or leaves it alone, told.
void TreeUpload::Enter(const Child& child, BDirectory& parent)
{
    const Folder folder = Open(child, parent);
    if (folder == nullptr) {
        return;
    }
    const std::string above = fServer.Path();
    ListedEntries listed;
    if (!fUpload.Claim(child.name)) {
        fIsWhole = false;
        return;
    }
    if (!EnterOnServer(child.name, &listed)) {
        return;
    }
    fLevels.push_back({child.name, above, fPath.size(), {}});
    fSources.Enter(folder, child.name, NodeOf(child.record));
    fPath = ShownPath(fPath, child.name.c_str());
    SendContents(*folder, listed);
}

/// The local folder; null, and told, when it is not what it was.
TreeUpload::Folder TreeUpload::Open(const Child& child, BDirectory& parent)
{
    auto folder = std::make_shared<BDirectory>();
    const status_t status = folder->SetToChild(parent, child.name.c_str());
    struct stat record;
    if (status == B_ENTRY_NOT_FOUND || status == B_NOT_A_DIRECTORY) {
        fIsWhole = false;
        fUI.Tell(ShownPath(fPath, child.name.c_str()), ItemAlert::kNoSuchFolder);
        return nullptr;
    }
    if (status != B_OK) {
        Fail(child.name, ReasonFor(status));
        return nullptr;
    }
    if (folder->GetStat(&record) != B_OK || NodeOf(record) != NodeOf(child.record)) {
        Fail(child.name, "another folder took its place");
        return nullptr;
    }
    if (is_kernel_volume(*folder)) {
        Fail(child.name, "it belongs to the system, not to a volume");
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
            Fail(fLevels.back().name, "not all that is in it was sent: " + fServer.LostBecause());
            return;
        }
        Child child{name, {}};
        const status_t found = folder.GetStatFor(name, &child.record);
        if (found == B_OK) {
            SendChild(folder, child, listed);
        } else {
            Fail(child.name, ReasonFor(found));
        }
    }
    if (status != B_ENTRY_NOT_FOUND) {
        TellListFailed(fLevels.back().name, status);
    }
}

void TreeUpload::SendChild(BDirectory& folder, const Child& child, const ListedEntries& listed)
{
    if (S_ISDIR(child.record.st_mode)) {
        fLevels.back().folders.push_back(child);
    } else if (!S_ISREG(child.record.st_mode)) {
        Fail(child.name, "it is neither a file nor a folder");
    } else if (!FileUpload(fUpload).Run({folder, fPath}, child.name, listed)) {
        fIsWhole = false;
    }
}

void TreeUpload::TellListFailed(const std::string& name, status_t status)
{
    fIsWhole = false;
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

void TreeUpload::Leave()
{
    const Level level = std::move(fLevels.back());
    fLevels.pop_back();
    if (level.next < level.folders.size() && !fUI.IsStopped()) {
        Fail(level.name, "not all that is in it was sent: " + fServer.LostBecause());
    }
    fSources.Leave();
    fPath.resize(level.pathBytes);
    fServer.Leave(level.above);
}

void TreeUpload::Fail(const std::string& name, const std::string& reason)
{
    fIsWhole = false;
    if (!fUI.IsStopped()) {
        fUI.NoteProblem(name, reason);
    }
}

} // namespace norvane
