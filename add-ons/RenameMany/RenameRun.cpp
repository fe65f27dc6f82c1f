#include "RenameMany/RenameRun.h"

#include <Entry.h>

#include <algorithm>
#include <unordered_map>
#include <unordered_set>

namespace rename_many {

namespace {

/// Takes all back that can be; what an entry is called meanwhile decides what can.
void TakeBack(NameChanger& changer, Outcome* outcome)
{
    std::unordered_set<size_t> lost; // stuck or gone: what comes before is not to be taken back
    Steps kept;
    for (const Step& back : Reversed(outcome->done)) {
        if (lost.count(back.entry) != 0) {
            kept.push_back(back);
            continue;
        }
        const status_t status = changer.Rename(back.folder, back.from, back.to);
        if (status == B_OK) {
            continue;
        }
        lost.insert(back.entry);
        if (status == B_ENTRY_NOT_FOUND) {
            outcome->gone.push_back(back.entry);
        } else {
            kept.push_back(back);
            outcome->stuck.push_back({back.entry, back.to, back.from, status});
        }
    }
    // The name that is wanted is the one from before the first step.
    std::unordered_map<size_t, const std::string*> first;
    for (const Step& step : outcome->done) {
        first.emplace(step.entry, &step.from);
    }
    for (Outcome::Stuck& one : outcome->stuck) {
        one.wanted = *first[one.entry];
    }
    outcome->done = Reversed(kept);
}

} // namespace

status_t DiskChanger::Rename(uint32 folder, const std::string& from, const std::string& to)
{
    entry_ref ref = fFolders[folder];
    status_t status = ref.set_name(from.c_str());
    if (status != B_OK) {
        return status;
    }
    BEntry entry(&ref);
    status = entry.InitCheck() == B_OK ? entry.Rename(to.c_str()) : entry.InitCheck();
    // A Trash may choose another name, which is not what was asked for.
    if (status == B_OK && to != entry.Name()) {
        const status_t back = entry.Rename(from.c_str());
        return back == B_OK ? status_t(B_FILE_EXISTS) : back;
    }
    return status;
}

Outcome TakeSteps(const Steps& steps, NameChanger& changer, const std::atomic<bool>& isStopped,
                  std::atomic<size_t>* count)
{
    Outcome outcome;
    std::unordered_set<size_t> gone;
    outcome.done.reserve(steps.size());
    for (const Step& step : steps) {
        if (gone.count(step.entry) != 0) {
            continue;
        }
        const status_t status =
            isStopped ? status_t(B_CANCELED) : changer.Rename(step.folder, step.from, step.to);
        if (status == B_ENTRY_NOT_FOUND) {
            gone.insert(step.entry);
            outcome.gone.push_back(step.entry);
            continue;
        }
        if (status != B_OK) {
            outcome.status = status;
            outcome.failed = step;
            TakeBack(changer, &outcome);
            break;
        }
        outcome.done.push_back(step);
        ++*count;
    }
    return outcome;
}

} // namespace rename_many
