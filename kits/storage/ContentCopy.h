#pragma once

#include "BlockPool.h"
#include "BlockWriter.h"
#include "PieceSize.h"

#include <SupportDefs.h>

#include <memory>

struct stat;

namespace kits {

/// Copies what one open file holds into another, empty one, by the fastest way there is.
///
/// A volume that can shares the blocks of the whole file. Else the system copies between the two by
/// itself, as long as it does; what it does not copy is read and written here. Holes stay holes. Of
/// a file that has a size, no more than that is copied, however it grows meanwhile.
class ContentCopy
{
public:
    /// Both descriptors are borrowed until this object is gone.
    ContentCopy(int source, int target) : fSource(source), fTarget(target) {}
    ContentCopy(const ContentCopy&) = delete;
    ContentCopy& operator=(const ContentCopy&) = delete;

    /// Begins with what is known of the source; Next() asks for it otherwise. Copies nothing yet.
    void Begin(const struct stat& source);
    /// Copies some more. Returns the bytes that this stands for; 0 once all was handed to the
    /// system; a negative status, the same from then on.
    ssize_t Next();
    /// Whether the status came from reading the source.
    bool HasFailedReading() const { return fHasFailedReading; }

private:
    enum class Way : uint8 {
        kUnknown,
        kClone, // the volume shares the blocks
        kRange, // the system copies between the files
        kPlain, // by reading and writing
    };

    [[nodiscard]] status_t BeginUnknown();
    [[nodiscard]] status_t Clone();
    [[nodiscard]] status_t CopyMore();
    void FindData();
    [[nodiscard]] status_t ExtendTo(off_t limit);
    ssize_t CopyRange(off_t position, off_t size);
    ssize_t CopyBlock(off_t position, off_t size);
    [[nodiscard]] status_t Write(Block block, size_t size, off_t position);
    [[nodiscard]] status_t Finish();

    const int fSource;
    const int fTarget;
    Way fWay = Way::kUnknown;
    off_t fPosition = 0;  // everything before it is copied
    off_t fEnd = 0;       // where the source ends, as far as is known
    off_t fDataStart = 0; // where the data begin that come next or that are being copied
    off_t fDataEnd = 0;   // where they end; nothing is known beyond
    PieceSize fPiece{off_t{8} << 20};
    PieceSize fHolePiece{off_t{1} << 40};
    off_t fBytesWritten = 0;
    std::unique_ptr<BlockWriter> fWriter; // null until some MiB were read and written
    status_t fStatus = B_OK;
    bool fHasFailedReading = false;
};

} // namespace kits
