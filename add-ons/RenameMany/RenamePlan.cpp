#include "RenameMany/RenamePlan.h"

#include <Errors.h>

#include <algorithm>
#include <unordered_map>
#include <unordered_set>
#include <utility>

namespace rename_many {

namespace {

constexpr std::string_view kPrefix = ".renaming-";
constexpr size_t kMostNameBytes = 255;
constexpr size_t kNobody = SIZE_MAX;
constexpr int32 kMostNumbers = 10'000;

std::string Placed(uint32 folder, const std::string& key)
{
    return std::to_string(folder) + '/' + key;
}

class Planner
{
public:
    Planner(const Preview& preview, const std::vector<FolderNames>& folders)
        : fPreview(preview), fEntries(*preview.entries), fFolders(folders),
          fOwners(preview.names.size(), kNobody), fIsDone(preview.names.size(), false)
    {
    }

    status_t Make(Steps* steps)
    {
        FindOwners();
        AddChains();
        for (size_t place = 0; place < fOwners.size(); place++) {
            if (IsRenamed(place) && !fIsDone[place] && !AddCircle(place)) {
                return B_NAME_TOO_LONG;
            }
        }
        *steps = std::move(fSteps);
        return B_OK;
    }

private:
    bool IsRenamed(size_t place) const { return fPreview.names[place] != fEntries[place].name; }

    std::string KeyAt(size_t place, const std::string& name) const
    {
        const uint32 folder = fEntries[place].folder;
        return Placed(folder, KeyOf(fFolders[folder], name));
    }

    // Whom each entry waits for: the renamed one that has its new name now, itself where letters
    // are folded and it only gets other ones.
    void FindOwners()
    {
        std::unordered_map<std::string, size_t> places;
        for (size_t place = 0; place < fOwners.size(); place++) {
            if (IsRenamed(place)) {
                places.emplace(KeyAt(place, fEntries[place].name), place);
            }
        }
        for (size_t place = 0; place < fOwners.size(); place++) {
            if (IsRenamed(place)) {
                std::string wanted = KeyAt(place, fPreview.names[place]);
                const auto owner = places.find(wanted);
                fOwners[place] = owner != places.end() ? owner->second : kNobody;
                fWanted.insert(std::move(wanted));
            }
        }
    }

    // Each name has one owner and one who waits for it at most: so what is no circle is a line,
    // which begins with the one whose new name is free.
    void AddChains()
    {
        std::vector<size_t> waiting(fOwners.size(), kNobody);
        for (size_t place = 0; place < fOwners.size(); place++) {
            if (fOwners[place] != kNobody) {
                waiting[fOwners[place]] = place;
            }
        }
        for (size_t place = 0; place < fOwners.size(); place++) {
            if (!IsRenamed(place) || fOwners[place] != kNobody) {
                continue;
            }
            for (size_t next = place; next != kNobody; next = waiting[next]) {
                Add(next, fEntries[next].name, fPreview.names[next]);
                fIsDone[next] = true;
            }
        }
    }

    // False when no name of the circle leaves room for a temporary one.
    bool AddCircle(size_t first)
    {
        std::vector<size_t> circle; // each waits for the one behind it
        size_t shortest = 0;
        for (size_t place = first; !fIsDone[place]; place = fOwners[place]) {
            fIsDone[place] = true;
            circle.push_back(place);
            if (fEntries[place].name.size() < fEntries[circle[shortest]].name.size()) {
                shortest = circle.size() - 1;
            }
        }
        std::rotate(circle.begin(), circle.begin() + static_cast<ptrdiff_t>(shortest),
                    circle.end());
        const size_t aside = circle.front();
        const std::string temporary = FreeTemporaryName(aside);
        if (temporary.empty()) {
            return false;
        }
        // The one that waits for the name that is free now, then the one that waits for that one's.
        Add(aside, fEntries[aside].name, temporary);
        for (size_t place = circle.size(); place-- > 1;) {
            Add(circle[place], fEntries[circle[place]].name, fPreview.names[circle[place]]);
        }
        Add(aside, temporary, fPreview.names[aside]);
        return true;
    }

    std::string FreeTemporaryName(size_t place) const
    {
        const FolderNames& folder = fFolders[fEntries[place].folder];
        for (int32 number = 1; number < kMostNumbers; number++) {
            std::string name = TemporaryName(fEntries[place].name, number);
            if (name.size() > kMostNameBytes) {
                break;
            }
            if (folder.keys.find(KeyOf(folder, name)) == folder.keys.end() &&
                fWanted.find(KeyAt(place, name)) == fWanted.end()) {
                return name;
            }
        }
        return {};
    }

    void Add(size_t place, const std::string& from, const std::string& to)
    {
        fSteps.push_back({place, fEntries[place].folder, from, to});
    }

    const Preview& fPreview;
    const Entries& fEntries;
    const std::vector<FolderNames>& fFolders;
    std::vector<size_t> fOwners; // by place
    std::vector<bool> fIsDone;
    std::unordered_set<std::string> fWanted; // the new names
    Steps fSteps;
};

} // namespace

std::string TemporaryName(const std::string& name, int32 number)
{
    return std::string(kPrefix) + std::to_string(number) + '-' + name;
}

std::optional<std::string> OriginalName(std::string_view temporaryName)
{
    if (temporaryName.substr(0, kPrefix.size()) != kPrefix) {
        return std::nullopt;
    }
    const std::string_view rest = temporaryName.substr(kPrefix.size());
    const size_t digits = rest.find_first_not_of("0123456789");
    if (digits == 0 || digits == std::string_view::npos || rest[digits] != '-' ||
        digits + 1 == rest.size()) {
        return std::nullopt;
    }
    return std::string(rest.substr(digits + 1));
}

status_t MakePlan(const Preview& preview, const std::vector<FolderNames>& folders, Steps* steps)
{
    steps->clear();
    if (preview.bad > 0 || !preview.error.empty()) {
        return B_BAD_VALUE;
    }
    return Planner(preview, folders).Make(steps);
}

Steps Reversed(const Steps& steps)
{
    Steps reversed(steps.rbegin(), steps.rend());
    for (Step& step : reversed) {
        std::swap(step.from, step.to);
    }
    return reversed;
}

} // namespace rename_many
