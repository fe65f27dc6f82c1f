#include "ContentCopy.h"

#include "SystemCalls.h"

#include <Errors.h>
#include <OS.h>

#include <algorithm>
#include <limits>
#include <sys/stat.h>

namespace kits {

namespace {

// To read and write such a file once is as fast as all that could be tried before.
constexpr off_t kSmall = off_t{64} * 1024;
// From here on a file is big enough to pay for a thread that writes.
constexpr off_t kWriterFrom = off_t{4} * 1024 * 1024;
// A hole from this size on is made by itself, and in pieces: some file systems fill it with zeros.
constexpr off_t kLongHole = off_t{1} * 1024 * 1024;
// Files of the kernel say that they are empty and are not: they end where reading them ends.
constexpr off_t kUnknownEnd = std::numeric_limits<off_t>::max();
// Where data and holes are short, one call of Next() copies several, for so long.
constexpr bigtime_t kLongEnoughUs = 10'000;
constexpr off_t kStatBlockBytes = 512;

/// Whether a volume that does not share blocks says so; then it has not begun to.
bool IsRefusal(status_t status)
{
    return status == B_UNSUPPORTED || status == B_CROSS_DEVICE_LINK || status == B_BAD_VALUE ||
           status == B_BUSY || status == B_NOT_ALLOWED;
}

} // namespace

ssize_t ContentCopy::Next()
{
    const bigtime_t begin = system_time();
    const off_t start = fPosition;
    if (fWay == Way::kUnknown) {
        fStatus = BeginUnknown();
    }
    if (fWay == Way::kClone && fStatus == B_OK) {
        fStatus = Clone();
    }
    while (fStatus == B_OK && fPosition < fEnd) {
        const off_t copied = fPosition - start;
        if (copied >= PieceSize::kLeastBytes ||
            (copied > 0 && system_time() - begin >= kLongEnoughUs)) {
            break;
        }
        fStatus = CopyMore();
    }
    // What failed after some bytes were copied is told by the next call.
    return fPosition > start ? ssize_t(fPosition - start) : ssize_t(Finish());
}

void ContentCopy::Begin(const struct stat& source)
{
    fWay = source.st_size > kSmall ? Way::kClone : Way::kPlain;
    fEnd = source.st_size > 0 ? off_t(source.st_size) : kUnknownEnd;
    // What has a block for each of its bytes has no hole; to look for one takes long in memory.
    const bool hasHoles = source.st_size / kStatBlockBytes > source.st_blocks;
    fDataEnd = hasHoles ? 0 : fEnd;
}

status_t ContentCopy::BeginUnknown()
{
    struct stat source;
    const status_t status = sys::Stat(fSource, &source);
    if (status == B_OK) {
        Begin(source);
    } else {
        fWay = Way::kPlain;
        fHasFailedReading = true;
    }
    return status;
}

/// Copies everything at once, or leaves it to the next way.
status_t ContentCopy::Clone()
{
    fWay = Way::kRange;
    const status_t cloned = sys::CloneContents(fSource, fTarget);
    if (cloned != B_OK) {
        // What failed halfway may have left something where there is a hole by now.
        return IsRefusal(cloned) ? status_t(B_OK) : sys::SetSize(fTarget, 0);
    }
    struct stat made;
    const status_t status = sys::Stat(fTarget, &made);
    fPosition = status == B_OK ? off_t(made.st_size) : 0;
    fEnd = fPosition;
    return status;
}

status_t ContentCopy::CopyMore()
{
    if (fPosition >= fDataEnd) {
        FindData();
    }
    const off_t data = std::max(fPosition, fDataStart);
    if (data >= fEnd || data - fPosition >= kLongHole) {
        return ExtendTo(std::min(data, fEnd));
    }
    const off_t size = std::min(std::min(fDataEnd, fEnd) - data, fPiece.Bytes());
    const bigtime_t begin = system_time();
    const ssize_t copied = fWay == Way::kRange ? CopyRange(data, size) : CopyBlock(data, size);
    if (copied < 0) {
        return static_cast<status_t>(copied);
    }
    if (copied == 0) {
        fEnd = data; // where it ends by now, or before that
        return B_OK;
    }
    fPiece.Took(copied, system_time() - begin);
    fPosition = data + copied;
    return B_OK;
}

void ContentCopy::FindData()
{
    fDataStart = sys::SeekData(fSource, fPosition);
    if (fDataStart == B_ENTRY_NOT_FOUND) {
        fDataStart = fEnd;
        fDataEnd = fEnd;
        return;
    }
    fDataEnd = fDataStart < fPosition ? fDataStart : sys::SeekHole(fSource, fDataStart);
    if (fDataStart < fPosition || fDataEnd <= fDataStart) {
        // Holes are not known there: all is data.
        fDataStart = fPosition;
        fDataEnd = fEnd;
    }
}

status_t ContentCopy::ExtendTo(off_t limit)
{
    struct stat source;
    const status_t looked = sys::Stat(fSource, &source);
    if (looked != B_OK) {
        fHasFailedReading = true;
        return looked;
    }
    // A file that was cut meanwhile has no hole there any more.
    const off_t end = std::min(limit, off_t(source.st_size));
    if (end <= fPosition) {
        fEnd = fPosition;
        return B_OK;
    }
    const off_t size = std::min(end - fPosition, fHolePiece.Bytes());
    const bigtime_t begin = system_time();
    const status_t status = sys::SetSize(fTarget, fPosition + size);
    if (status == B_OK) {
        fHolePiece.Took(size, system_time() - begin);
        fPosition += size;
    }
    return status;
}

ssize_t ContentCopy::CopyRange(off_t position, off_t size)
{
    const ssize_t copied = sys::CopyRange(fSource, fTarget, position, static_cast<size_t>(size));
    if (copied > 0) {
        return copied;
    }
    // Whatever the reason: reading and writing from here on succeed, or tell which of them fails.
    fWay = Way::kPlain;
    return CopyBlock(position, size);
}

ssize_t ContentCopy::CopyBlock(off_t position, off_t size)
{
    Block block = TakeBlock();
    const size_t wanted = std::min(static_cast<size_t>(size), kBlockBytes);
    const ssize_t read = sys::ReadAt(fSource, block.get(), wanted, position);
    if (read <= 0) {
        fHasFailedReading = read < 0;
        return read;
    }
    const status_t status = Write(std::move(block), static_cast<size_t>(read), position);
    return status == B_OK ? read : ssize_t(status);
}

status_t ContentCopy::Write(Block block, size_t size, off_t position)
{
    fBytesWritten += static_cast<off_t>(size);
    if (fWriter == nullptr && fBytesWritten > kWriterFrom) {
        fWriter = std::make_unique<BlockWriter>(fTarget);
        if (fWriter->Start() != B_OK) {
            fWriter.reset(); // this thread goes on writing, and asks again at the next block
        }
    }
    if (fWriter == nullptr) {
        return WriteWhole(fTarget, block.get(), size, position);
    }
    fWriter->Queue(std::move(block), size, position);
    return fWriter->Status();
}

status_t ContentCopy::Finish()
{
    if (fStatus == B_OK && fWriter != nullptr) {
        fStatus = fWriter->Wait();
    }
    return fStatus;
}

} // namespace kits
