#pragma once

#include "Extract/LinkPlan.h"
#include "Extract/SafeTree.h"
#include "common/Problems.h"

#include <File.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

struct archive;
struct archive_entry;

namespace add_ons {

class Progress;

/// Takes an archive apart into a folder that holds nothing yet.
///
/// Nothing of what the archive says is believed: see SafeTree for names, LinkPlan for links;
/// devices and the like are not made, rights of others not given, sizes are what comes, not what is
/// announced, and the volume is never filled up. Thread: one at a time.
class Extractor
{
public:
    enum class End {
        kWhole,
        kDamaged,    // what came before the damage is there
        kNoArchive,  // nothing is there
        kVolumeFull, // what had room is there
        kStopped,    // what was made is there, for TakeBack()
    };

    /// Borrows all. `name` is what a single packed file is called.
    Extractor(BFile& archive, std::string name, SafeTree& tree, Progress* progress);
    ~Extractor();
    Extractor(const Extractor&) = delete;
    Extractor& operator=(const Extractor&) = delete;

    /// What is free on the volume, instead of asking it. Units: bytes.
    void SetFreeBytes(std::function<int64()> freeBytes) { fFreeBytes = std::move(freeBytes); }

    End Run();
    /// Removes everything that was made.
    void TakeBack();

    /// Entries that are not there as the archive has them.
    const Problems& GetProblems() const { return fProblems; }
    /// What the archive's reader says of damage.
    const std::string& Damage() const { return fDamage; }
    /// The only entry at the top, when that is a folder; empty otherwise.
    std::string OnlyFolder() const;

private:
    struct Made
    {
        Steps steps;
        bool isFolder = false;
        mode_t mode = 0;
        std::optional<timespec> modified;
    };

    bool Open();
    End ReadAll();
    std::optional<End> TakeEntry(archive_entry* entry);
    std::optional<End> TakeFile(const Steps& steps, archive_entry* entry);
    std::optional<End> WriteContents(int file, const Steps& steps, archive_entry* entry);
    void TakeFolder(const Steps& steps, archive_entry* entry);
    void TakeSecondName(const Steps& steps, const std::string& file);
    void MakeLinks();
    void FinishFolders();
    void NoteMade(Made made);
    bool HasRoom();
    void TellPosition();

    static ssize_t ReadBytes(archive*, void* self, const void** bytes);
    static int64_t SeekTo(archive*, void* self, int64_t offset, int whence);
    static int64_t SkipBytes(archive*, void* self, int64_t count);

    BFile& fArchive;
    const std::string fName;
    SafeTree& fTree;
    Progress* const fProgress;
    std::function<int64()> fFreeBytes;
    archive* fReader = nullptr;
    std::vector<char> fBlock;
    off_t fPosition = 0; // in the archive
    off_t fTold = 0;     // how far was told
    int64 fReserve = 0;  // that stays free
    int64 fUnchecked = 0;
    LinkPlan fLinks;
    std::vector<Made> fMade; // in order
    Problems fProblems;
    std::string fDamage;
};

} // namespace add_ons
