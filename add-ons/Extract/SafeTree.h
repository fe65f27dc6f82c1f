#pragma once

#include <SupportDefs.h>

#include <ctime>
#include <string>
#include <sys/types.h>
#include <vector>

namespace add_ons {

/// The names of the folders from the top down, and of the entry itself.
using Steps = std::vector<std::string>;

/// The steps of a path out of an archive. False when it leads nowhere below a folder: from the root
/// of the system, upwards, or through too many folders. "." and doubled slashes say nothing.
bool ReadSteps(const std::string& path, Steps* steps);
/// The path again.
std::string PathOf(const Steps& steps);

/// A folder into which things are put that nobody vouches for.
///
/// Every name is looked up step by step from the open folder, and no step follows a link: nothing
/// is ever made, written or removed outside, whatever is put between. Nothing is replaced. Calls
/// give 0 or the system's number of what went wrong. Thread: one at a time.
class SafeTree
{
public:
    /// Opens the folder, which is there, and keeps others out of it until Finish().
    explicit SafeTree(const std::string& path);
    ~SafeTree();
    SafeTree(const SafeTree&) = delete;
    SafeTree& operator=(const SafeTree&) = delete;

    bool IsOpen() const { return fRoot >= 0; }

    /// Makes a folder, and those above it; one that is there is as good.
    int MakeFolder(const Steps& steps);
    /// Makes a new file, its owner's alone, open for writing, and the folders above it.
    int MakeFile(const Steps& steps, int* file);
    /// Makes a link with that text.
    int MakeLink(const Steps& steps, const std::string& text);
    /// Gives a file of this tree a second name.
    int MakeSecondName(const Steps& steps, const Steps& file);
    /// Sets mode (cut by the umask) and time of what is there, of a folder after all that is in it.
    int SetFolder(const Steps& steps, mode_t mode, const timespec* modified);
    static int SetFile(int file, mode_t mode, const timespec* modified);
    /// Removes an entry that was made, a folder only when it is empty.
    int Remove(const Steps& steps);
    /// Lets others in again, as the folder was found.
    void Finish();

    /// What is free for this person on the volume. Units: bytes; entries (a large number where the
    /// volume does not count them).
    int64 FreeBytes() const;
    int64 FreeEntries() const;
    /// The size of the volume. Units: bytes.
    int64 VolumeBytes() const;

private:
    int OpenFolder(const Steps& steps, size_t count, bool makes, int* folder);
    int OpenParent(const Steps& steps, bool makes);
    void ForgetParent();

    int fRoot = -1;
    mode_t fMode = 0700; // as it was found
    int fParent = -1;    // the folder of the last entry, open
    Steps fParentSteps;
};

} // namespace add_ons
