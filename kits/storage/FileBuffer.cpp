#include "FileBuffer.h"

#include "SystemCalls.h"

#include <algorithm>
#include <cstring>

namespace kits {

namespace {

// Most files are smaller: one reading of this much sees all of them and their end.
constexpr size_t kFirstReadAhead = size_t{64} * 1024;
// From here on a file is big enough to pay for a thread that writes.
constexpr off_t kWriterFrom = off_t{4} * 1024 * 1024;

} // namespace

FileBuffer::FileBuffer(int file) : fFile(file) {}

FileBuffer::~FileBuffer()
{
    [[maybe_unused]] const status_t status = Flush(); // who wants to know closes the file first
}

ssize_t FileBuffer::Read(void* buffer, size_t size)
{
    const status_t status = Flush();
    if (status != B_OK) {
        return status;
    }
    char* out = static_cast<char*>(buffer);
    size_t done = 0;
    bool hasMetEnd = false;
    while (done < size) {
        const off_t ahead = fReadStart + static_cast<off_t>(fReadLength) - fPosition;
        if (fReadLength > 0 && fPosition >= fReadStart && ahead > 0) {
            const size_t length = std::min(size - done, static_cast<size_t>(ahead));
            std::memcpy(out + done, fReadBlock.get() + (fPosition - fReadStart), length);
            done += length;
            fPosition += static_cast<off_t>(length);
            continue;
        }
        // The end was met by the filling these bytes came from, or just now; the next Read() looks
        // again, as a file may grow.
        if (hasMetEnd || (fIsAtEnd && done > 0)) {
            break;
        }
        if (size - done >= kBlockBytes) {
            const ssize_t read = sys::ReadAt(fFile, out + done, size - done, fPosition);
            if (read <= 0) {
                return done > 0 ? static_cast<ssize_t>(done) : read;
            }
            done += static_cast<size_t>(read);
            fPosition += read;
            continue;
        }
        const status_t filled = FillReadAhead(size - done);
        if (filled != B_OK) {
            return done > 0 ? static_cast<ssize_t>(done) : filled;
        }
        hasMetEnd = fIsAtEnd;
    }
    return static_cast<ssize_t>(done);
}

status_t FileBuffer::FillReadAhead(size_t wanted)
{
    if (fReadBlock == nullptr) {
        fReadBlock = TakeBlock();
    }
    const size_t size = std::clamp(fReadAhead, std::max(wanted, kFirstReadAhead), kBlockBytes);
    const ssize_t read = sys::ReadAt(fFile, fReadBlock.get(), size, fPosition);
    fReadStart = fPosition;
    fReadLength = read < 0 ? 0 : static_cast<size_t>(read);
    // Some file systems read less than asked before the end: only nothing at all is the end.
    fIsAtEnd = read == 0;
    fReadAhead = kBlockBytes;
    return read < 0 ? static_cast<status_t>(read) : status_t(B_OK);
}

void FileBuffer::DropReadAhead()
{
    fReadLength = 0;
    fReadAhead = 0;
    fIsAtEnd = false;
}

void FileBuffer::SetPosition(off_t position)
{
    if (position != fPosition) {
        fPosition = position;
        fReadAhead = 0;
    }
}

ssize_t FileBuffer::Write(const void* buffer, size_t size)
{
    DropReadAhead();
    if (fWriter != nullptr && fStatus == B_OK) {
        fStatus = fWriter->Status();
    }
    if (fStatus != B_OK) {
        fWriteLength = 0;
        return fStatus;
    }
    const bool isShorter = size < fLastWrite || size == 0;
    fLastWrite = size;
    const char* bytes = static_cast<const char*>(buffer);
    status_t status;
    if (size >= kBlockBytes) {
        status = Flush();
        if (status == B_OK) {
            status = WriteDirectly(bytes, size, fPosition);
        }
    } else {
        status = Append(bytes, size);
    }
    if (status == B_OK && isShorter) {
        status = Flush();
    }
    if (status != B_OK) {
        return status;
    }
    fPosition += static_cast<off_t>(size);
    return static_cast<ssize_t>(size);
}

status_t FileBuffer::Append(const char* bytes, size_t size)
{
    if (fWriteLength == 0) {
        fWriteStart = fPosition;
    }
    while (size > 0) {
        if (fWriteBlock == nullptr) {
            fWriteBlock = TakeBlock();
        }
        const size_t length = std::min(size, kBlockBytes - fWriteLength);
        std::memcpy(fWriteBlock.get() + fWriteLength, bytes, length);
        fWriteLength += length;
        bytes += length;
        size -= length;
        if (fWriteLength == kBlockBytes) {
            const status_t status = HandOver();
            if (status != B_OK) {
                return status;
            }
        }
    }
    return B_OK;
}

status_t FileBuffer::HandOver()
{
    const size_t size = fWriteLength;
    const off_t start = fWriteStart;
    fWriteStart += static_cast<off_t>(size);
    fWriteLength = 0;
    fWritten += static_cast<off_t>(size);
    if (fWriter == nullptr && fWritten >= kWriterFrom && size == kBlockBytes) {
        fWriter = std::make_unique<BlockWriter>(fFile);
        if (fWriter->Start() != B_OK) {
            fWriter.reset(); // this thread goes on writing, and asks again at the next block
        }
    }
    if (fWriter != nullptr) {
        fWriter->Queue(std::move(fWriteBlock), size, start);
        return B_OK;
    }
    return WriteDirectly(fWriteBlock.get(), size, start);
}

status_t FileBuffer::WriteDirectly(const char* bytes, size_t size, off_t position)
{
    fStatus = WriteWhole(fFile, bytes, size, position);
    return fStatus;
}

status_t FileBuffer::Flush()
{
    if (fStatus != B_OK) {
        fWriteLength = 0;
        return fStatus;
    }
    if (fWriteLength > 0) {
        HandOver(); // keeps its status
    }
    if (fWriter != nullptr && fStatus == B_OK) {
        fStatus = fWriter->Wait();
    }
    return fStatus;
}

ssize_t FileBuffer::ReadAt(off_t position, void* buffer, size_t size)
{
    const status_t status = Flush();
    return status == B_OK ? sys::ReadAt(fFile, buffer, size, position) : status;
}

ssize_t FileBuffer::WriteAt(off_t position, const void* buffer, size_t size)
{
    DropReadAhead();
    status_t status = Flush();
    if (status == B_OK) {
        status = WriteDirectly(static_cast<const char*>(buffer), size, position);
    }
    return status == B_OK ? static_cast<ssize_t>(size) : status;
}

} // namespace kits
