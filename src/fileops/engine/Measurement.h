#pragma once

#include <EntryRef.h>
#include <SupportDefs.h>

#include <sys/stat.h>

#include <functional>
#include <memory>
#include <vector>

class BTreeHooks;

namespace norvane {

class OperationUI;
class PatientWork;

/// How much an operation has to do, and what its items were when it was found out: in the moment
/// in which the operation asks, or from before on, while its window is opening.
class Measurement
{
public:
    enum class Keep : uint8 {
        kSizes,
        kRecords, // of the items, too
    };

    /// `items` is called once, by the thread that measures; it owns what it uses.
    Measurement(std::function<std::vector<entry_ref>()> items, Keep keep);
    /// What is still under way ends by itself.
    ~Measurement();
    Measurement(const Measurement&) = delete;
    Measurement& operator=(const Measurement&) = delete;

    /// Begins on a thread of its own. Thread: any.
    void Start();
    /// Returns when all is measured; when the operation is stopped before, with nothing known.
    /// Thread: the operation's, as of all that follows.
    void Finish(OperationUI& ui);

    bool KeepsRecords() const { return fKeep == Keep::kRecords; }
    int64 TotalBytes() const;
    /// How many entries there are below the items.
    int64 CountEntries() const;
    /// 0 for an item that is not known.
    int64 BytesOf(size_t index) const;
    /// What it was by its name alone: something else may be there by now.
    bool WasFile(size_t index) const;
    /// What it was; a mode of 0: it could not be looked at.
    struct stat RecordOf(size_t index) const;
    /// Whether its volume keeps the numbers of nodes.
    bool HasStableNode(size_t index) const;

private:
    struct Found;

    static void Measure(Found& found, Keep keep, const BTreeHooks* steering);

    const Keep fKeep;
    std::shared_ptr<Found> fFound;      // the thread's until Finish()
    std::unique_ptr<PatientWork> fWork; // null while nothing was begun
};

} // namespace norvane
