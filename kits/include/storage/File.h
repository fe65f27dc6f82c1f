#pragma once

#include <DataIO.h>
#include <Node.h>

#include <memory>

namespace kits {
class FileBuffer;
}

/// An open regular file with a position.
///
/// Small reads and writes are served from blocks of 256 KiB read ahead and written behind, in big
/// files by a thread of their own. What that means for errors: the status of a failed write comes
/// with a call soon after, at most six blocks later, and with the call itself when it writes fewer
/// bytes than the one before, or none - so a copy that ends with an empty Write() has its true
/// status there. Every call other than Write() first hands over what waits. After an error nothing
/// is tried again: what waits is dropped, the status stays until Unset(). Changes that others make
/// to the file may be seen up to one block late.
///
/// Only regular files are opened: others are refused with B_BAD_VALUE, folders with
/// B_IS_A_DIRECTORY, without waiting for anyone. A link is followed, unless B_NO_TRAVERSE is given.
class BFile : public BNode, public BPositionIO
{
public:
    /// Holds no file, or opens one as SetTo() does; InitCheck() tells what became of it.
    BFile();
    BFile(const entry_ref* ref, uint32 openMode);
    BFile(const BEntry* entry, uint32 openMode);
    BFile(const char* path, uint32 openMode);
    /// Opens the file at `path` from `directory`.
    BFile(const BDirectory* directory, const char* path, uint32 openMode);
    BFile(const BFile&) = delete;
    BFile& operator=(const BFile&) = delete;
    ~BFile() override;

    /// Opens a file by `openMode`: B_READ_ONLY and its like, with B_CREATE_FILE and its like.
    /// Errors: B_ENTRY_NOT_FOUND, B_FILE_EXISTS, B_PERMISSION_DENIED, B_IS_A_DIRECTORY,
    /// B_LINK_LIMIT, B_BAD_VALUE ...
    status_t SetTo(const entry_ref* ref, uint32 openMode);
    status_t SetTo(const BEntry* entry, uint32 openMode);
    status_t SetTo(const char* path, uint32 openMode);
    status_t SetTo(const BDirectory* directory, const char* path, uint32 openMode);
    /// An extension of the platform: opens the file `name` of the folder for reading, itself: a
    /// link is B_LINK_LIMIT. `st` tells what was opened.
    status_t SetToChild(const BDirectory& folder, const char* name, struct stat* st);
    /// Writes what waits and closes the file; what becomes of it nobody hears: see Close().
    void Unset() override;
    /// As Unset(), and tells what became of the last bytes. An extension of the platform.
    status_t Close();

    /// Whether the file is open for it.
    bool IsReadable() const;
    bool IsWritable() const;

    // BPositionIO
    /// Units: bytes; negative: a status. Fewer than `size` bytes: the end of the file.
    ssize_t Read(void* buffer, size_t size) override;
    /// Errors: B_NOT_ALLOWED for a file not open for writing.
    ssize_t Write(const void* buffer, size_t size) override;
    ssize_t ReadAt(off_t position, void* buffer, size_t size) override;
    ssize_t WriteAt(off_t position, const void* buffer, size_t size) override;
    /// Moves the position. Errors: B_BAD_VALUE for a place before the start; the position stays.
    off_t Seek(off_t position, uint32 seekMode) override;
    off_t Position() const override;
    /// Cuts, or extends by zeros. Errors: B_BAD_VALUE for a negative size, B_NOT_ALLOWED for a file
    /// not open for writing.
    status_t SetSize(off_t size) override;

    /// Tells how many bytes there are, what waits included.
    status_t GetSize(off_t* size) const override;

    // BNode
    /// Hands over what waits and has it brought to the medium.
    status_t Sync() override;

private:
    friend class BDirectory;
    friend class BFileTransfer;

    status_t OpenAt(int folder, const std::string& path, uint32 openMode, struct stat* st);
    void AdoptFile(int descriptor, uint32 openMode);
    status_t Settle() const override;

    uint32 fOpenMode = 0;
    std::unique_ptr<kits::FileBuffer> fBuffer; // null while nothing is open
};
