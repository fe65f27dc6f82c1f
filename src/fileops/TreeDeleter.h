#pragma once

#include <SupportDefs.h>

#include <sys/stat.h>

#include <string>

class BDirectory;
class BEntry;

namespace norvane {

class MoveLedger;
class OperationUI;

/// Removes an entry, a folder with all that can be removed in it.
///
/// Works relative to open folders and follows no link. A folder is entered only when it is not
/// empty, which is never said of one that something is mounted on: mounted volumes stay, with the
/// folders above them. Thread: the operation's.
class TreeDeleter
{
public:
    /// `ui` (may be null) is told of what stays and asked whether to stop; with a `ledger` (may be
    /// null) only what is in it goes. Ownership: borrows both for its own life.
    TreeDeleter(OperationUI* ui, const MoveLedger* ledger) : fUI(ui), fLedger(ledger) {}

    /// Says whether nothing of it is left.
    bool Delete(BEntry& entry);

private:
    bool DeleteChild(const BDirectory& folder, const char* name);
    bool Empty(const BDirectory& folder, const char* name, const struct stat& record);
    bool MayGo(const BDirectory& folder, const char* name, struct stat* record);
    bool Gone(status_t status, const char* name);
    bool Stays(const char* name, const char* reason);
    bool IsStopped() const;

    OperationUI* fUI;
    const MoveLedger* fLedger;
    std::string fPath; // of the folder that is being emptied, from that of the top entry
};

} // namespace norvane
