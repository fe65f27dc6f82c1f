#include "Places.h"

namespace {

std::string FolderOf(const std::string& path)
{
    return path.substr(0, path.rfind('/'));
}

/// `path` with its start `from` exchanged for `to`; false when it does not lie there.
bool Exchange(std::string* path, const std::string& from, const std::string& to)
{
    if (to.empty() || !IsAtOrBelow(*path, from)) {
        return false;
    }
    *path = to + path->substr(from.size());
    return true;
}

} // namespace

std::string LeafOf(const std::string& path)
{
    return path.substr(path.rfind('/') + 1);
}

bool IsHidden(const std::string& path)
{
    return path.find(std::string("/") + kBeside) != std::string::npos;
}

bool IsAtOrBelow(const std::string& path, const std::string& folder)
{
    return !folder.empty() && (path == folder || path.starts_with(folder + "/"));
}

Places::Places(const Task& task, bool isLarge)
    : item(task.source), itemFolder(FolderOf(task.source)), isFolder(!isLarge)
{
    const bool goesToTrash = task.kind == Task::kTrash;
    if (goesToTrash || !task.target.empty()) {
        targetFolder = goesToTrash ? std::string(kHomeTrash) + "/files" : task.target;
        target = targetFolder + "/" + LeafOf(item);
    }
}

bool Places::IsOfSource(const std::string& path) const
{
    return IsAtOrBelow(Before(path), item);
}

bool Places::IsOfTarget(const std::string& path) const
{
    return HasTarget() && !IsOfSource(path) && IsAtOrBelow(Before(path), targetFolder);
}

std::string Places::Before(const std::string& path) const
{
    std::string before = path;
    // The operation deletes the item under a hidden name beside its place.
    const size_t below = path.find('/', itemFolder.size() + 1);
    if (path.starts_with(itemFolder + "/" + kBeside)) {
        return below == std::string::npos ? item : item + path.substr(below);
    }
    // What was moved aside from inside the item lies beside it.
    if (!Exchange(&before, item + kAside, item) &&
        !Exchange(&before, itemFolder + "/sub" + kAside, item + "/sub") &&
        !Exchange(&before, target + kAside, target)) {
        Exchange(&before, itemFolder + kAside, itemFolder);
        Exchange(&before, targetFolder + kAside, targetFolder);
    }
    // In a Trash its name can be taken.
    Exchange(&before, target + " copy", target);
    return before;
}
