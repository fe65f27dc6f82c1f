#pragma once

#include <SupportDefs.h>

#include <memory>

class BFile;
struct stat;

namespace kits {
class ContentCopy;
}

/// Copies the contents of one open file into another, empty one, piece by piece and by the fastest
/// way the two volumes offer. An extension of the platform.
///
/// A volume that can shares the blocks; else the system copies by itself; else the bytes are read
/// and written. Holes stay holes. Each Next() is short where the medium allows, so that whoever
/// copies can show how far it is and stop. What the source grows by meanwhile is not copied, what
/// it loses is missing: who cares compares the sizes afterwards. Thread: one at a time.
class BFileTransfer
{
public:
    /// Ownership: borrows both, open for reading and for writing, for its own life; nobody else
    /// reads or writes them meanwhile. Their positions stay as they are. `record`: what is known of
    /// the source since it was opened; null: it is asked for.
    BFileTransfer(BFile* source, BFile* target, const struct stat* record = nullptr);
    ~BFileTransfer();
    BFileTransfer(const BFileTransfer&) = delete;
    BFileTransfer& operator=(const BFileTransfer&) = delete;

    /// Copies some more. Returns the bytes of the source that this stands for, those of a hole
    /// included; 0 once all was copied and handed to the system; a negative status, the same from
    /// then on. Errors: B_DEVICE_FULL, B_IO_ERROR ... None is lost behind buffers.
    ssize_t Next();
    /// After a failure: whether it was the source that could not be read.
    bool HasFailedReading() const { return fHasFailedReading; }

private:
    std::unique_ptr<kits::ContentCopy> fCopy; // null: it could not begin
    status_t fStatus = B_OK;                  // why
    bool fHasFailedReading = false;
};
