#pragma once

#include <cstddef>

class BDataIO;

namespace norvane {

/// What a download goes into.
class FtpSink
{
public:
    FtpSink() = default;
    virtual ~FtpSink() = default;
    FtpSink(const FtpSink&) = delete;
    FtpSink& operator=(const FtpSink&) = delete;

    /// Takes what follows; 0, or an FtpLocalCode.
    virtual int Take(const char* data, size_t size) = 0;
    /// Nothing follows.
    virtual int End() { return 0; }
};

/// An open file. Ownership: borrows it.
class FileSink : public FtpSink
{
public:
    explicit FileSink(BDataIO& file) : fFile(file) {}

    // FtpSink
    int Take(const char* data, size_t size) override;
    int End() override;

private:
    BDataIO& fFile;
};

/// A block of malloc(), which grows up to a limit.
class MemorySink : public FtpSink
{
public:
    /// Ownership: borrows `*data`, null or a block of malloc(), which stays the caller's.
    MemorySink(char** data, size_t limit) : fData(data), fLimit(limit) {}

    size_t Length() const { return fLength; }

    // FtpSink
    int Take(const char* data, size_t size) override;
    int End() override;

private:
    char** const fData;
    const size_t fLimit;
    size_t fLength = 0;
    size_t fCapacity = 0;
};

} // namespace norvane
