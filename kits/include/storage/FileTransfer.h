#pragma once

#include <SupportDefs.h>

#include <memory>

class BFile;

/// Copies the contents of one open file into another, empty one, piece by piece. An extension of
/// the platform.
///
/// Each Next() is short, so that whoever copies can show how far it is and stop. Thread: one at a
/// time.
class BFileTransfer
{
public:
    /// Ownership: borrows both, open for reading and for writing, for its own life; nobody else
    /// reads or writes them meanwhile.
    BFileTransfer(BFile* source, BFile* target);
    ~BFileTransfer();
    BFileTransfer(const BFileTransfer&) = delete;
    BFileTransfer& operator=(const BFileTransfer&) = delete;

    /// Copies some more. Returns the bytes of the source that this stands for, those of a hole
    /// included; 0 once all was copied and handed to the system; a negative status. Errors:
    /// B_DEVICE_FULL, B_IO_ERROR ... None is lost behind buffers.
    ssize_t Next();
    /// After a failure: whether it was the source that could not be read.
    bool HasFailedReading() const { return fHasFailedReading; }

private:
    BFile* const fSource;
    BFile* const fTarget;
    std::unique_ptr<char[]> fPiece;
    bool fHasFailedReading = false;
};
