#include "IconKinds.h"

#include "kernel/Mutex.h"
#include "storage/MimeDatabase.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <functional>
#include <iterator>
#include <map>
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

IconKind KindOfType(std::string_view type)
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

const IconLook* LookOfName(const char* name)
{
    static Mutex mutex;
    using Known = std::unordered_map<std::string, const IconLook*>;
    static Known& known GUARDED_BY(mutex) = *new Known; // never destroyed: see LookOfType()
    const std::string part = DecidingPart(name);
    {
        const MutexLock lock(mutex);
        const auto found = known.find(part);
        if (found != known.end()) {
            return found->second;
        }
    }
    const IconLook* look = LookOfType(MimeTypeOfName(name));
    const MutexLock lock(mutex);
    if (known.size() >= kKeptSuffixes) {
        known.clear();
    }
    known.emplace(part, look);
    return look;
}

} // namespace

const IconLook* LookOfType(std::string_view type)
{
    // The database has a bounded number of types; strange ones share the look of none.
    static Mutex mutex;
    // Never destroyed: threads that nobody waits for may ask when main() has ended.
    using Looks = std::map<std::string, IconLook, std::less<>>;
    static Looks& looks GUARDED_BY(mutex) = *new Looks;
    {
        const MutexLock lock(mutex);
        const auto found = looks.find(type);
        if (found != looks.end()) {
            return &found->second;
        }
    }
    const std::string name(type);
    const TypeIconNames names = IconNamesOfType(name);
    const IconKind kind = KindOfType(type);
    if (names.own.empty()) {
        return LookOfKind(kind);
    }
    const MutexLock lock(mutex);
    return &looks.emplace(name, IconLook{kind, names.own, names.generic}).first->second;
}

const IconLook* LookOfKind(IconKind kind)
{
    static const auto looks = [] {
        std::array<IconLook, kIconKinds> made;
        for (size_t i = 0; i < made.size(); ++i) {
            made[i].kind = static_cast<IconKind>(i);
        }
        return made;
    }();
    return &looks[static_cast<size_t>(kind)];
}

const IconLook* LookOfEntry(const char* name, mode_t mode)
{
    switch (mode & S_IFMT) {
    case S_IFDIR:
        return LookOfKind(IconKind::kFolder);
    case S_IFLNK:
        return LookOfKind(IconKind::kLink);
    case S_IFBLK:
        return LookOfKind(IconKind::kDisk);
    case S_IFREG:
        break;
    default:
        return LookOfKind(IconKind::kGeneric);
    }
    const IconLook* look = LookOfName(name);
    const bool mayBeRun = (mode & 0111) != 0;
    return look->kind == IconKind::kGeneric && mayBeRun ? LookOfKind(IconKind::kProgram) : look;
}

} // namespace kits
