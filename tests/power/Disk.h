#pragma once

#include "Recording.h"

#include <map>
#include <string>
#include <string_view>
#include <vector>

/// What can be on the medium when the power goes while an operation runs.
///
/// What a journalling file system promises, ext4 with default options (data=ordered, delayed
/// allocation) for the reference, and not more than that:
///
/// - What changes names and records (making, renaming, exchanging, linking, removing, rights,
/// times,
///   attributes) is committed in the order in which it was done; what is on the medium after a
///   crash is a beginning of that order. Each volume has an order of its own.
/// - Contents are not in that order. What one call wrote to a file may be there or not, each for
///   itself, whenever the crash comes, until the file or its volume was synced; when some of it is
///   not, the file is short or has holes, and is whole no more. A truncation is taken for a write.
/// - fsync() and fdatasync() of a node, and writing through O_SYNC or O_DSYNC, make durable what
///   was written to it, and the order up to the last change of that node.
/// - syncfs() makes durable all that was done on its volume.
/// - Nothing that was durable is lost, and a sync that says success had it.
///
/// That ext4 writes out the contents of a file that is renamed over another one (auto_da_alloc) is
/// not assumed: other journalling file systems do not, nor does ext4 when names are exchanged.
/// Barriers work, and the medium keeps what it was made to keep.
class Disk
{
public:
    explicit Disk(const Recording& recording);

    /// One state: the crash comes when `steps` were done; of the names and records of each volume a
    /// beginning is there; what the writes in `lost` wrote is not.
    struct State
    {
        size_t steps = 0;
        size_t committed[2] = {0, 0};
        std::vector<size_t> lost; // steps
    };

    size_t Steps() const { return fNames.size() - 1; }
    /// What at least is committed of a volume (0 or 1) when so many steps were done.
    size_t Floor(int volume, size_t steps) const;
    /// Whether a step changed names or records of a volume.
    bool Changes(int volume, size_t step) const;
    /// The writes that can be lost then.
    std::vector<size_t> Unsynced(size_t steps) const;

    /// What each name holds then, as numbers of texts; kDamaged for what is not whole.
    std::vector<std::pair<std::string_view, int>> Contents(const State& state) const;
    /// The number of a text; kDamaged if no file ever held it.
    int NumberOf(const std::string& text) const;

    static constexpr int kDamaged = -1;

private:
    using Node = std::pair<int, unsigned long>; // of a volume

    struct File
    {
        std::vector<int> texts;     // after so many steps; the last one once it is gone
        std::vector<size_t> writes; // steps
        std::vector<size_t> syncs;  // steps: its own, and those of its volume
        size_t lastChange = 0;      // of it or a name of it: after so many steps
    };

    int Number(const std::string& text);
    void Read(const Snapshot& state);
    void ReadChanges(const Snapshot& from, const Snapshot& to);
    void ReadSync(const Step& step);

    std::map<std::string, int> fNumbers;
    std::vector<std::map<std::string, Node>> fNames; // of files, after so many steps
    std::map<Node, File> fFiles;                     // and folders
    std::vector<size_t> fFloors[2];                  // after so many steps
    std::vector<bool> fChanges[2];                   // by step
};
