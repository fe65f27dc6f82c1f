#pragma once

#include "ftp/transfers/FileDownload.h"
#include "ftp/transfers/TreeTransfer.h"

#include <string>

namespace norvane {

/// Brings one folder of the server's folder into an open folder, with all below it. What is there
/// already it merges into.
///
/// A local folder that is swapped for a link meanwhile leads nowhere else. A server that lists
/// folders in folders without an end is left at a depth that nobody's folders have. Thread: the
/// operation's.
class TreeDownload : private TreeTransfer
{
public:
    /// Ownership: borrows all for its own life.
    TreeDownload(const DownloadContext& context, const CopyPlace& target);

    /// Says whether all of it arrived, and tells what did not.
    bool Run(const RemoteEntry& top);

private:
    void Enter(const Branch& branch, BDirectory& parent) override;
    Folder OpenTarget(const CopyPlace& target, Branch* branch);
    void TellOpenFailed(const std::string& name, status_t status);
    void ReceiveContents();
    CopyPlace PlaceIn(BDirectory& folder) const;

    const DownloadContext fDownload;
    OperationContext& fContext;
    const CopyPlace& fTop;
};

} // namespace norvane
