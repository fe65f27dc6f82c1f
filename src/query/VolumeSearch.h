#pragma once

#include "query/SearchCounts.h"

#include <Entry.h>
#include <SupportDefs.h>
#include <Volume.h>

#include <atomic>
#include <condition_variable>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

class BQuery;

namespace norvane {

/// Searches one volume, on a thread that may wait for a disk for ever: whoever wants the result
/// waits for it only as long as the volume answers.
///
/// Thread: Do() is the search's own, all else is for any.
class VolumeSearch
{
public:
    /// `text` is what the files must hold.
    VolumeSearch(std::string predicate, std::optional<std::string> text, const BVolume& volume);

    void Do();
    /// Waits for the end of Do(), or until it is cancelled. False when the volume did not answer
    /// for so many seconds.
    bool WaitForEnd(int32 patience);
    /// Has it end soon; what it finds later is nobody's.
    void Cancel();

    SearchCounts Look() const;
    /// What was found so far, once.
    std::vector<entry_ref> TakeHits();
    /// The path of the first file that could not be read, once; empty: none was.
    std::string TakeUnreadable();

private:
    void Search();
    void TakeAll(BQuery& query);
    void ReadAll(BQuery& query);
    void Read(BQuery& query);
    bool GetNext(BQuery& query, entry_ref* hit);

    const std::string fPredicate;
    const std::optional<std::string> fText;
    const BVolume fVolume;
    std::atomic<bool> fIsCancelled{false};
    std::atomic<int32> fExamined{0};
    std::atomic<int32> fFound{0};
    std::atomic<int32> fUnreadable{0};
    std::atomic<int64> fPieces{0}; // read of files

    std::mutex fFetching;      // held while the next hit is waited for
    mutable std::mutex fMutex; // guards all below
    std::condition_variable fEnd;
    BQuery* fQuery = nullptr; // while it runs
    std::vector<entry_ref> fHits;
    std::string fUnreadablePath; // of the first one
    bool fHasEnded = false;
};

} // namespace norvane
