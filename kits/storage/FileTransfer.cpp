#include <FileTransfer.h>

#include <Errors.h>
#include <File.h>

namespace {

constexpr size_t kPieceBytes = size_t{64} * 1024;

} // namespace

BFileTransfer::BFileTransfer(BFile* source, BFile* target)
    : fSource(source), fTarget(target), fPiece(std::make_unique<char[]>(kPieceBytes))
{
}

BFileTransfer::~BFileTransfer() = default;

ssize_t BFileTransfer::Next()
{
    const ssize_t count = fSource->Read(fPiece.get(), kPieceBytes);
    if (count < 0) {
        fHasFailedReading = true;
        return count;
    }
    // A writing of nothing hands over what waits, and tells what became of it.
    const ssize_t written = fTarget->Write(fPiece.get(), static_cast<size_t>(count));
    if (written < 0) {
        return written;
    }
    return written == count ? count : ssize_t(B_IO_ERROR);
}
