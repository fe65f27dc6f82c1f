#pragma once

#include "fileops/engine/FolderChain.h"
#include "ftp/transfers/FileDownload.h"

#include <memory>
#include <string>
#include <vector>

namespace norvane {

/// Brings one folder of the server's folder into an open folder, with all below it: files first,
/// then subfolders. What is there already it merges into.
///
/// Works relative to open folders, so that a local folder swapped for a link meanwhile leads
/// nowhere else, with a stack of its own. A server that lists folders in folders without an end is
/// left at a depth that nobody's folders have. Thread: the operation's.
class TreeDownload
{
public:
    /// Ownership: borrows all for its own life.
    TreeDownload(const DownloadContext& context, const CopyPlace& target);

    /// Says whether all of it arrived, and tells what did not.
    bool Run(const RemoteEntry& top);

private:
    /// A folder that is being filled.
    struct Level
    {
        std::string name;
        std::string above; // the server's folder that it was entered from
        size_t pathBytes;  // of the local folder above
        node_ref target;
        bool isNew;
        std::vector<RemoteEntry> folders;
        size_t next = 0; // of them
    };
    using Folder = std::shared_ptr<BDirectory>;

    void EnterNext();
    bool Enter(const RemoteEntry& entry, const CopyPlace& target);
    Folder OpenTarget(const CopyPlace& target, const std::string& name, bool* isNew);
    void TellOpenFailed(const std::string& name, status_t status);
    void ReceiveContents();
    void Leave();
    bool Fail(const std::string& name, const std::string& reason);

    const DownloadContext fDownload;
    OperationContext& fContext;
    OperationUI& fUI;
    Server& fServer;
    const CopyPlace& fTop;
    FolderChain fTargets;
    std::vector<Level> fLevels;
    std::string fPath; // of the local folder, as it is shown
    bool fIsWhole = true;
};

} // namespace norvane
