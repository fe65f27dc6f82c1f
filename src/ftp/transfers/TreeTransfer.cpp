#include "ftp/transfers/TreeTransfer.h"

#include "fileops/engine/CopyPlace.h"
#include "fileops/engine/OperationUI.h"
#include "ftp/transfers/Server.h"

#include <Directory.h>

#include <utility>

namespace norvane {

TreeTransfer::TreeTransfer(Server& server, OperationUI& ui, BDirectory& top, std::string path,
                           const char* carried)
    : fUI(ui), fServer(server), fCarried(carried), fFolders(top), fPath(std::move(path))
{
}

bool TreeTransfer::Walk(const Branch& first)
{
    Enter(first, *Here());
    while (!fLevels.empty()) {
        const Level& level = fLevels.back();
        if (level.next < level.branches.size() && fServer.IsUsable() && !fUI.IsStopped()) {
            EnterNext();
        } else {
            Leave();
        }
    }
    return fIsWhole && !fUI.IsStopped();
}

void TreeTransfer::EnterNext()
{
    Level& level = fLevels.back();
    const Branch branch = std::move(level.branches[level.next++]);
    const Folder here = Here();
    if (here == nullptr) {
        Fail(branch.name, "the folder that it lies in is out of reach");
        return;
    }
    Enter(branch, *here);
}

void TreeTransfer::Entered(Folder folder, const Branch& branch, const std::string& above)
{
    fLevels.push_back({branch, above, fPath.size(), {}});
    fFolders.Enter(std::move(folder), branch.name, branch.node);
    fPath = ShownPath(fPath, branch.name.c_str());
}

void TreeTransfer::Leave()
{
    if (fLevels.back().next < fLevels.back().branches.size()) {
        FailRest();
    }
    const Level level = std::move(fLevels.back());
    fLevels.pop_back();
    fFolders.Leave();
    fPath.resize(level.pathBytes);
    fServer.Leave(level.above);
}

void TreeTransfer::FailRest()
{
    Fail(Current().name,
         std::string("not all that is in it ") + fCarried + ": " + fServer.LostBecause());
}

void TreeTransfer::Fail(const std::string& name, const std::string& reason)
{
    fIsWhole = false;
    if (!fUI.IsStopped()) {
        fUI.NoteProblem(name, reason);
    }
}

} // namespace norvane
