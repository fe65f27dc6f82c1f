#include "Expected.h"

#include <algorithm>
#include <filesystem>
#include <sys/stat.h>
#include <utility>

Expected::Expected(std::string folder) : fFolder(std::move(folder))
{
    std::set<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(fFolder)) {
        names.insert(entry.path().filename().string());
    }
    for (const std::string& name : names) {
        Insert(name);
    }
}

bool Expected::IsFolder(const std::string& name) const
{
    struct stat st = {};
    return stat((fFolder + "/" + name).c_str(), &st) == 0 && !S_ISREG(st.st_mode);
}

int Expected::IndexOf(const std::string& name) const
{
    const auto found =
        std::find_if(fRows.begin(), fRows.end(), [&](const Row& row) { return row.name == name; });
    return found == fRows.end() ? -1 : static_cast<int>(found - fRows.begin());
}

void Expected::Insert(const std::string& name)
{
    const Row row{name, IsFolder(name)};
    const auto place = std::find_if(fRows.begin(), fRows.end(), [&](const Row& other) {
        return other.isFolder == row.isFolder ? other.name > row.name : row.isFolder;
    });
    fRows.insert(place, row);
}

void Expected::Remove(const std::string& name)
{
    fMovedIn.erase(name);
    const int index = IndexOf(name);
    if (index < 0) {
        return;
    }
    const bool wasSelected = fRows[static_cast<size_t>(index)].isSelected;
    fRows.erase(fRows.begin() + index);
    fHasLostSelection = fHasLostSelection || wasSelected;
    if (wasSelected && !fRows.empty()) {
        fRows[std::min(static_cast<size_t>(index), fRows.size() - 1)].isSelected = true;
    }
}

void Expected::Rename(const std::string& from, const std::string& to)
{
    const int source = IndexOf(from);
    const int target = IndexOf(to);
    if (target >= 0) {
        Remove(from);
        fRows[static_cast<size_t>(IndexOf(to))].isFolder = IsFolder(to);
    } else if (source >= 0) {
        fMovedIn.erase(to);
        fRows[static_cast<size_t>(source)].name = to;
        fRows[static_cast<size_t>(source)].isFolder = IsFolder(to);
    } else {
        fMovedIn.erase(from);
        fMovedIn.insert(to);
    }
}

/// A rename of one name of a node to another of its names does nothing.
bool Expected::IsOneNode(const Step& step) const
{
    struct stat first = {};
    struct stat second = {};
    return lstat((fFolder + "/" + step.name).c_str(), &first) == 0 &&
           lstat((fFolder + "/" + step.second).c_str(), &second) == 0 &&
           first.st_ino == second.st_ino && first.st_dev == second.st_dev;
}

bool Expected::Do(const Step& step, const std::string& outside)
{
    const bool isIdle = step.act == Act::kRename && IsOneNode(step);
    if (!::Do(step, fFolder, outside)) {
        return false;
    }
    switch (step.act) {
    case Act::kMakeFile:
    case Act::kMakeFolder:
    case Act::kMakeLink:
        Insert(step.name);
        break;
    case Act::kAddName:
        Insert(step.second);
        break;
    case Act::kRemove:
    case Act::kMoveOut:
        Remove(step.name);
        break;
    case Act::kRename:
        if (!isIdle) {
            Rename(step.name, step.second);
        }
        break;
    case Act::kExchange:
        for (const std::string& name : {step.name, step.second}) {
            if (const int index = IndexOf(name); index >= 0) {
                fRows[static_cast<size_t>(index)].isFolder = IsFolder(name);
            }
        }
        break;
    case Act::kMoveIn:
        if (const int index = IndexOf(step.name); index >= 0) {
            fRows[static_cast<size_t>(index)].isFolder = IsFolder(step.name);
        } else {
            fMovedIn.insert(step.name);
        }
        break;
    default:
        break;
    }
    return true;
}

void Expected::Activate()
{
    for (const std::string& name : std::exchange(fMovedIn, {})) {
        Insert(name);
    }
}
