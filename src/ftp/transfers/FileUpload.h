#pragma once

#include "ftp/transfers/TransferHost.h"

#include <SupportDefs.h>

#include <sys/stat.h>

#include <set>
#include <string>

class BDirectory;
class BFile;

namespace norvane {

class OperationUI;
class Server;
class TransferProgress;

/// What an upload has stored or made, by the server's paths.
using SentNames = std::set<std::string>;

/// What the uploads of one operation have in common.
struct UploadContext
{
    OperationUI& ui;
    Server& server;
    TransferProgress& progress;
    SentNames& sent;

    /// Notes that something of this operation gets that name in the server's folder; false, and
    /// told, when something else of it has the name already.
    bool Claim(const std::string& name) const;
};

/// An open folder of this side, with the path it is shown by.
struct LocalFolder
{
    BDirectory& folder;
    std::string path;
};

/// Sends one file of an open folder to the server's folder, asking about what is known to be there.
///
/// Thread: the operation's.
class FileUpload
{
public:
    /// Ownership: borrows all for its own life.
    explicit FileUpload(const UploadContext& context) : fUpload(context) {}

    /// `listed` is what the server's folder has. Says whether all of it arrived, and tells what did
    /// not.
    bool Run(const LocalFolder& folder, const std::string& name, const ListedEntries& listed);

private:
    bool MayReplace(const LocalFolder& folder, const RemoteEntry& target);
    bool Send(BFile& file);
    bool Note(const std::string& problem);

    const UploadContext fUpload;
    std::string fName;
    struct stat fRecord = {};
};

} // namespace norvane
