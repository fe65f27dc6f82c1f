#include <Message.h>

#include <DataIO.h>

#include "app/FlatMessage.h"
#include "app/MessageAccess.h"
#include "app/MessageFields.h"

#include <algorithm>
#include <new>
#include <vector>

namespace {

// A stream may announce more than it has: memory grows with what arrives.
constexpr size_t kChunkBytes = 1 << 20;

status_t ReadWhole(BDataIO& stream, char* buffer, size_t size)
{
    for (size_t done = 0; done < size;) {
        const ssize_t count = stream.Read(buffer + done, size - done);
        if (count < 0) {
            return static_cast<status_t>(count);
        }
        if (count == 0) {
            return B_BAD_VALUE; // cut short
        }
        done += static_cast<size_t>(count);
    }
    return B_OK;
}

status_t WriteWhole(BDataIO& stream, const char* buffer, size_t size)
{
    for (size_t done = 0; done < size;) {
        const ssize_t count = stream.Write(buffer + done, size - done);
        if (count <= 0) {
            return count < 0 ? static_cast<status_t>(count) : B_IO_ERROR;
        }
        done += static_cast<size_t>(count);
    }
    return B_OK;
}

status_t ReadMessage(BDataIO& stream, std::vector<char>& bytes)
{
    bytes.resize(kits::FlatMessage::kHeaderBytes);
    status_t status = ReadWhole(stream, bytes.data(), bytes.size());
    if (status != B_OK) {
        return status;
    }
    const size_t total = kits::FlatMessage::TotalSize(bytes.data(), bytes.size());
    if (total == 0) {
        return B_BAD_VALUE;
    }
    while (status == B_OK && bytes.size() < total) {
        const size_t done = bytes.size();
        const size_t more = std::min(total - done, kChunkBytes);
        bytes.resize(done + more);
        status = ReadWhole(stream, bytes.data() + done, more);
    }
    return status;
}

} // namespace

ssize_t BMessage::FlattenedSize() const
{
    return static_cast<ssize_t>(kits::FlatMessage::SizeOf(fFields));
}

status_t BMessage::Flatten(char* buffer, ssize_t size) const
{
    if (buffer == nullptr || size < FlattenedSize()) {
        return B_BAD_VALUE;
    }
    kits::FlatMessage::Write(what, fFields, buffer);
    return B_OK;
}

status_t BMessage::Flatten(BDataIO* stream, ssize_t* size) const
{
    if (stream == nullptr) {
        return B_BAD_VALUE;
    }
    try {
        std::vector<char> bytes(kits::FlatMessage::SizeOf(fFields));
        kits::FlatMessage::Write(what, fFields, bytes.data());
        const status_t status = WriteWhole(*stream, bytes.data(), bytes.size());
        if (status == B_OK && size != nullptr) {
            *size = static_cast<ssize_t>(bytes.size());
        }
        return status;
    } catch (const std::bad_alloc&) {
        return B_NO_MEMORY;
    }
}

status_t BMessage::Unflatten(const char* buffer)
{
    if (buffer == nullptr || !kits::FlatMessage::HasMark(buffer)) {
        return B_BAD_VALUE;
    }
    const size_t total = kits::FlatMessage::TotalSize(buffer, kits::FlatMessage::kHeaderBytes);
    return Unflatten(buffer, static_cast<ssize_t>(total));
}

status_t BMessage::Unflatten(const char* buffer, ssize_t size)
{
    if (buffer == nullptr || size < 0) {
        return B_BAD_VALUE;
    }
    try {
        uint32 command = 0;
        kits::MessageFields* fields = nullptr;
        const status_t status =
            kits::FlatMessage::Read(buffer, static_cast<size_t>(size), &command, &fields);
        if (status == B_OK) {
            // The bytes may be lent by this message itself: only now are its old data let go.
            kits::MessageAccess::AdoptFields(*this, fields);
            what = command;
        }
        return status;
    } catch (const std::bad_alloc&) {
        return B_NO_MEMORY;
    }
}

status_t BMessage::Unflatten(BDataIO* stream)
{
    if (stream == nullptr) {
        return B_BAD_VALUE;
    }
    try {
        std::vector<char> bytes;
        const status_t status = ReadMessage(*stream, bytes);
        return status == B_OK ? Unflatten(bytes.data(), static_cast<ssize_t>(bytes.size()))
                              : status;
    } catch (const std::bad_alloc&) {
        return B_NO_MEMORY;
    }
}
