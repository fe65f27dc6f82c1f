#include "OwnCommand.h"

#include "Terminal.h"

#include <StorageDefs.h>

#include <algorithm>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace kits {

namespace {

std::string LastName(const std::string& path)
{
    return path.substr(path.rfind('/') + 1);
}

/// The name of the program's file, also after it was replaced.
std::string NameOfOwnProgram()
{
    char path[B_PATH_NAME_LENGTH];
    const ssize_t length = ::readlink("/proc/self/exe", path, sizeof(path));
    std::string name(path, length > 0 ? static_cast<size_t>(length) : 0);
    constexpr std::string_view kReplaced = " (deleted)";
    if (name.ends_with(kReplaced)) {
        name.resize(name.size() - kReplaced.size());
    }
    return LastName(name);
}

bool IsOwnFile(const std::string& program)
{
    struct stat own;
    struct stat other;
    const std::string path = FindProgram(program);
    return !path.empty() && ::stat("/proc/self/exe", &own) == 0 &&
           ::stat(path.c_str(), &other) == 0 && own.st_dev == other.st_dev &&
           own.st_ino == other.st_ino;
}

} // namespace

bool IsOwnCommand(const std::string& command)
{
    const std::vector<std::string> words = WordsOf(command);
    const std::string own = NameOfOwnProgram();
    return !words.empty() && (IsOwnFile(words[0]) ||
                              std::any_of(words.begin(), words.end(), [&](const std::string& word) {
                                  return LastName(word) == own;
                              }));
}

} // namespace kits
