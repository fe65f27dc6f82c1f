#include "app/MessageFields.h"

#include <algorithm>
#include <cstring>
#include <functional>
#include <utility>

namespace kits {

namespace {

// Values of different sizes start at multiples of this, so that a reader may look at them in place.
constexpr size_t kAlignment = 8;
// Most messages have no more than so many names.
constexpr size_t kFewFields = 6;

constexpr size_t Aligned(size_t size)
{
    return (size + kAlignment - 1) / kAlignment * kAlignment;
}

void CopyBytes(char* to, const void* from, size_t size)
{
    if (size > 0) {
        std::memcpy(to, from, size);
    }
}

} // namespace

MessageValue MessageField::At(int32 index) const
{
    const size_t place = static_cast<size_t>(index);
    if (fIsFixedSize) {
        return {fBytes.Data() + place * fValueSize, fValueSize};
    }
    return {fBytes.Data() + fSpans[place].offset, fSpans[place].size};
}

void MessageField::Reserve(int32 count, size_t size)
{
    const size_t more = static_cast<size_t>(count);
    if (count <= 1 || size > static_cast<size_t>(INT32_MAX) / more) {
        return; // only a hint
    }
    fBytes.Reserve(fBytes.Size() + more * (fIsFixedSize ? size : Aligned(size)));
    if (!fIsFixedSize) {
        fSpans.reserve(fSpans.size() + more);
    }
}

status_t MessageField::Add(const void* data, size_t size)
{
    if (!MayNameFolders(fType)) {
        return AddBytes(data, size);
    }
    // What may find no memory comes first.
    ValueFolders folders = FoldersOf(fType, data, size);
    if (fFolders.size() == fFolders.capacity()) {
        fFolders.reserve(std::max<size_t>(1, 2 * fFolders.size()));
    }
    const status_t status = AddBytes(data, size);
    if (status == B_OK) {
        fFolders.push_back(std::move(folders));
    }
    return status;
}

status_t MessageField::Replace(int32 index, const void* data, size_t size)
{
    if (!MayNameFolders(fType)) {
        return ReplaceBytes(index, data, size);
    }
    ValueFolders folders = FoldersOf(fType, data, size);
    const status_t status = ReplaceBytes(index, data, size);
    if (status == B_OK) {
        fFolders[static_cast<size_t>(index)] = std::move(folders);
    }
    return status;
}

void MessageField::CollectFolders(std::vector<FolderHold>& folders) const
{
    // Neighbours are mostly of one folder, which then is held once.
    const auto add = [&folders](const FolderHold& folder) {
        if (folder && (folders.empty() || folders.back().Get() != folder.Get())) {
            folders.push_back(folder);
        }
    };
    for (const ValueFolders& value : fFolders) {
        add(value.own);
        if (value.inner != nullptr) {
            std::for_each(value.inner->begin(), value.inner->end(), add);
        }
    }
}

status_t MessageField::AddBytes(const void* data, size_t size)
{
    const size_t offset = fBytes.Size();
    if (size > static_cast<size_t>(INT32_MAX) - kAlignment - offset || fCount == INT32_MAX) {
        return B_NO_MEMORY;
    }
    if (fIsFixedSize) {
        if (fCount > 0 && size != fValueSize) {
            return B_BAD_VALUE;
        }
        fBytes.Resize(offset + size);
        fValueSize = size;
    } else {
        fBytes.Reserve(offset + Aligned(size));
        fSpans.push_back({static_cast<uint32>(offset), static_cast<uint32>(size)});
        fBytes.Resize(offset + Aligned(size));
    }
    CopyBytes(fBytes.Data() + offset, data, size);
    fCount++;
    return B_OK;
}

status_t MessageField::ReplaceBytes(int32 index, const void* data, size_t size)
{
    if (fIsFixedSize) {
        if (size != fValueSize) {
            return B_BAD_VALUE;
        }
        CopyBytes(fBytes.Data() + static_cast<size_t>(index) * size, data, size);
        return B_OK;
    }
    const size_t oldSize = fBytes.Size();
    if (size > static_cast<size_t>(INT32_MAX) - kAlignment - oldSize) {
        return B_NO_MEMORY;
    }
    Span& span = fSpans[static_cast<size_t>(index)];
    const size_t room = Aligned(span.size);
    const size_t wanted = Aligned(size);
    const size_t behind = span.offset + room;
    const size_t tail = oldSize - behind;
    if (wanted > room) {
        fBytes.Resize(oldSize + wanted - room);
    }
    std::memmove(fBytes.Data() + span.offset + wanted, fBytes.Data() + behind, tail);
    fBytes.Resize(oldSize - room + wanted);
    CopyBytes(fBytes.Data() + span.offset, data, size);
    span.size = static_cast<uint32>(size);
    for (size_t i = static_cast<size_t>(index) + 1; i < fSpans.size(); i++) {
        fSpans[i].offset = static_cast<uint32>(fSpans[i].offset - room + wanted);
    }
    return B_OK;
}

void MessageField::Remove(int32 index)
{
    const size_t place = static_cast<size_t>(index);
    const size_t offset = fIsFixedSize ? place * fValueSize : fSpans[place].offset;
    const size_t room = fIsFixedSize ? fValueSize : Aligned(fSpans[place].size);
    const size_t behind = offset + room;
    std::memmove(fBytes.Data() + offset, fBytes.Data() + behind, fBytes.Size() - behind);
    fBytes.Resize(fBytes.Size() - room);
    if (!fFolders.empty()) {
        fFolders.erase(fFolders.begin() + index);
    }
    if (!fIsFixedSize) {
        fSpans.erase(fSpans.begin() + index);
        for (size_t i = place; i < fSpans.size(); i++) {
            fSpans[i].offset = static_cast<uint32>(fSpans[i].offset - room);
        }
    }
    fCount--;
}

bool MessageField::Lends(const void* data) const
{
    const std::less<const void*> isBefore; // an order even for pointers that have nothing in common
    return !isBefore(data, fBytes.Data()) && isBefore(data, fBytes.Data() + fBytes.Size());
}

const MessageField* MessageFields::Find(std::string_view name) const
{
    const auto found =
        std::find_if(fFields.begin(), fFields.end(),
                     [name](const MessageField& field) { return field.Name() == name; });
    return found == fFields.end() ? nullptr : &*found;
}

void MessageFields::Add(MessageField field)
{
    if (fFields.size() == fFields.capacity()) {
        fFields.reserve(std::max(kFewFields, 2 * fFields.size()));
    }
    fFields.push_back(std::move(field));
}

void MessageFields::Remove(size_t place)
{
    fFields.erase(fFields.begin() + static_cast<ptrdiff_t>(place));
}

bool MessageFields::Lends(const void* data) const
{
    return std::any_of(fFields.begin(), fFields.end(),
                       [data](const MessageField& field) { return field.Lends(data); });
}

} // namespace kits
