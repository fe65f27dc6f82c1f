#include "ftp/transfers/TransferRequests.h"

#include "MessageCodes.h"
#include "ftp/transfers/Download.h"
#include "ftp/transfers/Upload.h"

#include <Entry.h>
#include <Message.h>

namespace norvane {

namespace {

constexpr char kListed[] = "Listed";

std::string TextOf(const BMessage& request, const char* name)
{
    const char* text = nullptr;
    return request.FindString(name, &text) == B_OK ? text : "";
}

std::vector<std::string> TextsOf(const BMessage& request, const char* name)
{
    std::vector<std::string> texts;
    const char* text = nullptr;
    for (int32 i = 0; request.FindString(name, i, &text) == B_OK; i++) {
        texts.emplace_back(text);
    }
    return texts;
}

std::vector<entry_ref> RefsOf(const BMessage& request)
{
    std::vector<entry_ref> refs;
    entry_ref ref;
    for (int32 i = 0; request.FindRef("refs", i, &ref) == B_OK; i++) {
        refs.push_back(ref);
    }
    return refs;
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
    for (std::string& text : TextsOf(request, kListed)) {
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

std::unique_ptr<Operation> MakeTransfer(const BMessage& request, const char* path, OperationUI& ui)
{
    if (request.what == kLocalEntries && request.HasString("Session")) {
        std::vector<entry_ref> items = RefsOf(request);
        if (items.empty()) {
            return nullptr;
        }
        return std::make_unique<Upload>(std::move(items), HostOf(request), ListedOf(request), path,
                                        ui);
    }
    if (request.what == kRemoteEntries) {
        return std::make_unique<Download>(
            RemoteItems{TextsOf(request, "FtpFile"), TextsOf(request, "FtpDir")}, HostOf(request),
            ListedOf(request), path, ui);
    }
    return nullptr;
}

} // namespace norvane
