#include <DataIO.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>

namespace {

constexpr size_t kBlockBytes = 256; // memory grows by whole ones

/// Where a seek leads, or B_BAD_VALUE.
off_t SeekTarget(off_t offset, uint32 seekMode, off_t position, size_t length)
{
    off_t start = 0;
    switch (seekMode) {
    case SEEK_SET:
        break;
    case SEEK_CUR:
        start = position;
        break;
    case SEEK_END:
        start = static_cast<off_t>(length);
        break;
    default:
        return B_BAD_VALUE;
    }
    off_t target = 0;
    if (__builtin_add_overflow(start, offset, &target) || target < 0) {
        return B_BAD_VALUE;
    }
    return target;
}

/// Copies what there is at `position` of `length` bytes.
ssize_t ReadBytes(const char* bytes, size_t length, off_t position, void* buffer, size_t size)
{
    if (position < 0 || (buffer == nullptr && size > 0)) {
        return B_BAD_VALUE;
    }
    const size_t offset = static_cast<size_t>(position);
    if (offset >= length || size == 0) {
        return 0;
    }
    const size_t count = std::min(size, length - offset);
    std::memcpy(buffer, bytes + offset, count);
    return static_cast<ssize_t>(count);
}

} // namespace

BDataIO::~BDataIO() = default;

BPositionIO::~BPositionIO() = default;

ssize_t BPositionIO::Read(void* buffer, size_t size)
{
    const off_t position = Position();
    const ssize_t count = ReadAt(position, buffer, size);
    if (count > 0) {
        Seek(position + count, SEEK_SET);
    }
    return count;
}

ssize_t BPositionIO::Write(const void* buffer, size_t size)
{
    const off_t position = Position();
    const ssize_t count = WriteAt(position, buffer, size);
    if (count > 0) {
        Seek(position + count, SEEK_SET);
    }
    return count;
}

status_t BPositionIO::SetSize(off_t)
{
    return B_ERROR;
}

status_t BPositionIO::GetSize(off_t*) const
{
    return B_ERROR;
}

BMallocIO::BMallocIO() = default;

BMallocIO::~BMallocIO()
{
    std::free(fBuffer);
}

ssize_t BMallocIO::ReadAt(off_t position, void* buffer, size_t size)
{
    return ReadBytes(fBuffer, fLength, position, buffer, size);
}

ssize_t BMallocIO::WriteAt(off_t position, const void* buffer, size_t size)
{
    if (position < 0 || (buffer == nullptr && size > 0)) {
        return B_BAD_VALUE;
    }
    if (size == 0) {
        return 0;
    }
    size_t end = 0;
    if (__builtin_add_overflow(static_cast<size_t>(position), size, &end) || !Reserve(end)) {
        return B_NO_MEMORY;
    }
    const size_t offset = static_cast<size_t>(position);
    if (offset > fLength) {
        std::memset(fBuffer + fLength, 0, offset - fLength);
    }
    std::memcpy(fBuffer + offset, buffer, size);
    fLength = std::max(fLength, end);
    return static_cast<ssize_t>(size);
}

off_t BMallocIO::Seek(off_t position, uint32 seekMode)
{
    const off_t target = SeekTarget(position, seekMode, fPosition, fLength);
    if (target >= 0) {
        fPosition = target;
    }
    return target;
}

status_t BMallocIO::SetSize(off_t size)
{
    if (size < 0) {
        return B_BAD_VALUE;
    }
    const size_t length = static_cast<size_t>(size);
    if (!Reserve(length)) {
        return B_NO_MEMORY;
    }
    if (length > fLength) {
        std::memset(fBuffer + fLength, 0, length - fLength);
    }
    fLength = length;
    return B_OK;
}

status_t BMallocIO::GetSize(off_t* size) const
{
    if (size == nullptr) {
        return B_BAD_VALUE;
    }
    *size = static_cast<off_t>(fLength);
    return B_OK;
}

bool BMallocIO::Reserve(size_t capacity)
{
    if (capacity <= fCapacity) {
        return true;
    }
    // Half as much again, so that many small writes do not copy everything each time.
    size_t wanted = std::max(capacity, fCapacity + fCapacity / 2);
    const size_t rest = wanted % kBlockBytes;
    if (rest != 0 && __builtin_add_overflow(wanted, kBlockBytes - rest, &wanted)) {
        wanted = capacity;
    }
    if (wanted > PTRDIFF_MAX) {
        return false;
    }
    void* grown = std::realloc(fBuffer, wanted);
    if (grown == nullptr) {
        return false;
    }
    fBuffer = static_cast<char*>(grown);
    fCapacity = wanted;
    return true;
}

BMemoryIO::BMemoryIO(void* buffer, size_t size)
    : fReadable(static_cast<const char*>(buffer)), fWritable(static_cast<char*>(buffer)),
      fLength(buffer == nullptr ? 0 : size), fCapacity(fLength)
{
}

BMemoryIO::BMemoryIO(const void* buffer, size_t size)
    : fReadable(static_cast<const char*>(buffer)), fWritable(nullptr),
      fLength(buffer == nullptr ? 0 : size), fCapacity(fLength)
{
}

BMemoryIO::~BMemoryIO() = default;

ssize_t BMemoryIO::ReadAt(off_t position, void* buffer, size_t size)
{
    return ReadBytes(fReadable, fLength, position, buffer, size);
}

ssize_t BMemoryIO::WriteAt(off_t position, const void* buffer, size_t size)
{
    if (fWritable == nullptr) {
        return B_NOT_ALLOWED;
    }
    if (position < 0 || (buffer == nullptr && size > 0)) {
        return B_BAD_VALUE;
    }
    const size_t offset = static_cast<size_t>(position);
    if (offset >= fCapacity || size == 0) {
        return 0;
    }
    if (offset > fLength) {
        std::memset(fWritable + fLength, 0, offset - fLength);
    }
    const size_t count = std::min(size, fCapacity - offset);
    std::memmove(fWritable + offset, buffer, count);
    fLength = std::max(fLength, offset + count);
    return static_cast<ssize_t>(count);
}

off_t BMemoryIO::Seek(off_t position, uint32 seekMode)
{
    const off_t target = SeekTarget(position, seekMode, fPosition, fLength);
    if (target >= 0) {
        fPosition = target;
    }
    return target;
}

status_t BMemoryIO::SetSize(off_t size)
{
    if (fWritable == nullptr) {
        return B_NOT_ALLOWED;
    }
    if (size < 0 || static_cast<size_t>(size) > fCapacity) {
        return B_ERROR;
    }
    const size_t length = static_cast<size_t>(size);
    if (length > fLength) {
        std::memset(fWritable + fLength, 0, length - fLength);
    }
    fLength = length;
    return B_OK;
}

status_t BMemoryIO::GetSize(off_t* size) const
{
    if (size == nullptr) {
        return B_BAD_VALUE;
    }
    *size = static_cast<off_t>(fLength);
    return B_OK;
}
