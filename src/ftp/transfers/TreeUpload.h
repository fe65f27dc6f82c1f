#pragma once

#include "ftp/transfers/FileUpload.h"
#include "ftp/transfers/TreeTransfer.h"

#include <string>

namespace norvane {

/// Sends one folder of an open folder to the server's folder, with all below it. What is there
/// already it merges into, asking about files that are there. Thread: the operation's.
class TreeUpload : private TreeTransfer
{
public:
    /// Ownership: borrows all for its own life.
    TreeUpload(const UploadContext& context, const LocalFolder& source);

    /// Says whether all of it arrived, and tells what did not. `record` is the folder's.
    bool Run(const std::string& name, const struct stat& record);

private:
    void Enter(const Branch& branch, BDirectory& parent) override;
    Folder Open(const Branch& branch, BDirectory& parent);
    bool EnterOnServer(const std::string& name, ListedEntries* listed);
    void SendContents(BDirectory& folder, const ListedEntries& listed);
    void SendChild(BDirectory& folder, const std::string& name, const struct stat& record,
                   const ListedEntries& listed);
    void TellListFailed(const std::string& name, status_t status);

    const UploadContext fUpload;
};

} // namespace norvane
