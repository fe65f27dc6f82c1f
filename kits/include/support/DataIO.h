#pragma once

#include <SupportDefs.h>

#include <cstdio> // SEEK_SET, SEEK_CUR, SEEK_END

/// Something bytes are read from and written to.
class BDataIO
{
public:
    BDataIO() = default;
    virtual ~BDataIO();
    BDataIO(const BDataIO&) = delete;
    BDataIO& operator=(const BDataIO&) = delete;

    /// Reads up to `size` bytes and returns how many there were, 0 at the end, or an error.
    virtual ssize_t Read(void* buffer, size_t size) = 0;
    /// Writes up to `size` bytes and returns how many were taken, or an error.
    virtual ssize_t Write(const void* buffer, size_t size) = 0;
};

/// A BDataIO with a position that every Read and Write moves, and with access at any other.
class BPositionIO : public BDataIO
{
public:
    ~BPositionIO() override;

    /// As ReadAt and WriteAt at the current position, which moves by what was read or written.
    ssize_t Read(void* buffer, size_t size) override;
    ssize_t Write(const void* buffer, size_t size) override;

    /// Reads and writes at `position`; the current position stays.
    virtual ssize_t ReadAt(off_t position, void* buffer, size_t size) = 0;
    virtual ssize_t WriteAt(off_t position, const void* buffer, size_t size) = 0;

    /// Moves the position by `position` from the start, the present place or the end (SEEK_SET,
    /// SEEK_CUR, SEEK_END) and returns the new one.
    /// Errors: B_BAD_VALUE for a place before the start; the position stays.
    virtual off_t Seek(off_t position, uint32 seekMode) = 0;
    /// The current position: bytes from the start; 0 at first.
    virtual off_t Position() const = 0;
    /// Cuts or extends to `size` bytes. Errors: B_ERROR where that is not possible.
    virtual status_t SetSize(off_t size);
    /// Tells how many bytes there are; the position stays. Errors: B_ERROR where nobody knows, as
    /// here.
    virtual status_t GetSize(off_t* size) const;
};

/// Bytes in memory of its own, which grows with what is written.
class BMallocIO : public BPositionIO
{
public:
    /// Makes it empty, without memory.
    BMallocIO();
    ~BMallocIO() override;

    /// Reads what there is from `position` on; 0 beyond the end. Errors: B_BAD_VALUE for a negative
    /// position or no buffer.
    ssize_t ReadAt(off_t position, void* buffer, size_t size) override;
    /// Writes at `position`; a gap before it is filled with zeros.
    /// Errors: B_NO_MEMORY; nothing is written then.
    ssize_t WriteAt(off_t position, const void* buffer, size_t size) override;
    /// Moves the position, also beyond the end. Errors: B_BAD_VALUE for a place before the start or
    /// another mode; the position stays.
    off_t Seek(off_t position, uint32 seekMode) override;
    /// The current position: bytes from the start; 0 at first.
    off_t Position() const override { return fPosition; }
    /// Cuts, or extends by zeros. Errors: B_BAD_VALUE for a negative size, B_NO_MEMORY; nothing
    /// changes then. The position stays.
    status_t SetSize(off_t size) override;
    /// Tells how many bytes there are. Errors: B_BAD_VALUE for null.
    status_t GetSize(off_t* size) const override;

    /// Lends the bytes, until the next change; null before the first one.
    const void* Buffer() const { return fBuffer; }
    size_t BufferLength() const { return fLength; }

private:
    bool Reserve(size_t capacity);

    char* fBuffer = nullptr;
    size_t fLength = 0;
    size_t fCapacity = 0;
    off_t fPosition = 0;
};

/// Bytes in memory of someone else.
///
/// Ownership: borrows the memory, which must outlive this object.
class BMemoryIO : public BPositionIO
{
public:
    /// Reads and writes `size` bytes from `buffer` on; null counts as none.
    BMemoryIO(void* buffer, size_t size);
    /// Read only: writing and SetSize() fail with B_NOT_ALLOWED.
    BMemoryIO(const void* buffer, size_t size);
    ~BMemoryIO() override;

    /// Reads what there is from `position` on; 0 beyond the end. Errors: B_BAD_VALUE for a negative
    /// position or no buffer.
    ssize_t ReadAt(off_t position, void* buffer, size_t size) override;
    /// Writes what fits. Errors: B_NOT_ALLOWED; B_BAD_VALUE for a negative position.
    ssize_t WriteAt(off_t position, const void* buffer, size_t size) override;
    /// Moves the position, also beyond the end. Errors: B_BAD_VALUE for a place before the start or
    /// another mode; the position stays.
    off_t Seek(off_t position, uint32 seekMode) override;
    /// The current position: bytes from the start; 0 at first.
    off_t Position() const override { return fPosition; }
    /// Sets how many of the bytes count. Errors: B_ERROR beyond the memory that was given;
    /// B_NOT_ALLOWED when read only.
    status_t SetSize(off_t size) override;
    /// Tells how many of the bytes count. Errors: B_BAD_VALUE for null.
    status_t GetSize(off_t* size) const override;

private:
    const char* fReadable;
    char* fWritable; // null when read only
    size_t fLength;
    size_t fCapacity;
    off_t fPosition = 0;
};
