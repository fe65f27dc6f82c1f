#pragma once

#include "fileops/engine/FolderChain.h"
#include "ftp/transfers/FileUpload.h"

#include <memory>
#include <string>
#include <vector>

namespace norvane {

/// Sends one folder of an open folder to the server's folder, with all below it: files first, then
/// subfolders. What is there already it merges into, asking about files that are there.
///
/// Works relative to open folders, with a stack of its own. Thread: the operation's.
class TreeUpload
{
public:
    /// Ownership: borrows all for its own life.
    TreeUpload(const UploadContext& context, const LocalFolder& source);

    /// Says whether all of it arrived, and tells what did not. `record` is the folder's.
    bool Run(const std::string& name, const struct stat& record);

private:
    struct Child
    {
        std::string name;
        struct stat record;
    };
    /// A folder that is being sent.
    struct Level
    {
        std::string name;
        std::string above; // the server's folder that it was entered from
        size_t pathBytes;  // of the local folder above
        std::vector<Child> folders;
        size_t next = 0; // of them
    };
    using Folder = std::shared_ptr<BDirectory>;

    void EnterNext();
    void Enter(const Child& child, BDirectory& parent);
    Folder Open(const Child& child, BDirectory& parent);
    bool EnterOnServer(const std::string& name, ListedEntries* listed);
    void SendContents(BDirectory& folder, const ListedEntries& listed);
    void SendChild(BDirectory& folder, const Child& child, const ListedEntries& listed);
    void TellListFailed(const std::string& name, status_t status);
    void Leave();
    void Fail(const std::string& name, const std::string& reason);

    const UploadContext fUpload;
    OperationUI& fUI;
    Server& fServer;
    const LocalFolder fTop;
    FolderChain fSources;
    std::vector<Level> fLevels;
    std::string fPath; // of the local folder, as it is shown
    bool fIsWhole = true;
};

} // namespace norvane
