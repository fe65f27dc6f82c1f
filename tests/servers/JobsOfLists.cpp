#include "Jobs.h"
#include "Visit.h"

#include <algorithm>
#include <ctime>
#include <fcntl.h>
#include <filesystem>
#include <map>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr time_t kDay = 24 * 60 * 60;

/// A file of that size, which takes no room, last changed so many days ago.
void MakeFile(const std::string& path, off_t size, int days)
{
    WriteFile(path, "");
    if (truncate(path.c_str(), size) != 0) {
        std::perror(path.c_str());
    }
    timespec times[2] = {};
    times[0].tv_sec = times[1].tv_sec = time(nullptr) - days * kDay - 3600;
    utimensat(AT_FDCWD, path.c_str(), times, AT_SYMLINK_NOFOLLOW);
}

std::string DateText(time_t when, const char* format)
{
    char text[64];
    tm parts;
    gmtime_r(&when, &parts);
    strftime(text, sizeof(text), format, &parts);
    return text;
}

/// With one blank between the fields, and days without a zero before them.
std::string Plain(const std::string& date)
{
    std::string plain;
    for (const char letter : date) {
        const bool isLeading = plain.empty() || plain.back() == ' ';
        if (!(isLeading && letter == ' ') && !(isLeading && letter == '0' && plain.size() == 4)) {
            plain += letter;
        }
    }
    return plain;
}

char KindOf(const struct stat& record)
{
    return S_ISDIR(record.st_mode) ? 'd' : S_ISLNK(record.st_mode) ? 'l' : '-';
}

void CheckEntry(Visit& visit, const std::string& name, const norvane::RemoteEntry& entry)
{
    struct stat record = {};
    visit.Check(lstat(visit.Path(name).c_str(), &record) == 0, name + " is not there");
    visit.Check(entry.permissions.substr(0, 1) == std::string(1, KindOf(record)),
                name + " is listed as " + entry.permissions);
    if (S_ISREG(record.st_mode)) {
        visit.Check(entry.size == std::to_string(record.st_size), name + " has " + entry.size);
    }
    if (S_ISLNK(record.st_mode)) {
        visit.Check(entry.name.rfind(name + " -> ", 0) == 0, "the link is " + entry.name);
    }
    const std::string date = Plain(entry.date);
    visit.Check(date == Plain(DateText(record.st_mtime, "%b %e %H:%M")) ||
                    date == Plain(DateText(record.st_mtime, "%b %e %Y")),
                name + " is listed with " + entry.date);
}

void CheckListing(Visit& visit, const std::vector<std::string>& names)
{
    std::vector<norvane::RemoteEntry> entries;
    if (!visit.CheckAgreed(visit.Folder().List(&entries), "listing")) {
        return;
    }
    std::map<std::string, norvane::RemoteEntry> listed;
    for (const norvane::RemoteEntry& entry : entries) {
        visit.Check(!entry.commandName.empty(), entry.name + " cannot be used");
        visit.Check(listed.emplace(entry.commandName, entry).second, entry.name + " comes twice");
    }
    visit.Check(listed.size() == names.size(),
                std::to_string(listed.size()) + " entries, not " + std::to_string(names.size()));
    for (const std::string& name : names) {
        const auto found = listed.find(name);
        if (visit.Check(found != listed.end(), name + " is not listed")) {
            CheckEntry(visit, name, found->second);
        }
    }
}

} // namespace

void ListKnown(Visit& visit)
{
    if (!visit.StartIn("known")) {
        return;
    }
    CheckListing(visit, {});
    MakeFile(visit.Path("empty"), 0, 1);
    MakeFile(visit.Path("one byte"), 1, 30);
    MakeFile(visit.Path("a megabyte"), 1 << 20, 150);
    MakeFile(visit.Path("large"), off_t{5} << 30, 200);
    MakeFile(visit.Path("old"), 12345, 4000);
    MakeFile(visit.Path("gr\xc3\xbc\xc3\x9f"), 77, 2);
    MakeFile(visit.Path("runs"), 7, 3);
    std::filesystem::permissions(visit.Path("runs"), std::filesystem::perms{0755});
    MakeFile(visit.Path("private"), 8, 3);
    std::filesystem::permissions(visit.Path("private"), std::filesystem::perms{0600});
    std::filesystem::create_directories(visit.Path("folder/below/more"));
    std::filesystem::create_directory(visit.Path("folder of two words"));
    std::filesystem::permissions(visit.Path("folder"), std::filesystem::perms{01777});
    std::filesystem::create_symlink("empty", visit.Path("link"));
    std::filesystem::create_symlink("folder", visit.Path("link to a folder"));
    std::filesystem::create_symlink("nothing", visit.Path("broken link"));
    CheckListing(visit, {"empty", "one byte", "a megabyte", "large", "old", "gr\xc3\xbc\xc3\x9f",
                         "runs", "private", "folder", "folder of two words", "link",
                         "link to a folder", "broken link"});
    visit.CheckAgreed(visit.Folder().Enter("folder"), "entering a folder");
    visit.CheckAgreed(visit.Folder().Enter(".."), "going up");
    const std::string here = visit.Folder().Path();
    visit.CheckAgreed(visit.Folder().Enter("link to a folder"), "entering a link");
    visit.CheckAgreed(visit.Folder().Go(here), "going back");
}

void ListOne(Visit& visit)
{
    if (visit.StartIn("one")) {
        MakeFile(visit.Path("only"), 5, 0);
        CheckListing(visit, {"only"});
    }
}

void ListMany(Visit& visit)
{
    if (!visit.StartIn("hundreds")) {
        return;
    }
    std::vector<std::string> names;
    for (int i = 0; i < 1500; i++) {
        names.push_back("entry-" + std::to_string(i));
        MakeFile(visit.Path(names.back()), i, i % 300);
    }
    CheckListing(visit, names);
}
