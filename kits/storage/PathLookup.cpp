#include "PathLookup.h"

#include "FixedPrograms.h"

#include <algorithm>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <pwd.h>
#include <unistd.h>
#include <vector>

namespace kits {

namespace {

constexpr const char* kPlatformHome = "/boot/home";

/// Splits a path without trailing slashes at its last slash.
void Split(const std::string& path, std::string* folder, std::string* leaf)
{
    const size_t slash = path.rfind('/');
    if (slash == std::string::npos) {
        folder->clear();
        *leaf = path;
        return;
    }
    *folder = slash == 0 ? "/" : path.substr(0, slash);
    *leaf = path.substr(slash + 1);
}

status_t KnowFolder(int folder, FolderHold* hold)
{
    *hold = FolderTable::Get().Know(folder);
    if (!*hold) {
        return B_IO_ERROR; // it is open as a folder, so what cannot be is to look at it
    }
    return B_OK;
}

status_t OpenFolderAt(int base, const std::string& path, FolderHold* hold)
{
    const UniqueFd folder(OpenPath(base, path, O_PATH | O_DIRECTORY));
    if (!folder.IsOpen()) {
        return folder.Get();
    }
    return KnowFolder(folder.Get(), hold);
}

/// One round: the place of the path's last step, which is looked at no further.
status_t LookUpStep(const FolderHold& base, std::string path, Place* place)
{
    const bool isAbsolute = path.front() == '/';
    while (path.size() > 1 && path.back() == '/') {
        path.pop_back();
    }
    OpenFolder from;
    if (!isAbsolute && base) {
        const status_t status = FolderTable::Get().Open(base, &from);
        if (status != B_OK) {
            return status;
        }
    }
    const int start = from == nullptr ? sys::kWorkingDirectory : from->Get();
    std::string folderPath;
    std::string leaf;
    Split(path, &folderPath, &leaf);
    if (leaf.empty() || leaf == "." || leaf == "..") {
        const UniqueFd folder(OpenPath(start, path, O_PATH | O_DIRECTORY));
        return folder.IsOpen() ? PlaceOfFolder(folder.Get(), place) : folder.Get();
    }
    if (leaf.size() > NAME_MAX) {
        return B_NAME_TOO_LONG;
    }
    if (folderPath.empty() && base) {
        place->folder = base;
    } else {
        const status_t status =
            OpenFolderAt(start, folderPath.empty() ? "." : folderPath, &place->folder);
        if (status != B_OK) {
            return status;
        }
    }
    place->name = std::move(leaf);
    return B_OK;
}

} // namespace

std::string HomeFolder()
{
    const char* home = std::getenv("HOME");
    if (home != nullptr && *home == '/') {
        return home;
    }
    char buffer[4096];
    struct passwd entry;
    struct passwd* found = nullptr;
    if (::getpwuid_r(::getuid(), &entry, buffer, sizeof(buffer), &found) == 0 && found != nullptr &&
        found->pw_dir != nullptr && found->pw_dir[0] == '/') {
        return found->pw_dir;
    }
    return "/";
}

status_t PlaceOfFolder(int folder, Place* place)
{
    std::string path;
    const status_t status = sys::PathOf(folder, &path);
    if (status == B_OK && path == "/") {
        place->name.assign(1, '.');
        return KnowFolder(folder, &place->folder);
    }
    if (status == B_NAME_TOO_LONG) { // deeper than the system tells
        UniqueFd parent;
        const status_t found = FindInParent(folder, &parent, &place->name);
        return found == B_OK ? KnowFolder(parent.Get(), &place->folder) : found;
    }
    if (status != B_OK) {
        return status;
    }
    const UniqueFd parent(sys::OpenAt(folder, "..", O_PATH | O_DIRECTORY));
    if (!parent.IsOpen()) {
        return parent.Get();
    }
    place->name = path.substr(path.rfind('/') + 1);
    return KnowFolder(parent.Get(), &place->folder);
}

status_t LookUp(const FolderHold& base, const char* path, LastLink lastLink, Place* place)
{
    if (path == nullptr || *path == '\0') {
        return B_BAD_VALUE;
    }
    if (PlaceOfFixedProgram(path, place)) {
        return B_OK;
    }
    FolderHold from = base;
    std::string text = SystemPath(path);
    for (int32 links = 0; links <= B_MAX_SYMLINKS; ++links) {
        Place found;
        status_t status = LookUpStep(from, text, &found);
        if (status != B_OK) {
            return status;
        }
        if (lastLink == LastLink::kFollowed) {
            OpenFolder open;
            status = FolderTable::Get().Open(found.folder, &open);
            if (status != B_OK) {
                return status;
            }
            status = sys::ReadLinkText(open->Get(), found.name.c_str(), &text);
        }
        // No link, or nothing there: the end of the way.
        if (lastLink == LastLink::kKept || status == B_BAD_VALUE || status == B_ENTRY_NOT_FOUND) {
            *place = std::move(found);
            return B_OK;
        }
        if (status != B_OK) {
            return status;
        }
        if (text.empty()) {
            return B_ENTRY_NOT_FOUND;
        }
        from = found.folder;
    }
    return B_LINK_LIMIT;
}

status_t LookUpFrom(const FolderHold& base, const char* path, LastLink lastLink, Place* place)
{
    return base ? LookUp(base, path, lastLink, place) : status_t(B_IO_ERROR);
}

std::string SystemPath(const char* path)
{
    const size_t length = std::strlen(kPlatformHome);
    if (std::strncmp(path, kPlatformHome, length) != 0 ||
        (path[length] != '\0' && path[length] != '/')) {
        return path;
    }
    // A machine that really has such a folder means that one.
    if (::access(kPlatformHome, F_OK) == 0) {
        return path;
    }
    return HomeFolder() + (path + length);
}

std::string NormalizedPath(const std::string& path)
{
    std::string result;
    result.reserve(path.size());
    size_t at = 0;
    while (at < path.size()) {
        const size_t end = std::min(path.find('/', at), path.size());
        const std::string_view step(path.data() + at, end - at);
        if (step == "..") {
            result.resize(result.empty() ? 0 : result.rfind('/'));
        } else if (!step.empty() && step != ".") {
            result += '/';
            result += step;
        }
        at = end + 1;
    }
    return result.empty() ? "/" : result;
}

} // namespace kits
