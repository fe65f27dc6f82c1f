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
    virtual off_t Position() const = 0;
    /// Cuts or extends to `size` bytes. Errors: B_ERROR where that is not possible.
    virtual status_t SetSize(off_t size);
    /// Tells how many bytes there are; the position stays.
    virtual status_t GetSize(off_t* size) const;
};

/// Bytes in memory of its own, which grows with what is written.
class BMallocIO : public BPositionIO
{
public:
    BMallocIO();
    ~BMallocIO() override;

    ssize_t ReadAt(off_t position, void* buffer, size_t size) override;
    /// Writes at `position`; a gap before it is filled with zeros.
    /// Errors: B_NO_MEMORY; nothing is written then.
    ssize_t WriteAt(off_t position, const void* buffer, size_t size) override;
    off_t Seek(off_t position, uint32 seekMode) override;
    off_t Position() const override { return fPosition; }
    status_t SetSize(off_t size) override;
    status_t GetSize(off_t* size) const override;

    /// Sets by how many bytes at least the memory grows. 256 at first.
    void SetBlockSize(size_t blockSize);
    /// Lends the bytes, until the next change.
    const void* Buffer() const { return fBuffer; }
    size_t BufferLength() const { return fLength; }

private:
    bool Reserve(size_t capacity);

    char* fBuffer = nullptr;
    size_t fLength = 0;
    size_t fCapacity = 0;
    size_t fBlockSize = 256;
    off_t fPosition = 0;
};

/// Bytes in memory of someone else.
///
/// Ownership: borrows the memory, which must outlive this object.
class BMemoryIO : public BPositionIO
{
public:
    BMemoryIO(void* buffer, size_t size);
    /// Read only: writing and SetSize() fail with B_NOT_ALLOWED.
    BMemoryIO(const void* buffer, size_t size);
    ~BMemoryIO() override;

    ssize_t ReadAt(off_t position, void* buffer, size_t size) override;
    /// Writes what fits. Errors: B_NOT_ALLOWED; B_BAD_VALUE for a negative position.
    ssize_t WriteAt(off_t position, const void* buffer, size_t size) override;
    off_t Seek(off_t position, uint32 seekMode) override;
    off_t Position() const override { return fPosition; }
    /// Sets how many of the bytes count. Errors: B_ERROR beyond the memory that was given.
    status_t SetSize(off_t size) override;
    status_t GetSize(off_t* size) const override;

private:
    const char* fReadable;
    char* fWritable; // null when read only
    size_t fLength;
    size_t fCapacity;
    off_t fPosition = 0;
};
