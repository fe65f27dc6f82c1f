#include "ftp/transfers/TransferRequests.h"

#include "MessageCodes.h"
#include "ftp/transfers/Download.h"
#include "ftp/transfers/Upload.h"

#include <Entry.h>
#include <Message.h>

namespace norvane {

namespace {

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

} // namespace

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
        return std::make_unique<Download>(RemoteItems{TextsOf(request, "FtpFile"),
                                                      TextsOf(request, "FtpDir"),
                                                      TextsOf(request, "FtpUnusable")},
                                          HostOf(request), ListedOf(request), path, ui);
    }
    return nullptr;
}

} // namespace norvane
