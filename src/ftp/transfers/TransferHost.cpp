#include "ftp/transfers/TransferHost.h"

#include <Errors.h>
#include <Message.h>

#include <utility>

namespace norvane {

namespace {

constexpr char kListed[] = "Listed";

std::string TextOf(const BMessage& request, const char* name)
{
    const char* text = nullptr;
    return request.FindString(name, &text) == B_OK ? text : "";
}

/// Takes the text up to the next line break off `rest`.
std::string TakeLine(std::string* rest)
{
    const size_t end = rest->find('\n');
    std::string line = rest->substr(0, end);
    *rest = end == std::string::npos ? "" : rest->substr(end + 1);
    return line;
}

} // namespace

void AddListed(BMessage* request, const RemoteEntry& entry)
{
    // No column holds a line break: it came from one line.
    if (!entry.commandName.empty()) {
        const std::string text =
            entry.permissions + "\n" + entry.size + "\n" + entry.date + "\n" + entry.commandName;
        request->AddString(kListed, text.c_str());
    }
}

ListedEntries ListedOf(const BMessage& request)
{
    ListedEntries listed;
    const char* lent = nullptr;
    for (int32 i = 0; request.FindString(kListed, i, &lent) == B_OK; i++) {
        std::string text = lent;
        RemoteEntry entry;
        entry.permissions = TakeLine(&text);
        entry.size = TakeLine(&text);
        entry.date = TakeLine(&text);
        entry.name = text;
        entry.commandName = text;
        listed[text] = std::move(entry);
    }
    return listed;
}

TransferHost HostOf(const BMessage& request)
{
    TransferHost host;
    host.host = TextOf(request, "Host");
    host.user = TextOf(request, "User");
    host.password = TextOf(request, "Password");
    host.path = TextOf(request, "FtpPath");
    host.port = static_cast<uint32>(request.GetInt32("Port", static_cast<int32>(host.port)));
    host.isPassive = request.GetBool("Passive", false);
    return host;
}

} // namespace norvane
