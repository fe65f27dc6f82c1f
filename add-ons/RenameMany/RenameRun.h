#pragma once

#include "RenameMany/RenamePlan.h"

#include <SupportDefs.h>

#include <atomic>
#include <string>
#include <vector>

struct entry_ref;

namespace rename_many {

/// Gives entries other names, without ever replacing one.
class NameChanger
{
public:
    virtual ~NameChanger() = default;
    /// Renames within a folder. Errors: B_FILE_EXISTS when the name is taken; B_ENTRY_NOT_FOUND ...
    /// Nothing has changed then.
    virtual status_t Rename(uint32 folder, const std::string& from, const std::string& to) = 0;
};

/// Renames on the disk.
class DiskChanger : public NameChanger
{
public:
    /// `folders`: an entry in each of them. Ownership: borrows them.
    explicit DiskChanger(const std::vector<entry_ref>& folders) : fFolders(folders) {}

    // NameChanger
    status_t Rename(uint32 folder, const std::string& from, const std::string& to) override;

private:
    const std::vector<entry_ref>& fFolders;
};

/// What became of some steps.
struct Outcome
{
    /// An entry that could not get its name back.
    struct Stuck
    {
        size_t entry = 0;
        std::string wanted; // the name it should have
        std::string name;   // the one it has now
        status_t reason = B_OK;
    };

    status_t status = B_OK;   // B_CANCELED when it was stopped
    Step failed;              // with another status: the step that did not succeed
    Steps done;               // what was done and not taken back
    std::vector<size_t> gone; // entries that were no longer there
    std::vector<Stuck> stuck; // empty: all is done, or all is as it was before
};

/// Takes the steps one after the other. When one fails, or `isStopped` becomes true, all before it
/// are taken back. An entry that is gone is left out. `*count` tells how many are done.
Outcome TakeSteps(const Steps& steps, NameChanger& changer, const std::atomic<bool>& isStopped,
                  std::atomic<size_t>* count);

} // namespace rename_many
