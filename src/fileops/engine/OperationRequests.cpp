#include "fileops/engine/OperationRequests.h"

#include "MessageCodes.h"
#include "fileops/engine/Copy.h"
#include "fileops/engine/Delete.h"
#include "fileops/engine/Measurement.h"
#include "fileops/engine/Move.h"
#include "fileops/engine/Trash.h"

#include <Directory.h>
#include <Message.h>
#include <TrashRecord.h>

#include <cstring>

namespace norvane {

namespace {

std::vector<entry_ref> ItemsOf(const BMessage& request)
{
    std::vector<entry_ref> items;
    entry_ref item;
    for (int32 index = 0; request.FindRef("refs", index, &item) == B_OK; index++) {
        items.push_back(item);
    }
    return items;
}

/// The question decided it. A request without the answer speaks of where the items lie; when that
/// cannot be told they go where they can be got back from.
bool IsForGood(const BMessage& request, const char* path)
{
    bool isForGood = false;
    if (request.FindBool(kForGood, &isForGood) == B_OK) {
        return isForGood;
    }
    const BDirectory folder(path);
    return folder.InitCheck() == B_OK && is_trash_folder(&folder);
}

bool IsMove(const BMessage& request)
{
    const char* type = nullptr;
    return request.FindString("TypeOfCopy", &type) == B_OK && std::strcmp(type, "Move") == 0;
}

bool IsByRenaming(const BMessage& request)
{
    return request.GetBool(kByRenaming, false);
}

bool IsOfLocalEntries(const BMessage& request)
{
    return (request.what == kDeleteRequest || request.what == kLocalEntries) &&
           request.HasRef("refs") && !request.HasString("Session");
}

} // namespace

std::unique_ptr<Operation> MakeOperation(const BMessage& request, const char* path, OperationUI& ui)
{
    if (request.what == kEmptyRequest) {
        return std::make_unique<Empty>(path, ui);
    }
    std::vector<entry_ref> items = ItemsOf(request);
    if (items.empty() || request.HasString("Session")) {
        return nullptr;
    }
    if (request.what == kDeleteRequest && IsForGood(request, path)) {
        return std::make_unique<Delete>(std::move(items), ui);
    }
    if (request.what == kDeleteRequest) {
        return std::make_unique<Trash>(std::move(items), ui);
    }
    if (request.what != kLocalEntries) {
        return nullptr;
    }
    if (IsMove(request)) {
        return std::make_unique<Move>(std::move(items), path, ui, IsByRenaming(request));
    }
    return std::make_unique<Copy>(std::move(items), path, ui, request.GetBool(kKeepsAll, false));
}

std::unique_ptr<Measurement> StartMeasuring(const BMessage& request)
{
    if (!IsOfLocalEntries(request) || (IsMove(request) && IsByRenaming(request))) {
        return nullptr; // what gets its place by renaming is not measured
    }
    using Keep = Measurement::Keep;
    const bool isForGood = request.what == kDeleteRequest && request.GetBool(kForGood, false);
    auto measurement = std::make_unique<Measurement>([request] { return ItemsOf(request); },
                                                     isForGood ? Keep::kRecords : Keep::kSizes);
    measurement->Start();
    return measurement;
}

} // namespace norvane
