#pragma once

#include "ftp/client/RemoteEntry.h"

#include <SupportDefs.h>

#include <map>
#include <memory>
#include <string>

class BMessage;

namespace norvane {

class Operation;
class OperationUI;

// A request to carry entries to a server, or from one, is of these fields. Of both: strings "Host",
// "User", "Password" and "FtpPath", int32 "Port", bool "Passive" (active mode without), and what
// AddListed() adds. Of an upload, which is a kLocalEntries: "refs", string "Session". Of a
// download, which is a kRemoteEntries: strings "FtpFile" and "FtpDir", the names that commands use.

/// Whom a transfer talks to, and about which folder there.
struct TransferHost
{
    std::string host;
    std::string user;
    std::string password; // "" for none
    std::string path;     // as the server names it; "" for where a login leads
    uint32 port = 21;
    bool isPassive = false;
};

/// What was listed, by the names that commands use.
using ListedEntries = std::map<std::string, RemoteEntry>;

/// Adds what the last listing of the server's folder says of an entry: of an upload those that have
/// the names of what is sent, of a download the wanted ones. What is not usable is not added.
void AddListed(BMessage* request, const RemoteEntry& entry);
ListedEntries ListedOf(const BMessage& request);
TransferHost HostOf(const BMessage& request);

/// The operation that `request` asks for: an upload of its "refs", or a download into the folder at
/// `path`; null when it asks for neither. An upload shows `path` as its target.
///
/// Ownership: the caller's; borrows `ui` for its own life. Thread: the operation's.
std::unique_ptr<Operation> MakeTransfer(const BMessage& request, const char* path, OperationUI& ui);

} // namespace norvane
