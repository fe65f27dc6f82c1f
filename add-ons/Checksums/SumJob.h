#pragma once

#include <Condition.h>
#include <Directory.h>
#include <EntryRef.h>
#include <Locker.h>
#include <Messenger.h>

#include <atomic>
#include <memory>
#include <string>
#include <vector>

class BFile;

namespace checksums {

struct SumFile;

/// Sent to a job's target when it has ended.
constexpr uint32 kSumsEnded = 'CsEn';

/// How far a file is.
enum class SumState : uint8 {
    kWaiting,
    kReading,
    kSummed,     // its sum is known, and there is nothing to compare it with
    kSame,       // it is the one that was written down
    kDiffers,    // it is not
    kMissing,    // there is no such file
    kUnreadable, // for a reason
    kChanged,    // while it was read
    kRefused,    // its name leads out of the folder
};

/// A file and its sum.
struct SumRow
{
    uint32 base = 0;      // which folder its path begins in
    std::string path;     // from there
    std::string name;     // as lists of sums write it
    bool follows = false; // a link, to what it leads to
    int64 bytes = 0;      // as far as that was known before
    SumState state = SumState::kWaiting;
    status_t reason = B_OK; // of kUnreadable
    std::string sum;        // "" while it is not known
    std::string expected;   // "" without one
};

/// Works out the sums of files, or compares them with those that lists among the files say, on
/// threads of its own.
///
/// Thread: any. Its threads keep it alive; whoever lets go of it stops it first.
class SumJob : public std::enable_shared_from_this<SumJob>
{
public:
    /// How far all of it is.
    struct Progress
    {
        size_t rows = 0;
        size_t finished = 0; // rows that will not change any more
        int64 bytes = 0;     // that were read
        int64 allBytes = 0;
        bool isFinding = true; // there may come more rows
        bool hasEnded = false;
        bool wasStopped = false;
        bool isComparing = false; // with lists of sums
        size_t otherLines = 0;    // in these that say nothing
    };

    /// `refs`: files and folders. Where some are lists of sums, what these name is compared
    /// instead.
    SumJob(std::vector<entry_ref> refs, const BMessenger& target);

    /// Begins. Errors: B_NO_MORE_THREADS.
    status_t Start();
    /// Ends the work soon; what is known stays.
    void Stop() { fIsStopped = true; }
    /// Waits until all threads have ended, at most so long. False when they have not.
    bool WaitForEnd(bigtime_t limit);

    /// Looks at what there is so far.
    Progress Look() const;
    SumRow RowAt(size_t place) const;
    std::vector<SumRow> Rows() const;
    /// The first row with that sum; SIZE_MAX for none.
    size_t FindSum(const std::string& sum) const;

private:
    void Run();
    void Find();
    bool FindLists();
    bool ReadList(const entry_ref& ref, SumFile* list) const;
    void AddLines(uint32 base, const SumFile& list);
    void AddSelected(const entry_ref& ref);
    uint32 BaseOf(const entry_ref& ref);
    void AddRow(SumRow row);
    void SumAll();
    void SumNext();
    void SumRowAt(size_t place);
    status_t Open(const SumRow& row, BFile* file) const;
    void SetRow(size_t place, const SumRow& row);

    const std::vector<entry_ref> fRefs;
    const BMessenger fTarget;
    std::atomic<bool> fIsStopped = false;
    std::atomic<size_t> fNext = 0;
    std::atomic<int64> fBytes = 0;

    // The threads', complete before the second one begins
    std::vector<entry_ref> fBaseRefs; // an entry of each folder
    std::vector<BDirectory> fBases;
    std::vector<std::string> fPrefixes; // of the names of what lies there

    mutable BLocker fLock;
    BCondition fEnd;
    std::vector<SumRow> fRows GUARDED_BY(fLock);
    Progress fProgress GUARDED_BY(fLock);
};

} // namespace checksums
