#include "FolderPath.h"

#include "FolderListing.h"
#include "SystemCalls.h"

#include <climits>
#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <vector>

namespace kits {

namespace {

bool IsSame(const struct stat& a, const struct stat& b)
{
    return a.st_dev == b.st_dev && a.st_ino == b.st_ino;
}

bool LeadsTo(const std::string& path, int folder)
{
    const UniqueFd found(OpenPath(sys::kWorkingDirectory, path, O_PATH | O_DIRECTORY | O_NOFOLLOW));
    struct stat there;
    struct stat here;
    return found.IsOpen() && sys::Stat(found.Get(), &there) == B_OK &&
           sys::Stat(folder, &here) == B_OK && IsSame(there, here);
}

/// The listing calls a mount point by the number of what it covers.
bool IsNameOf(const FolderListing::Item& item, bool byNumber, int parent, const struct stat& child)
{
    if (item.kind != DT_DIR && item.kind != DT_UNKNOWN) {
        return false;
    }
    struct stat st;
    return (!byNumber || item.node == child.st_ino) &&
           sys::StatAt(parent, item.name, &st) == B_OK && IsSame(st, child);
}

} // namespace

int OpenPath(int base, const std::string& path, int flags, mode_t mode)
{
    if (path.size() < PATH_MAX) {
        return sys::OpenAt(base, path.c_str(), flags, mode);
    }
    // Longer than the system takes at once: in pieces, each cut at a slash.
    UniqueFd reached;
    size_t start = 0;
    while (path.size() - start >= PATH_MAX) {
        const size_t slash = path.rfind('/', start + PATH_MAX - 2);
        if (slash == std::string::npos || slash <= start) {
            return B_NAME_TOO_LONG;
        }
        const std::string piece = path.substr(start, slash - start);
        reached = UniqueFd(sys::OpenAt(reached.IsOpen() ? reached.Get() : base, piece.c_str(),
                                       O_PATH | O_DIRECTORY));
        if (!reached.IsOpen()) {
            return reached.Get();
        }
        start = path.find_first_not_of('/', slash);
        if (start == std::string::npos) {
            start = path.size();
        }
    }
    const std::string rest = start < path.size() ? path.substr(start) : ".";
    return sys::OpenAt(reached.IsOpen() ? reached.Get() : base, rest.c_str(), flags, mode);
}

status_t FindInParent(int folder, UniqueFd* parent, std::string* name)
{
    UniqueFd above(sys::OpenAt(folder, "..", O_RDONLY | O_DIRECTORY | O_NONBLOCK));
    if (!above.IsOpen()) {
        return above.Get();
    }
    struct stat st;
    FolderListing listing;
    status_t status = sys::Stat(folder, &st);
    if (status == B_OK) {
        status = listing.Read(above.Get());
    }
    if (status != B_OK) {
        return status;
    }
    for (const bool byNumber : {true, false}) {
        for (const FolderListing::Item& item : listing.Items()) {
            if (IsNameOf(item, byNumber, above.Get(), st)) {
                *name = item.name;
                *parent = std::move(above);
                return B_OK;
            }
        }
    }
    return B_ENTRY_NOT_FOUND;
}

status_t WholePathOf(int folder, const KnownPath& known, std::string* path)
{
    std::string top;
    std::vector<std::string> names; // the last one first
    UniqueFd reached;
    int at = folder;
    status_t status = sys::PathOf(at, &top);
    while (status == B_NAME_TOO_LONG) {
        UniqueFd parent;
        std::string name;
        const status_t found = FindInParent(at, &parent, &name);
        if (found != B_OK) {
            return found;
        }
        names.push_back(std::move(name));
        reached = std::move(parent);
        at = reached.Get();
        const bool isKnown = known && known(at, &top) && LeadsTo(top, at);
        status = isKnown ? B_OK : sys::PathOf(at, &top);
    }
    if (status != B_OK) {
        return status;
    }
    for (; !names.empty(); names.pop_back()) {
        if (top.back() != '/') {
            top += '/';
        }
        top += names.back();
    }
    *path = std::move(top);
    return B_OK;
}

} // namespace kits
