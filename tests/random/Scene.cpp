#include "Scene.h"

#include <algorithm>
#include <dirent.h>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <system_error>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

// What is left of the folders' entries when they are made anew.
constexpr long kFewEntries = 150;
constexpr const char* kOddNames[] = {" leading and trailing ",
                                     "line\nfeed",
                                     "bytes \xff\xfe.txt",
                                     "-rf",
                                     "a'quote\"",
                                     "tab\there",
                                     "ümlaut",
                                     "percent %s %n",
                                     "very-long-"};

void Write(const std::string& path, int bytes)
{
    const int file = open(path.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC | O_NONBLOCK, 0644);
    if (file < 0) {
        return;
    }
    const std::string text(static_cast<size_t>(bytes), 'x');
    [[maybe_unused]] const ssize_t written = write(file, text.data(), text.size());
    close(file);
}

void Link(const std::string& target, const std::string& path)
{
    [[maybe_unused]] const int status = symlink(target.c_str(), path.c_str());
}

std::vector<std::string> NamesIn(const std::string& folder)
{
    std::vector<std::string> names;
    if (DIR* entries = opendir(folder.c_str())) {
        while (const dirent* entry = readdir(entries)) {
            const std::string name = entry->d_name;
            if (name != "." && name != "..") {
                names.push_back(name);
            }
        }
        closedir(entries);
    }
    std::sort(names.begin(), names.end());
    return names;
}

} // namespace

Scene::Scene(const std::string& home, uint32_t seed)
    : fHome(home), fRoot(home + "/work"), fDice(seed)
{
    for (const char* name : {"", "/many", "/nested", "/nested/a", "/nested/a/b", "/nested/a/b/c",
                             "/odd", "/two", "/two/one"}) {
        fFolders.push_back(fRoot + name);
    }
    Build();
    fThread = std::thread([this] { Work(); });
}

Scene::~Scene()
{
    {
        const std::lock_guard lock(fMutex);
        fEnds = true;
    }
    fNews.notify_all();
    fThread.join();
}

void Scene::AskForChanges(int count)
{
    {
        const std::lock_guard lock(fMutex);
        fWanted += count;
    }
    fNews.notify_all();
}

void Scene::AwaitChanges()
{
    std::unique_lock lock(fMutex);
    fNews.wait(lock, [this] { return fWanted == 0 && !fIsWorking; });
}

void Scene::Renew()
{
    AwaitChanges();
    struct statvfs volume = {};
    statvfs(fHome.c_str(), &volume);
    const bool isTight = volume.f_bavail < volume.f_blocks / 4;
    long left = 0;
    for (const std::string& folder : fFolders) {
        left += static_cast<long>(NamesIn(folder).size());
    }
    if (isTight || left < kFewEntries) {
        std::error_code error;
        fs::remove_all(fRoot, error);
        if (isTight) {
            // What was copied or moved elsewhere, the Trash included.
            for (const std::string& name : NamesIn(fHome)) {
                if (name != "run") {
                    fs::remove_all(fHome + "/" + name, error);
                }
            }
        }
        Build();
        fRenewals++;
    }
}

void Scene::Build()
{
    for (const std::string& folder : fFolders) {
        std::error_code error;
        fs::create_directories(folder, error);
    }
    Fill(fRoot + "/many", 400);
    Fill(fRoot + "/nested", 30);
    Fill(fRoot + "/nested/a", 20);
    Fill(fRoot + "/nested/a/b", 10);
    Fill(fRoot + "/nested/a/b/c", 10);
    Fill(fRoot + "/two", 60);
    Fill(fRoot + "/two/one", 5);
    for (const char* name : kOddNames) {
        Write(fRoot + "/odd/" + name, Below(5000));
    }
    const std::string odd = fRoot + "/odd/";
    Write(odd + std::string(255, 'n'), 10);
    std::error_code error;
    fs::create_directory(odd + "folder\nof lines", error);
    fs::create_directory(odd + "folder \xff", error);
    Link("nowhere", odd + "broken");
    Link("circular", odd + "circular");
    Link("..", odd + "to the parent");
    Link("../many", odd + "to many");
    Link(".", odd + "to itself");
    Link("/usr/share", odd + "to share");
    mkfifo((odd + "fifo").c_str(), 0600);
    mkfifo((fRoot + "/two/fifo").c_str(), 0600);
    Write(fRoot + "/large", 2'000'000);
}

void Scene::Fill(const std::string& folder, int files)
{
    for (int i = 0; i < files; i++) {
        Write(folder + "/" + static_cast<char>('a' + i % 26) + "-file " + std::to_string(i),
              Below(10) == 0 ? Below(60000) : Below(2000));
    }
}

void Scene::Work()
{
    std::unique_lock lock(fMutex);
    for (;;) {
        fNews.wait(lock, [this] { return fEnds || fWanted > 0; });
        if (fEnds) {
            return;
        }
        fIsWorking = true;
        fWanted--;
        lock.unlock();
        ChangeOne();
        lock.lock();
        fIsWorking = false;
        fNews.notify_all();
    }
}

std::string Scene::SomeEntry(const std::string& folder)
{
    const std::vector<std::string> names = NamesIn(folder);
    return names.empty() ? folder + "/new"
                         : folder + "/" + names[static_cast<size_t>(Below(int(names.size())))];
}

void Scene::ChangeOne()
{
    fChanges++;
    const std::string folder = SomeFolder();
    const std::string fresh = folder + "/other " + std::to_string(Below(300));
    std::error_code error;
    switch (Below(12)) {
    case 0:
    case 1:
    case 2:
        Write(fresh, Below(20000));
        break;
    case 3:
        fs::create_directories(fresh + "/below", error);
        break;
    case 4:
        Link(SomeEntry(SomeFolder()), fresh);
        break;
    case 5:
    case 6:
        rename(SomeEntry(folder).c_str(), fresh.c_str());
        break;
    case 7:
        rename(SomeEntry(SomeFolder()).c_str(), fresh.c_str());
        break;
    case 8:
        unlink(SomeEntry(folder).c_str());
        break;
    case 9:
        Write(SomeEntry(folder), Below(3000));
        break;
    case 10:
        fs::create_directories(SomeFolder(), error);
        break;
    default:
        // Now and then a folder that is shown, with all that is in it.
        fs::remove_all(Below(8) == 0 ? folder : SomeEntry(folder), error);
    }
}
