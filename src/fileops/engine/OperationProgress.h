#pragma once

#include <SupportDefs.h>

#include <algorithm>
#include <string>

namespace norvane {

/// How far an operation is: bytes of the current file and of the whole, or entries of a deletion,
/// and the time left by what was seen so far.
///
/// Plain numbers: the clock is handed in, so that it can be tested in a line.
class OperationProgress
{
public:
    OperationProgress() = default;

    void Start(int64 totalBytes, bigtime_t now);
    void StartFile(int64 sizeBytes);
    void Add(int64 bytes);
    /// At least so much is done: what was moved, and not copied, counts too.
    void AdvanceTo(int64 doneBytes) { fDoneBytes = std::max(fDoneBytes, doneBytes); }
    /// From now on the share done is that of entries, not of bytes: they are deleted.
    void StartEntries(int64 totalEntries) { fTotalEntries = totalEntries; }
    void AddEntries(int64 entries) { fDoneEntries += entries; }

    int64 TotalBytes() const { return fTotalBytes; }
    int64 DoneBytes() const;
    int64 FileBytes() const { return fFileBytes; }
    int64 FileDoneBytes() const { return fFileDoneBytes; }
    int64 DoneEntries() const { return fDoneEntries; }

    /// The share done, 0 to 100; 100 only when all of it is.
    int32 Percent() const;
    /// What is left at the pace so far; -1 in the first three seconds and while nothing was done.
    bigtime_t TimeLeft(bigtime_t now) const;
    /// The window's title: "Copy - 42 %, 1 min left".
    std::string Title(const std::string& base, bigtime_t now) const;

private:
    double Share() const;

    int64 fTotalBytes = 0;
    int64 fDoneBytes = 0;
    int64 fFileBytes = 0;
    int64 fFileDoneBytes = 0;
    int64 fTotalEntries = 0;
    int64 fDoneEntries = 0;
    bigtime_t fStart = 0;
};

} // namespace norvane
