#pragma once

#include "ftp/client/RemoteEntry.h"

#include <string>
#include <vector>

namespace norvane {

class clsFTP;

/// What the calls below return when a server agrees to go to a folder and does not.
constexpr int kFtpStaysWhereItIs = 10;

/// Where a client is on its server. Nothing is taken for granted: after a change of folder the
/// server is asked where it is.
///
/// All calls return 0 for success, else the client's code. Thread: the client's.
class RemoteFolder
{
public:
    /// Ownership: borrows `client` for its own life.
    RemoteFolder(clsFTP& client, bool isPassive) : fClient(client), fIsPassive(isPassive) {}

    /// As the server names it; "" when it is not known.
    const std::string& Path() const { return fPath; }
    /// Asks the server where it is.
    int Find();
    /// Goes to a folder by its whole path, unless it is there.
    int Go(const std::string& path);
    /// Goes into a folder of the one where it is, or up ("..").
    /// Errors: kFtpStaysWhereItIs.
    int Enter(const std::string& name);
    int List(std::vector<RemoteEntry>* entries);
    /// The listing as it came, without its last byte, and what that was.
    int ListText(std::string* listing, ListingEnd* end);
    void SetPassive(bool isPassive) { fIsPassive = isPassive; }

private:
    int Change(const std::string& dir);

    clsFTP& fClient;
    bool fIsPassive;
    std::string fPath;
};

/// The path that PrintDir() gave, which may be null. Servers write a quote in it twice, since it
/// stands between quotes.
std::string PathInReply(const char* answer);

/// The name of an entry as a command about it has it: a tilde at its beginning, left alone, leads
/// many servers to a home folder.
std::string NameInCommand(const std::string& name);

/// Whether a server's answer, as the client returns it, is a success.
inline bool IsAgreed(int code)
{
    return code == 0 || code / 100 == 2;
}

} // namespace norvane
