#pragma once

#include <DataIO.h>
#include <Errors.h>

namespace norvane {

/// A file of this side as a client reads or writes it; keeps what went wrong with it, which the
/// client's answer does not tell.
///
/// Thread: one at a time.
class TransferFile : public BDataIO
{
public:
    /// Ownership: borrows `file` for its own life.
    explicit TransferFile(BDataIO& file) : fFile(file) {}

    /// B_OK, or the first error.
    status_t Status() const { return fStatus; }

    // BDataIO
    ssize_t Read(void* buffer, size_t size) override { return Kept(fFile.Read(buffer, size)); }
    ssize_t Write(const void* buffer, size_t size) override
    {
        return Kept(fFile.Write(buffer, size));
    }

private:
    ssize_t Kept(ssize_t result)
    {
        if (result < 0 && fStatus == B_OK) {
            fStatus = static_cast<status_t>(result);
        }
        return result;
    }

    BDataIO& fFile;
    status_t fStatus = B_OK;
};

} // namespace norvane
