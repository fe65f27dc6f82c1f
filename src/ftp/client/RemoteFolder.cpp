#include "ftp/client/RemoteFolder.h"

#include "ftp/client/clsFTP.h"

#include <cstdlib>
#include <memory>
#include <utility>

namespace norvane {

namespace {

struct Freed
{
    void operator()(char* text) const { std::free(text); }
};

using ClientText = std::unique_ptr<char, Freed>;

} // namespace

std::string PathInReply(const char* answer)
{
    std::string path;
    for (const char* at = answer != nullptr ? answer : ""; *at != '\0'; at++) {
        path += *at;
        at += at[0] == '"' && at[1] == '"' ? 1 : 0;
    }
    return path;
}

std::string NameInCommand(const std::string& name)
{
    return name.substr(0, 1) == "~" ? "./" + name : name;
}

int RemoteFolder::Find()
{
    fPath.clear();
    char* answer = nullptr;
    const int code = fClient.PrintDir(&answer);
    const ClientText path(answer);
    if (!IsAgreed(code)) {
        return code;
    }
    fPath = PathInReply(path.get());
    return fPath.empty() ? kFtpStaysWhereItIs : 0;
}

int RemoteFolder::Change(const std::string& dir)
{
    const int code = fClient.ChangeDir(dir.c_str());
    if (!IsAgreed(code)) {
        if (code == kFtpCancelled || code == kFtpTimedOut) {
            fPath.clear(); // it may have gone there
        }
        return code;
    }
    return Find();
}

int RemoteFolder::Go(const std::string& path)
{
    if (fPath == path) {
        return 0;
    }
    const int code = Change(path);
    return code == 0 && fPath != path ? kFtpStaysWhereItIs : code;
}

int RemoteFolder::Enter(const std::string& name)
{
    const std::string before = fPath;
    const int code = Change(NameInCommand(name));
    return code == 0 && fPath == before ? kFtpStaysWhereItIs : code;
}

int RemoteFolder::List(std::vector<RemoteEntry>* entries)
{
    std::string listing;
    ListingEnd end = ListingEnd::kLineFeed;
    const int code = ListText(&listing, &end);
    if (code == 0) {
        *entries = ParseListing(listing, end);
    }
    return code;
}

int RemoteFolder::ListText(std::string* listing, ListingEnd* end)
{
    char* answer = nullptr;
    const int code = fClient.List(nullptr, &answer, fIsPassive);
    const ClientText text(answer);
    const int64 bytes = fClient.BytesMoved();
    listing->clear();
    if (code == 0 && text != nullptr && bytes > 0) {
        listing->assign(text.get(), static_cast<size_t>(bytes - 1)); // there may be zeros in it
        *end = fClient.EndOfListing();
    }
    return code;
}

} // namespace norvane
