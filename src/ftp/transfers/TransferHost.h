#pragma once

#include "ftp/client/RemoteEntry.h"

#include <SupportDefs.h>

#include <map>
#include <string>

class BMessage;

namespace norvane {

// A request to carry entries to a server, or from one, is of these fields. Of both: strings "Host",
// "User", "Password" and "FtpPath", int32 "Port", bool "Passive" (active mode without), and what
// AddListed() adds. Of an upload, which is a kLocalEntries: "refs", string "Session". Of a
// download, which is a kRemoteEntries: strings "FtpFile" and "FtpDir", the names that commands
// use, and "FtpUnusable", the shown names of what was chosen with them and can only be told of.

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

} // namespace norvane
