#pragma once

#include <EntryRecord.h>
#include <Node.h>

class BMessage;

/// "opcode" of these messages; "device" and "directory" are those of the watched folder.
enum : int32 {
    B_ENTRIES_CHANGED = 100,
};

/// One thing that happened to a name in a watched folder.
struct BEntryChange
{
    enum class Kind : uint8 {
        kCreated,   // an entry was made
        kRemoved,   // it went: deleted, or moved elsewhere
        kRenamed,   // from `fromName`; an entry that had the name is replaced
        kMovedIn,   // from another folder; an entry that had the name is replaced
        kExchanged, // the name is that of another entry now, which gave its own name away for it
        kChanged,   // the contents, the mode or the like of what has the name
    };

    Kind kind = Kind::kCreated;
    const char* name = nullptr;     // lent by the message
    const char* fromName = nullptr; // of kRenamed; else ""
    /// Of what has the name, as it was when the watch looked, which may be after later changes:
    /// these are told too. The status is B_ENTRY_NOT_FOUND when the name was gone by then; the
    /// notice of that is on its way. Empty for kRemoved.
    BEntryRecord record;
};

/// Reads the message of B_WATCH_ENTRIES: what happened to the entries of a folder, in order. An
/// extension of the platform.
///
/// Applied one after the other to the names that a listing found after the watch began, whenever
/// that is, they give the names that the folder has. Thread: one at a time. Ownership: borrows the
/// message.
class BEntryChanges
{
public:
    explicit BEntryChanges(const BMessage& notice);

    /// Errors: B_BAD_VALUE when the message is not such a one.
    status_t InitCheck() const { return fStatus; }
    /// The folder that was watched.
    node_ref Folder() const { return fFolder; }
    /// The next change; false after the last one.
    bool GetNext(BEntryChange* change);

private:
    bool Take(void* to, size_t size);
    const char* TakeText();

    node_ref fFolder;
    const char* fNext = nullptr;
    const char* fEnd = nullptr;
    status_t fStatus;
};
