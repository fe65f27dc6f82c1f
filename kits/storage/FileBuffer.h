#pragma once

#include "BlockPool.h"
#include "BlockWriter.h"

#include <SupportDefs.h>

#include <memory>

namespace kits {

/// The blocks between a file's small reads and writes and the system.
///
/// A file is read ahead or written behind, never both: changing over hands over or drops what there
/// is. The file's own position in the system is not used, so a second descriptor changes nothing
/// here.
class FileBuffer
{
public:
    /// `file` is borrowed until this object is gone.
    explicit FileBuffer(int file);
    /// Hands over what waits; whoever wants to know the status calls Flush() before.
    ~FileBuffer();

    ssize_t Read(void* buffer, size_t size);
    ssize_t Write(const void* buffer, size_t size);
    ssize_t ReadAt(off_t position, void* buffer, size_t size);
    ssize_t WriteAt(off_t position, const void* buffer, size_t size);
    /// Hands over what waits, and waits until the system has it. The first error stays for ever.
    [[nodiscard]] status_t Flush();
    /// Forgets what was read ahead.
    void DropReadAhead();

    off_t Position() const { return fPosition; }
    void SetPosition(off_t position);

private:
    status_t HandOver();
    [[nodiscard]] status_t WriteDirectly(const char* bytes, size_t size, off_t position);
    [[nodiscard]] status_t Append(const char* bytes, size_t size);
    [[nodiscard]] status_t FillReadAhead(size_t wanted);

    const int fFile;
    off_t fPosition = 0;
    status_t fStatus = B_OK; // of the first write that failed

    Block fReadBlock; // null until a small read comes
    off_t fReadStart = 0;
    size_t fReadLength = 0;
    size_t fReadAhead = 0; // bytes of the next filling; grows with reading on
    bool fIsAtEnd = false; // the last filling came back short

    Block fWriteBlock; // null until a small write comes
    off_t fWriteStart = 0;
    size_t fWriteLength = 0;
    size_t fLastWrite = 0;                // bytes of the Write() before
    off_t fWritten = 0;                   // bytes handed over in a row
    std::unique_ptr<BlockWriter> fWriter; // null until the file has grown by some MiB
};

} // namespace kits
