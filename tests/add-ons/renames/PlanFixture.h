#pragma once

#include "RenameMany/RenamePlan.h"
#include "RenameMany/RenameRun.h"

#include <Errors.h>

#include <atomic>
#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace rename_many {

/// A folder that is only thought of: each name and what it holds. It may fold letters' case.
class ModelFolder : public NameChanger
{
public:
    explicit ModelFolder(bool foldsCase = false) { fNames.foldsCase = foldsCase; }

    void Add(const std::string& name) { fContents[KeyOf(fNames, name)] = {name, name}; }
    /// What is called so; "" for nothing.
    std::string At(const std::string& name) const
    {
        const auto found = fContents.find(KeyOf(fNames, name));
        return found != fContents.end() ? found->second.second : "";
    }
    /// The names in their order, each with what it holds.
    std::string All() const
    {
        std::string all;
        for (const auto& [key, one] : fContents) {
            all += one.first + "=" + one.second + " ";
        }
        return all;
    }
    std::vector<FolderNames> Known() const
    {
        FolderNames known = fNames;
        for (const auto& [key, one] : fContents) {
            known.keys.insert(key);
        }
        return {known};
    }
    void Remove(const std::string& name) { fContents.erase(KeyOf(fNames, name)); }
    size_t Count() const { return fContents.size(); }
    /// Called before each renaming, with its number.
    std::function<void(int)> before;
    /// What happens in place of the n-th renaming.
    std::map<int, status_t> failures;

    // NameChanger
    status_t Rename(uint32 /*folder*/, const std::string& from, const std::string& to) override
    {
        const int number = fCalls++;
        if (before) {
            before(number);
        }
        const auto failure = failures.find(number);
        if (failure != failures.end()) {
            return failure->second;
        }
        const auto found = fContents.find(KeyOf(fNames, from));
        if (found == fContents.end()) {
            return B_ENTRY_NOT_FOUND;
        }
        if (fContents.find(KeyOf(fNames, to)) != fContents.end()) {
            return B_FILE_EXISTS;
        }
        const std::string content = found->second.second;
        fContents.erase(found);
        fContents[KeyOf(fNames, to)] = {to, content};
        return B_OK;
    }

private:
    FolderNames fNames; // without keys
    std::map<std::string, std::pair<std::string, std::string>> fContents;
    int fCalls = 0;
};

/// What renames the first name of each pair to the second.
inline Preview PreviewOf(const std::vector<std::pair<std::string, std::string>>& names)
{
    auto entries = std::make_shared<Entries>();
    Preview preview;
    for (const auto& [from, to] : names) {
        Entry entry;
        entry.name = from;
        entries->push_back(entry);
        preview.names.push_back(to);
        preview.changed += from != to ? 1 : 0;
    }
    preview.faults.resize(names.size(), Fault::kNone);
    preview.entries = std::move(entries);
    return preview;
}

/// Plans and does it.
inline Outcome Perform(const Preview& preview, ModelFolder& folder)
{
    Steps steps;
    Outcome outcome;
    outcome.status = MakePlan(preview, folder.Known(), &steps);
    if (outcome.status != B_OK) {
        return outcome;
    }
    const std::atomic<bool> isStopped = false;
    std::atomic<size_t> count = 0;
    return TakeSteps(steps, folder, isStopped, &count);
}

} // namespace rename_many
