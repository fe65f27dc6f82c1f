#include "Scene.h"

#include <cstdio>
#include <cstdlib>
#include <dirent.h>
#include <fcntl.h>
#include <strings.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

namespace {

constexpr time_t kOld = 1'000'000'000;
constexpr time_t kBetween = 1'100'000'000;
constexpr time_t kNew = 1'200'000'000;
constexpr size_t kLargeBytes = 5 * 1024 * 1024 + 123;
constexpr long long kCoarseNs = 2'000'000'000; // of the coarsest times that volumes keep
constexpr char kNote[] = "user.norvane.test";  // an attribute that any file system of Linux takes

/// Nothing that follows would mean anything.
[[noreturn]] void GiveUp(const char* what, const std::string& path)
{
    std::fprintf(stderr, "faults: cannot %s %s: ", what, path.c_str());
    std::perror("");
    std::exit(2);
}

void ReadFile(int folder, const char* name, SceneItem* item)
{
    const int file = openat(folder, name, O_RDONLY | O_NOFOLLOW);
    if (file < 0) {
        item->text = "(unreadable)";
        return;
    }
    char buffer[64 * 1024];
    for (ssize_t count = read(file, buffer, sizeof(buffer)); count > 0;
         count = read(file, buffer, sizeof(buffer))) {
        item->text.append(buffer, static_cast<size_t>(count));
    }
    const ssize_t length = fgetxattr(file, kNote, buffer, sizeof(buffer));
    item->note.assign(buffer, length < 0 ? 0 : static_cast<size_t>(length));
    close(file);
}

/// Does something with each entry of a folder but "." and "..".
template<typename Visit>
void ForEach(int folder, Visit visit)
{
    DIR* list = fdopendir(dup(folder));
    if (list == nullptr) {
        return;
    }
    rewinddir(list);
    std::vector<std::string> names;
    for (const dirent* entry = readdir(list); entry != nullptr; entry = readdir(list)) {
        const std::string name = entry->d_name;
        if (name != "." && name != "..") {
            names.push_back(name);
        }
    }
    closedir(list);
    for (const std::string& name : names) {
        visit(name);
    }
}

/// Made once, as the same files are made for every point.
const std::string& ContentsOf(const std::string& name, size_t sizeBytes)
{
    static std::map<std::string, std::string> sTexts;
    std::string& text = sTexts[name];
    if (text.size() != sizeBytes) {
        // Short ones differ too, as they begin with a number of their name.
        char number[20];
        std::snprintf(number, sizeof(number), "%08zx ",
                      std::hash<std::string>()(name) & 0xffffffff);
        text = number;
        while (text.size() < sizeBytes) {
            text += "<" + name + " " + std::to_string(text.size()) + ">";
        }
        text.resize(sizeBytes);
    }
    return text;
}

int OpenFolder(int parent, const char* name)
{
    int folder = openat(parent, name, O_RDONLY | O_DIRECTORY | O_NOFOLLOW);
    if (folder < 0 && fchmodat(parent, name, 0700, 0) == 0) {
        folder = openat(parent, name, O_RDONLY | O_DIRECTORY | O_NOFOLLOW);
    }
    return folder;
}

void Empty(int folder)
{
    ForEach(folder, [folder](const std::string& name) {
        if (unlinkat(folder, name.c_str(), 0) == 0) {
            return;
        }
        const int child = OpenFolder(folder, name.c_str());
        if (child >= 0) {
            Empty(child);
            close(child);
        }
        unlinkat(folder, name.c_str(), AT_REMOVEDIR);
    });
}

void LookAt(int parent, const char* name, const std::string& path, Snapshot* all)
{
    struct stat st = {};
    if (fstatat(parent, name, &st, AT_SYMLINK_NOFOLLOW) != 0) {
        return;
    }
    SceneItem item;
    item.mode = st.st_mode & 0777;
    item.modifiedNs = st.st_mtim.tv_sec * 1'000'000'000LL + st.st_mtim.tv_nsec;
    item.node = st.st_ino;
    if (S_ISDIR(st.st_mode)) {
        item.kind = 'd';
        const int folder = OpenFolder(parent, name);
        if (folder >= 0) {
            ForEach(folder, [&](const std::string& child) {
                LookAt(folder, child.c_str(), path.empty() ? child : path + "/" + child, all);
            });
            close(folder);
        }
    } else if (S_ISLNK(st.st_mode)) {
        item.kind = 'l';
        char text[4096];
        const ssize_t length = readlinkat(parent, name, text, sizeof(text));
        item.text.assign(text, length < 0 ? 0 : static_cast<size_t>(length));
    } else {
        ReadFile(parent, name, &item);
    }
    if (!path.empty()) {
        all->emplace(path, std::move(item));
    }
}

/// Some volumes list names in small letters, whatever they were made with: that is the same name.
std::string AsItWasMade(const std::string& path)
{
    for (const std::string trash : kTrashes) {
        const bool isThere = path.size() == trash.size() ||
                             (path.size() > trash.size() && path[trash.size()] == '/');
        if (isThere && strncasecmp(path.c_str(), trash.c_str(), trash.size()) == 0) {
            return trash + path.substr(trash.size());
        }
    }
    return path;
}

} // namespace

Scene::Scene(std::string root) : fRoot(std::move(root))
{
    Probe("one");
    Probe("two");
}

void Scene::Probe(const std::string& volume)
{
    const std::string file = Path(volume + "/probe");
    const std::string link = Path(volume + "/probe-link");
    unlink(file.c_str());
    unlink(link.c_str());
    MakeFile(volume + "/probe", 1, 0600);
    struct stat st = {};
    const bool keepsMode = chmod(file.c_str(), 0644) == 0 && stat(file.c_str(), &st) == 0 &&
                           (st.st_mode & 0777) == 0644;
    fHasModes = fHasModes && keepsMode;
    fHasAttributes = fHasAttributes && setxattr(file.c_str(), kNote, "kept", 4, 0) == 0;
    fHasLinks = fHasLinks && symlink("probe", link.c_str()) == 0;
    fFoldsNames = fFoldsNames || access(Path(volume + "/PROBE").c_str(), F_OK) == 0;
    const struct timespec times[2] = {{kOld, 123'456'789}, {kOld, 123'456'789}};
    fHasFineTimes = fHasFineTimes && utimensat(AT_FDCWD, file.c_str(), times, 0) == 0 &&
                    stat(file.c_str(), &st) == 0 && st.st_mtim.tv_nsec == 123'456'789;
    unlink(file.c_str());
    unlink(link.c_str());
}

void Scene::Clear() const
{
    for (const char* volume : {"one", "two"}) {
        const int folder = open(Path(volume).c_str(), O_RDONLY | O_DIRECTORY);
        if (folder < 0) {
            GiveUp("open", Path(volume));
        }
        Empty(folder);
        close(folder);
        for (const char* name : {"source", "target", "foreign"}) {
            MakeFolder(std::string(volume) + "/" + name);
        }
        // The second is called as something that is worked on.
        MakeFile(std::string(volume) + "/foreign/file", 3000);
        MakeFile(std::string(volume) + "/foreign/item", 300);
    }
    const std::string trash = kHomeTrash;
    MakeFolder(trash + "/files");
    MakeFolder(trash + "/info");
    MakeFile(trash + "/files/older", 20);
    MakeFile(trash + "/info/older.trashinfo", 20);
}

void Scene::MakeItem(const std::string& name) const
{
    MakeFolder(name);
    MakeFolder(name + "/hollow");
    MakeFolder(name + "/closed", 0700);
    MakeFolder(name + "/sub/deep");
    MakeFile(name + "/a", 10);
    MakeFile(name + "/big", 270'000);
    MakeFile(name + "/closed/d", 200, 0640);
    MakeFile(name + "/empty", 0);
    MakeFile(name + "/private", 70'000, 0600);
    MakeFile(name + "/run", 4096, 0755);
    MakeFile(name + "/sub/b", 5000);
    MakeFile(name + "/sub/deep/c", 1);
    MakeLink(name + "/link", "sub/b");
    MakeLink(name + "/sub/out", Path("one/foreign/file"));
    if (fHasAttributes) {
        setxattr(Path(name + "/run").c_str(), kNote, "kept", 4, 0);
    }
    // Folders after what is in them.
    for (const char* each :
         {"a", "big", "private", "run", "sub/b", "link", "hollow", "sub/deep", "sub", "closed"}) {
        Age(name + "/" + each);
    }
    Age(name);
}

void Scene::MakeItemWithLinkOut(const std::string& name) const
{
    MakeItem(name);
    MakeLink(name + "/sub/away", "../../../foreign/file");
    Age(name + "/sub/away");
    Age(name + "/sub");
}

void Scene::MakeTrashed(const std::string& name) const
{
    const std::string trash = kHomeTrash;
    MakeItem(trash + "/files/" + name);
    // That of an earlier one may be left.
    unlink(Path(trash + "/info/" + name + ".trashinfo").c_str());
    MakeText(trash + "/info/" + name + ".trashinfo",
             "[Trash Info]\nPath=" + Path("one/foreign/" + name) +
                 "\nDeletionDate=2020-02-02T20:20:20\n",
             0600);
}

void Scene::MakeItemOfTwoCases(const std::string& name) const
{
    MakeFolder(name);
    MakeFile(name + "/same", 3000);
    if (access(Path(name + "/Same").c_str(), F_OK) != 0) {
        MakeFile(name + "/Same", 4000);
    }
    Age(name + "/same");
    Age(name + "/Same");
    Age(name);
}

void Scene::MakeLarge(const std::string& name) const
{
    MakeFile(name, kLargeBytes, 0640);
    Age(name);
}

void Scene::MakeClashes(const std::string& target) const
{
    MakeFolder(target + "/item/sub");
    MakeFile(target + "/item/a", 300);
    SetTime(target + "/item/a", kOld);
    MakeFile(target + "/item/big", 70'000, 0640);
    SetTime(target + "/item/big", kNew);
    MakeFile(target + "/item/sub/b", 9000);
    SetTime(target + "/item/sub/b", kOld);
    MakeLink(target + "/item/run", Path("one/foreign/file"));
    SetTime(target + "/item/run", kOld);
    MakeFile(target + "/item/own", 40);
    MakeFile(target + "/beside", 50);
}

void Scene::MakeFile(const std::string& name, size_t sizeBytes, mode_t mode) const
{
    MakeText(name, ContentsOf(name, sizeBytes), mode);
}

void Scene::MakeText(const std::string& name, const std::string& text, mode_t mode) const
{
    MakeFolder(name.substr(0, name.rfind('/')));
    const int file = open(Path(name).c_str(), O_WRONLY | O_CREAT | O_EXCL, mode);
    if (file < 0) {
        GiveUp("make", Path(name));
    }
    if (write(file, text.data(), text.size()) != static_cast<ssize_t>(text.size())) {
        GiveUp("write", Path(name));
    }
    close(file);
}

void Scene::MakeFolder(const std::string& name, mode_t mode) const
{
    for (size_t slash = name.find('/'); slash != std::string::npos;
         slash = name.find('/', slash + 1)) {
        mkdir(Path(name.substr(0, slash)).c_str(), 0755);
    }
    mkdir(Path(name).c_str(), mode);
}

void Scene::MakeLink(const std::string& name, const std::string& text) const
{
    if (fHasLinks && symlink(text.c_str(), Path(name).c_str()) != 0) {
        GiveUp("link", Path(name));
    }
}

void Scene::Age(const std::string& name) const
{
    SetTime(name, kBetween);
}

void Scene::SetTime(const std::string& name, time_t modified) const
{
    const struct timespec times[2] = {{modified, 0}, {modified, 0}};
    utimensat(AT_FDCWD, Path(name).c_str(), times, AT_SYMLINK_NOFOLLOW);
}

Snapshot Scene::Look() const
{
    Snapshot all;
    LookAt(AT_FDCWD, fRoot.c_str(), "", &all);
    for (auto& [path, item] : all) {
        item.mode = fHasModes ? item.mode : 0;
        item.modifiedNs -= fHasFineTimes ? 0 : item.modifiedNs % kCoarseNs;
    }
    if (!fFoldsNames) {
        return all;
    }
    Snapshot folded;
    for (auto& [path, item] : all) {
        folded.emplace(AsItWasMade(path), std::move(item));
    }
    return folded;
}

Snapshot Below(const Snapshot& all, const std::string& path)
{
    Snapshot part;
    const std::string prefix = path + "/";
    for (const auto& [name, item] : all) {
        if (name == path) {
            part.emplace("", item);
        } else if (name.starts_with(prefix)) {
            part.emplace(name.substr(prefix.size()), item);
        }
    }
    return part;
}
