#include "PanelMemory.h"

#include <Entry.h>
#include <File.h>
#include <FindDirectory.h>
#include <Path.h>

#include <limits.h>
#include <unistd.h>

namespace kits {

namespace {

constexpr char kName[] = "file_panel_folder";

bool FindMemory(BPath* path)
{
    return find_directory(B_USER_SETTINGS_DIRECTORY, path) == B_OK && path->Append(kName) == B_OK;
}

} // namespace

std::string LastPanelFolder()
{
    BPath path;
    BFile file;
    char text[PATH_MAX + 1];
    if (!FindMemory(&path) || file.SetTo(path.Path(), B_READ_ONLY) != B_OK) {
        return {};
    }
    const ssize_t length = file.ReadAt(0, text, sizeof(text));
    const std::string folder(text, length > 0 ? static_cast<size_t>(length) : 0);
    const bool isPath = folder.starts_with('/') && folder.size() < PATH_MAX &&
                        folder.find('\0') == std::string::npos;
    return isPath ? folder : std::string();
}

// Beside it first: whoever reads meanwhile finds one whole path or the other.
void KeepPanelFolder(const std::string& path)
{
    BPath memory;
    if (!FindMemory(&memory)) {
        return;
    }
    const std::string beside = std::string(memory.Path()) + "." + std::to_string(getpid());
    BFile file;
    if (file.SetTo(beside.c_str(), B_WRITE_ONLY | B_CREATE_FILE | B_ERASE_FILE) != B_OK) {
        return;
    }
    file.SetPermissions(0600);
    BEntry made(beside.c_str());
    const bool isWritten =
        file.WriteAt(0, path.data(), path.size()) == static_cast<ssize_t>(path.size());
    if (!isWritten || made.Rename(memory.Path(), true) != B_OK) {
        made.Remove();
    }
}

} // namespace kits
