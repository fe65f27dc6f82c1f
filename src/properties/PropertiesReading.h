#pragma once

#include "properties/EntryFacts.h"
#include "properties/ModeChange.h"
#include "properties/Tally.h"

#include <Entry.h>
#include <Messenger.h>
#include <Node.h>

#include <atomic>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

class BBitmap;
class BDirectory;

namespace norvane {

/// An entry as the window shows it: its name, and which node that was.
struct Subject
{
    entry_ref ref;
    node_ref node;
    mode_t mode = 0;
    uint64 birth = 0; // when the node was made; 0: nobody knows
};

/// The node of that name, as it is now. Errors: of looking; `subject` is unchanged then.
status_t LookAt(const entry_ref& ref, Subject* subject, struct stat* record);
/// Whether `now` is still what was shown: numbers are given again.
bool IsSame(const Subject& shown, const BNode& now);

/// What there is to read.
struct PropertiesOrder
{
    std::vector<entry_ref> entries;
    std::string path; // of the one entry, where `entries` has none
};

/// How far a reading is.
struct ReadProperties
{
    bool isRead = false;    // the chosen entries are; else all below is empty
    bool isCounted = false; // what is in the folders, too
    status_t status = B_OK; // why the one entry could not be read
    std::shared_ptr<const std::vector<Subject>> subjects; // that could be read
    std::shared_ptr<const EntryFacts> facts;              // of the one entry; else null
    std::shared_ptr<const BBitmap> icon;                  // of the one entry; may be null
    Tally chosen;
    Tally contents; // of the folders among them
    ModeMix mix;    // of those that have bits of their own
};

/// Reads chosen entries, then counts what is in the folders, on a thread that nobody waits for.
///
/// Thread: any. Whoever has no more use for it cancels it; it ends at the next entry, or when the
/// disk answers.
class PropertiesReading
{
public:
    /// Begins to read; `window` is sent kPropertiesNews when Look() has something new, a few times
    /// a second at most.
    static std::shared_ptr<PropertiesReading> Start(PropertiesOrder order,
                                                    const BMessenger& window);

    /// Reads and counts. Called once.
    void Read(const PropertiesOrder& order);
    /// Waits until the chosen entries are read, so long at most.
    void AwaitChosen(bigtime_t patience);
    /// What is known by now; the next news are told from here on.
    ReadProperties Look();
    void Cancel() { fIsCancelled = true; }
    bool IsCancelled() const { return fIsCancelled; }

    explicit PropertiesReading(const BMessenger& window) : fWindow(window) {}
    PropertiesReading(const PropertiesReading&) = delete;
    PropertiesReading& operator=(const PropertiesReading&) = delete;

private:
    class Counter;

    void ReadChosen(const std::vector<entry_ref>& entries);
    void ReadOne(const entry_ref& ref, ReadProperties* read) const;
    void CountIn(const Subject& folder);
    void Take(const Tally& contents);
    void TellSoon();

    const BMessenger fWindow;
    std::atomic<bool> fIsCancelled{false};
    bigtime_t fToldAt = 0; // of the thread that reads
    std::mutex fMutex;     // guards all below
    std::condition_variable fChosenRead;
    ReadProperties fRead;
    bool fIsTold = false; // and Look() was not called since
};

/// Opens the folder that a chosen entry is, itself, when it is the one shown still.
status_t OpenSubject(const Subject& subject, BDirectory* folder);

} // namespace norvane
