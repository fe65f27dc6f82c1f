#pragma once

#include "fileops/engine/FolderChain.h"

#include <NodeRef.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

class BDirectory;

namespace norvane {

class OperationUI;
class Server;

/// The walk through a tree that is carried to or from a server, on both sides at once: a folder's
/// files first, then its subfolders.
///
/// Works relative to open folders, with a stack of its own. Thread: the operation's.
class TreeTransfer
{
protected:
    /// A folder of the tree.
    struct Branch
    {
        std::string name;
        node_ref node = {}; // of the local one, once it was seen
        bool isNew = false; // the local one was made by this transfer
    };
    using Folder = std::shared_ptr<BDirectory>;

    /// `top`: the local folder that the walk begins in, `path` what is shown of it. `carried`: what
    /// happens to a folder's contents, "arrived" or "was sent". Ownership: borrows all.
    TreeTransfer(Server& server, OperationUI& ui, BDirectory& top, std::string path,
                 const char* carried);
    virtual ~TreeTransfer() = default;

    /// Says whether all of it got across.
    bool Walk(const Branch& first);
    /// Goes into the folder on both sides, carries its files and has its subfolders wait; or leaves
    /// it alone, told. `parent`: the local folder where the walk is.
    virtual void Enter(const Branch& branch, BDirectory& parent) = 0;

    /// The walk is in this folder of both sides now; `above` is the server's that it came from.
    void Entered(Folder folder, const Branch& branch, const std::string& above);
    /// Has a subfolder of where the walk is wait for its turn.
    void HaveWait(Branch branch) { fLevels.back().branches.push_back(std::move(branch)); }
    size_t Depth() const { return fLevels.size(); }
    /// The local folder where the walk is; null when it cannot be found any more.
    Folder Here() const { return fFolders.Here(); }
    /// The same as it is shown.
    const std::string& Path() const { return fPath; }
    /// The same as a part of the tree. Only below the top.
    const Branch& Current() const { return fLevels.back().self; }

    /// Notes that something was left behind, without a word.
    void NotWhole() { fIsWhole = false; }
    void Fail(const std::string& name, const std::string& reason);
    /// The server is lost, and with it what is left of the folder where the walk is.
    void FailRest();

    OperationUI& fUI;
    Server& fServer;

private:
    /// A folder that is being carried.
    struct Level
    {
        Branch self;
        std::string above; // the server's folder that it was entered from
        size_t pathBytes;  // of the local folder above
        std::vector<Branch> branches;
        size_t next = 0; // of them
    };

    void EnterNext();
    void Leave();

    const char* const fCarried;
    FolderChain fFolders;
    std::vector<Level> fLevels;
    std::string fPath;
    bool fIsWhole = true;
};

} // namespace norvane
