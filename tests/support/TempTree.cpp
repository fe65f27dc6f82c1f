#include "TempTree.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>
#include <system_error>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

[[noreturn]] void Give(const char* what, const std::string& path)
{
    std::fprintf(stderr, "temporary tree: %s %s: %s\n", what, path.c_str(), std::strerror(errno));
    std::abort();
}

} // namespace

TempTree::TempTree()
{
    std::string pattern = (fs::temp_directory_path() / "norvane-test-XXXXXX").string();
    if (::mkdtemp(pattern.data()) == nullptr) {
        Give("make", pattern);
    }
    fRoot = pattern;
}

TempTree::~TempTree()
{
    // A test may have taken rights away; its folder goes nevertheless.
    std::error_code ignored;
    for (fs::recursive_directory_iterator
             it(fRoot, fs::directory_options::skip_permission_denied, ignored),
         end;
         it != end; it.increment(ignored)) {
        if (it->is_directory(ignored) && !it->is_symlink(ignored)) {
            fs::permissions(it->path(), fs::perms::owner_all, fs::perm_options::add, ignored);
        }
    }
    fs::remove_all(fRoot, ignored);
}

std::string TempTree::Path(std::string_view name) const
{
    return name.empty() ? fRoot : fRoot + "/" + std::string(name);
}

void TempTree::MakeParent(const std::string& path) const
{
    std::error_code error;
    fs::create_directories(fs::path(path).parent_path(), error);
}

void TempTree::Write(std::string_view name, std::string_view contents)
{
    const std::string path = Path(name);
    MakeParent(path);
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    file.write(contents.data(), static_cast<std::streamsize>(contents.size()));
    file.close();
    if (!file) {
        Give("write", path);
    }
}

void TempTree::MakeFolder(std::string_view name)
{
    std::error_code error;
    fs::create_directories(Path(name), error);
    if (error) {
        Give("make folder", Path(name));
    }
}

void TempTree::Link(std::string_view name, std::string_view target)
{
    const std::string path = Path(name);
    MakeParent(path);
    if (::symlink(std::string(target).c_str(), path.c_str()) != 0) {
        Give("link", path);
    }
}

void TempTree::Remove(std::string_view name)
{
    std::error_code error;
    fs::remove_all(Path(name), error);
    if (error) {
        Give("remove", Path(name));
    }
}

std::string TempTree::Read(std::string_view name) const
{
    std::ifstream file(Path(name), std::ios::binary);
    if (!file) {
        return "(missing)";
    }
    std::ostringstream contents;
    contents << file.rdbuf();
    return contents.str();
}

std::string TempTree::ReadLink(std::string_view name) const
{
    std::error_code error;
    const fs::path target = fs::read_symlink(Path(name), error);
    return error ? "(no link)" : target.string();
}

bool TempTree::Exists(std::string_view name) const
{
    std::error_code error;
    return fs::symlink_status(Path(name), error).type() != fs::file_type::not_found && !error;
}

bool TempTree::IsFolder(std::string_view name) const
{
    std::error_code error;
    return fs::symlink_status(Path(name), error).type() == fs::file_type::directory;
}

std::string TempTree::List(std::string_view name) const
{
    std::set<std::string> names;
    std::error_code error;
    for (const fs::directory_entry& entry : fs::directory_iterator(Path(name), error)) {
        names.insert(entry.path().filename().string());
    }
    std::string text;
    for (const std::string& each : names) {
        text += each + "\n";
    }
    return text;
}
