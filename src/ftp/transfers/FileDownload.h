#pragma once

#include "fileops/engine/CopyPlace.h"
#include "fileops/engine/Journal.h"
#include "ftp/client/RemoteEntry.h"

#include <NodeAccess.h>
#include <SupportDefs.h>

#include <sys/stat.h>

#include <string>

namespace norvane {

class OperationUI;
class ReplaceTarget;
class Server;
class TransferProgress;
struct OperationContext;

/// What the downloads of one item have in common.
struct DownloadContext
{
    OperationContext& operation;
    Server& server;
    TransferProgress& progress;
    size_t item; // of the journal
};

/// Whether the name may become that of a local entry.
bool IsLocalName(const std::string& name);

/// Brings one file of the server's folder into an open folder, asking about a target that exists.
///
/// Whatever comes is written under a hidden name, and gets its own at the end. What an error cut
/// short stays when nothing was there before, to be looked at; nobody asked for what a stop did.
/// Thread: the operation's.
class FileDownload
{
public:
    /// Ownership: borrows all for its own life.
    FileDownload(const DownloadContext& context, const CopyPlace& target);

    /// Says whether all of it arrived, and tells what did not.
    bool Run(const RemoteEntry& source);

private:
    bool Look();
    bool MayReplaceExisting();
    int64 ListedSize() const;
    bool Receive(ReplaceTarget& place);
    std::string CheckArrived(ReplaceTarget& place, status_t written, const std::string& failure);
    bool PutInPlace(ReplaceTarget& place);
    bool AskAgain(ReplaceTarget& place);
    bool GiveAccess(ReplaceTarget& place);
    void KeepPart(ReplaceTarget& place);
    void NoteMade(ReplaceTarget& place, Change::Kind kind);
    BNodeAccess AccessOf(const struct stat& existing) const;
    bool Note(const std::string& problem);

    OperationContext& fContext;
    OperationUI& fUI;
    Server& fServer;
    TransferProgress& fProgress;
    const size_t fItem;
    const CopyPlace& fTarget;
    RemoteEntry fSource;
    std::string fName; // there and here
    bool fHasExisting = false;
    struct stat fExisting = {};
    BNodeAccess fAccess;      // of what is replaced
    bool fIsFinished = false; // brought to the medium, and closed
    bool fHasFailedHere = false;
};

} // namespace norvane
