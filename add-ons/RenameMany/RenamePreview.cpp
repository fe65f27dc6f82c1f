#include "RenameMany/RenamePreview.h"

#include <Errors.h>
#include <LetterCase.h>

#include <algorithm>
#include <functional>
#include <string_view>
#include <unordered_map>
#include <utility>

namespace rename_many {

namespace {

constexpr size_t kMostNameBytes = 255;
constexpr size_t kStopInterval = 1000;

/// A name's key within a folder.
struct PlacedKey
{
    uint32 folder;
    std::string_view key;

    bool operator==(const PlacedKey& other) const = default;
};

struct HashOfKey
{
    size_t operator()(const PlacedKey& key) const
    {
        return std::hash<std::string_view>()(key.key) ^ (size_t(key.folder) * 0x9e3779b97f4a7c15u);
    }
};

using Places = std::unordered_map<PlacedKey, size_t, HashOfKey>;

/// The keys of names: the names themselves where the folder does not fold them.
class Keys
{
public:
    Keys(const std::vector<FolderNames>& folders, size_t count) : fFolders(folders)
    {
        const bool folds = std::any_of(folders.begin(), folders.end(),
                                       [](const FolderNames& one) { return one.foldsCase; });
        fFolded.resize(folds ? count : 0);
    }

    /// Lent as long as this object and the name stay.
    PlacedKey Of(size_t place, uint32 folder, const std::string& name)
    {
        if (!fFolders[folder].foldsCase) {
            return {folder, name};
        }
        fFolded[place] = KeyOf(fFolders[folder], name);
        return {folder, fFolded[place]};
    }

private:
    const std::vector<FolderNames>& fFolders;
    std::vector<std::string> fFolded;
};

Fault FaultOf(const std::string& name)
{
    if (name.empty()) {
        return Fault::kEmpty;
    }
    if (name == "." || name == "..") {
        return Fault::kDots;
    }
    if (name.find('/') != std::string::npos) {
        return Fault::kSlash;
    }
    return name.size() > kMostNameBytes ? Fault::kTooLong : Fault::kNone;
}

/// Makes the names; false when it was stopped.
bool FillNames(const Rules& rules, const std::atomic<bool>& isStopped, Preview* preview)
{
    const Entries& entries = *preview->entries;
    const NewNames maker(rules);
    preview->error = maker.Error();
    for (size_t place = 0; place < entries.size(); place++) {
        if (place % kStopInterval == 0 && isStopped) {
            return false;
        }
        preview->names[place] = entries[place].name;
        if (!preview->error.empty() || entries[place].isGone) {
            continue;
        }
        if (maker.Make(entries[place], place, &preview->names[place]) == B_BUSY) {
            preview->error = "it takes too long to be looked for";
        }
    }
    return true;
}

/// Finds names that are there already, or would be there twice.
void FindClashes(const std::vector<FolderNames>& folders, Preview* preview)
{
    const Entries& entries = *preview->entries;
    Keys oldKeys(folders, entries.size());
    Keys newKeys(folders, entries.size());
    Places oldPlaces(entries.size());
    Places newPlaces(entries.size());
    for (size_t place = 0; place < entries.size(); place++) {
        const Entry& entry = entries[place];
        if (!entry.isGone) {
            oldPlaces.emplace(oldKeys.Of(place, entry.folder, entry.name), place);
        }
    }
    for (size_t place = 0; place < entries.size(); place++) {
        if (entries[place].isGone || preview->faults[place] != Fault::kNone) {
            continue;
        }
        const uint32 folder = entries[place].folder;
        const PlacedKey key = newKeys.Of(place, folder, preview->names[place]);
        const auto [first, isNew] = newPlaces.emplace(key, place);
        if (!isNew) {
            preview->faults[place] = Fault::kTwice;
            preview->faults[first->second] = Fault::kTwice;
        } else if (oldPlaces.find(key) == oldPlaces.end() &&
                   folders[folder].keys.find(std::string(key.key)) != folders[folder].keys.end()) {
            preview->faults[place] = Fault::kTaken;
        }
    }
}

void Count(Preview* preview)
{
    const Entries& entries = *preview->entries;
    for (size_t place = 0; place < entries.size(); place++) {
        preview->gone += entries[place].isGone ? 1 : 0;
        preview->changed += preview->names[place] != entries[place].name ? 1 : 0;
        preview->bad += preview->faults[place] != Fault::kNone ? 1 : 0;
    }
}

} // namespace

std::string KeyOf(const FolderNames& folder, const std::string& name)
{
    return folder.foldsCase ? to_lower_case(name) : name;
}

std::shared_ptr<const Preview> MakePreview(std::shared_ptr<const Entries> entries,
                                           const std::vector<FolderNames>& folders,
                                           const Rules& rules, const std::atomic<bool>& isStopped)
{
    auto preview = std::make_shared<Preview>();
    const size_t count = entries->size();
    preview->entries = std::move(entries);
    preview->names.resize(count);
    preview->faults.resize(count, Fault::kNone);
    if (!FillNames(rules, isStopped, preview.get())) {
        return nullptr;
    }
    if (preview->error.empty()) {
        for (size_t place = 0; place < count; place++) {
            // One that stays as it is cannot be wrong, whatever another system named it.
            if (preview->names[place] != (*preview->entries)[place].name) {
                preview->faults[place] = FaultOf(preview->names[place]);
            }
        }
        FindClashes(folders, preview.get());
    }
    Count(preview.get());
    return preview;
}

} // namespace rename_many
