#pragma once

#include "fileops/engine/CopyPlace.h"
#include "fileops/engine/OwnNames.h"

#include <File.h>
#include <Node.h>
#include <SupportDefs.h>

#include <sys/stat.h>

#include <memory>

namespace norvane {

class OperationUI;

/// A file that is to take the place of another: written beside it, under a hidden name, and put in
/// its place at the end, when it lies on the medium.
///
/// What is replaced is looked at once more after it was taken from its place: when it is not what
/// the person agreed to lose, it is put back. The file beside is removed with this object unless it
/// took the place. Thread: the operation's.
class ReplaceTarget
{
public:
    enum class Outcome : uint8 {
        kReplaced,
        kMade,    // nothing was there any more
        kChanged, // something else is there: see Found()
        kFailed,  // see Status()
    };

    /// Ownership: borrows `folder` for its own life.
    ReplaceTarget(BDirectory& folder, std::string name);
    ~ReplaceTarget();
    ReplaceTarget(const ReplaceTarget&) = delete;
    ReplaceTarget& operator=(const ReplaceTarget&) = delete;

    /// Makes the file beside with (mode & ~umask), otherwise for nobody else to read. Errors: those
    /// of creation.
    [[nodiscard]] status_t Create(mode_t mode = 0600);
    /// The file beside, to be written.
    const std::shared_ptr<BFile>& File() const { return fFile; }
    const struct stat& Record() const { return fRecord; }

    /// Brings what was written to the medium, and closes the file: some file systems tell only then
    /// that bytes did not arrive. Errors: B_CANCELED when the person asked to stop.
    [[nodiscard]] status_t Finish(OperationUI& ui);
    /// What was written, also after it took its place.
    BNode& Node() { return fNode; }
    /// Puts the file in the place of `agreed`, which the person agreed to lose.
    Outcome Replace(const struct stat& agreed);
    /// What lies there instead, after kChanged.
    const struct stat& Found() const { return fFound; }
    /// Why it failed; otherwise not B_OK when something stays under the hidden name: the old file
    /// that could not be removed, or what others put there while it was exchanged.
    status_t Status() const { return fStatus; }

private:
    Outcome Fail(status_t status);
    Outcome ReplaceUnseen();
    Outcome LookAtExchanged(const struct stat& agreed);
    void PutBack();

    BDirectory& fFolder;
    const std::string fName;
    const OwnTemporaryName fBeside;
    std::shared_ptr<BFile> fFile;
    BNode fNode;
    struct stat fRecord = {};
    struct stat fFound = {};
    status_t fStatus = B_OK;
    bool fIsBeside = false;
};

/// Whether size and time of change are the same.
bool HasSameContents(const struct stat& before, const struct stat& now);
/// Whether it is the same node, too.
bool IsUnchanged(const struct stat& before, const struct stat& now);

} // namespace norvane
