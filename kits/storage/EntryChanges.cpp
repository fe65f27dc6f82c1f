#include <EntryChanges.h>

#include "EntryChangeList.h"

#include <AppDefs.h>
#include <Message.h>

#include <cstring>

namespace kits {

namespace {

constexpr const char* kChanges = "changes";

} // namespace

void EntryChangeList::Add(BEntryChange::Kind kind, std::string_view name, std::string_view fromName,
                          const BEntryRecord& record)
{
    // The numbers first, then the names with their zeros.
    const auto* bytes = reinterpret_cast<const char*>(&record);
    fBytes.push_back(static_cast<char>(kind));
    fBytes.insert(fBytes.end(), bytes, bytes + sizeof(record));
    fBytes.insert(fBytes.end(), name.begin(), name.end());
    fBytes.push_back('\0');
    fBytes.insert(fBytes.end(), fromName.begin(), fromName.end());
    fBytes.push_back('\0');
}

BMessage EntryChangeList::Notice(const node_ref& folder) const
{
    BMessage notice(B_NODE_MONITOR);
    notice.AddInt32("opcode", B_ENTRIES_CHANGED);
    notice.AddInt32("device", static_cast<int32>(folder.device));
    notice.AddInt64("directory", static_cast<int64>(folder.node));
    notice.AddData(kChanges, B_RAW_TYPE, fBytes.data(), static_cast<ssize_t>(fBytes.size()));
    return notice;
}

} // namespace kits

BEntryChanges::BEntryChanges(const BMessage& notice)
{
    int32 opcode = 0;
    int32 device = 0;
    int64 directory = 0;
    const void* bytes = nullptr;
    ssize_t size = 0;
    const bool isSuch =
        notice.what == B_NODE_MONITOR && notice.FindInt32("opcode", &opcode) == B_OK &&
        opcode == B_ENTRIES_CHANGED && notice.FindInt32("device", &device) == B_OK &&
        notice.FindInt64("directory", &directory) == B_OK &&
        notice.FindData(kits::kChanges, B_RAW_TYPE, &bytes, &size) == B_OK;
    fStatus = isSuch ? B_OK : B_BAD_VALUE;
    if (isSuch) {
        fFolder = node_ref(static_cast<dev_t>(device), static_cast<ino_t>(directory));
        fNext = static_cast<const char*>(bytes);
        fEnd = fNext + size;
    }
}

bool BEntryChanges::Take(void* to, size_t size)
{
    if (static_cast<size_t>(fEnd - fNext) < size) {
        fNext = fEnd;
        return false;
    }
    std::memcpy(to, fNext, size);
    fNext += size;
    return true;
}

/// Null when no zero ends it.
const char* BEntryChanges::TakeText()
{
    const char* text = fNext;
    const void* zero = std::memchr(text, 0, static_cast<size_t>(fEnd - fNext));
    if (zero == nullptr) {
        fNext = fEnd;
        return nullptr;
    }
    fNext = static_cast<const char*>(zero) + 1;
    return text;
}

bool BEntryChanges::GetNext(BEntryChange* change)
{
    if (change == nullptr || fNext == fEnd) {
        return false;
    }
    uint8 kind = 0;
    if (!Take(&kind, sizeof(kind)) || kind > static_cast<uint8>(BEntryChange::Kind::kChanged) ||
        !Take(&change->record, sizeof(change->record))) {
        return false;
    }
    change->kind = static_cast<BEntryChange::Kind>(kind);
    change->name = TakeText();
    change->fromName = change->name != nullptr ? TakeText() : nullptr;
    return change->fromName != nullptr;
}
