#include "IconKinds.h"

#include "kernel/Mutex.h"
#include "storage/MimeDatabase.h"

#include <algorithm>
#include <cctype>
#include <iterator>
#include <string>
#include <unordered_map>

namespace kits {

namespace {

// More different endings than anyone's folders have; without a bound strange names would fill the
// memory.
constexpr size_t kKeptSuffixes = 4096;

constexpr std::string_view kArchiveWords[] = {
    "zip", "tar", "7z",   "rar",       "compress", "bzip",         "lzma",
    "lz4", "xz",  "zstd", "cpio",      "x-deb",    "debian",       "rpm",
    "arj", "lha", "cab",  "x-archive", "jar",      "java-archive",
};

constexpr std::string_view kTextWords[] = {
    "pdf",  "xml",        "json",   "postscript", "rtf",   "msword", "opendocument.text", "tex",
    "yaml", "javascript", "x-perl", "x-ruby",     "x-php", "sql",    "wordprocessing",    "epub",
};

constexpr std::string_view kProgramWords[] = {"x-executable", "x-pie-executable",    "x-sharedlib",
                                              "x-desktop",    "x-ms-dos-executable", "appimage"};

template<size_t count>
bool HasOneOf(std::string_view type, const std::string_view (&words)[count])
{
    return std::any_of(std::begin(words), std::end(words), [type](std::string_view word) {
        return type.find(word) != std::string_view::npos;
    });
}

/// The end of a name that decides its type: its last suffix, or all of it when it has none.
std::string DecidingPart(std::string_view name)
{
    const size_t dot = name.rfind('.');
    std::string part(dot == std::string_view::npos || dot == 0 ? name : name.substr(dot));
    std::transform(part.begin(), part.end(), part.begin(),
                   [](unsigned char letter) { return static_cast<char>(std::tolower(letter)); });
    return part;
}

IconKind KindOfName(const char* name)
{
    static Mutex mutex;
    static std::unordered_map<std::string, IconKind> known; // guarded by mutex
    const std::string part = DecidingPart(name);
    {
        const MutexLock lock(mutex);
        const auto found = known.find(part);
        if (found != known.end()) {
            return found->second;
        }
    }
    const IconKind kind = IconKindOfType(MimeTypeOfName(name));
    const MutexLock lock(mutex);
    if (known.size() >= kKeptSuffixes) {
        known.clear();
    }
    known.emplace(part, kind);
    return kind;
}

} // namespace

IconKind IconKindOfType(std::string_view type)
{
    if (type == "inode/directory") {
        return IconKind::kFolder;
    }
    if (type == "inode/symlink") {
        return IconKind::kLink;
    }
    if (type.starts_with("text/")) {
        return IconKind::kText;
    }
    if (type.starts_with("image/")) {
        return IconKind::kImage;
    }
    if (type.starts_with("audio/")) {
        return IconKind::kSound;
    }
    if (type.starts_with("video/")) {
        return IconKind::kVideo;
    }
    if (HasOneOf(type, kProgramWords)) {
        return IconKind::kProgram;
    }
    // Documents of today are archives of markup inside; their own names tell first.
    if (HasOneOf(type, kTextWords)) {
        return IconKind::kText;
    }
    return HasOneOf(type, kArchiveWords) ? IconKind::kArchive : IconKind::kGeneric;
}

IconKind IconKindOfEntry(const char* name, mode_t mode)
{
    switch (mode & S_IFMT) {
    case S_IFDIR:
        return IconKind::kFolder;
    case S_IFLNK:
        return IconKind::kLink;
    case S_IFBLK:
        return IconKind::kDisk;
    case S_IFREG:
        break;
    default:
        return IconKind::kGeneric;
    }
    const IconKind kind = KindOfName(name);
    const bool mayBeRun = (mode & 0111) != 0;
    return kind == IconKind::kGeneric && mayBeRun ? IconKind::kProgram : kind;
}

} // namespace kits
