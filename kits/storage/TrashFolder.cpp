#include "TrashFolder.h"

#include "EntryName.h"
#include "MountTable.h"
#include "PathLookup.h"

#include <chrono>
#include <cstdlib>
#include <fcntl.h>
#include <map>
#include <unistd.h>

namespace kits {

namespace {

constexpr std::string_view kFiles = "/files";
constexpr auto kBelievedFor = std::chrono::seconds(1);
constexpr size_t kMostBelieved = 64;

/// Whether a folder of a Trash may be used: the user's own, and nobody else's to write in.
bool IsSafe(const struct stat& st)
{
    return S_ISDIR(st.st_mode) && st.st_uid == ::geteuid() && (st.st_mode & 022) == 0;
}

/// Opens the folder `name` of a Trash, itself, after it was made when it was missing. Returns a
/// descriptor or a status.
int OpenOwn(int parent, const char* name, TrashCreation creation)
{
    constexpr int kFlags = O_PATH | O_DIRECTORY | O_NOFOLLOW;
    int opened = sys::OpenAt(parent, name, kFlags);
    if (opened == B_ENTRY_NOT_FOUND && creation == TrashCreation::kWhenMissing) {
        const status_t made = sys::MakeFolderAt(parent, name, 0700);
        if (made != B_OK && made != B_FILE_EXISTS) {
            return made;
        }
        TrashWasMade();
        opened = sys::OpenAt(parent, name, kFlags);
    }
    UniqueFd folder(opened == B_NOT_A_DIRECTORY || opened == B_LINK_LIMIT ? B_NOT_ALLOWED : opened);
    struct stat st;
    if (folder.IsOpen() && (sys::Stat(folder.Get(), &st) != B_OK || !IsSafe(st))) {
        return B_NOT_ALLOWED;
    }
    return folder.Release();
}

std::string UserNumber()
{
    return std::to_string(::geteuid());
}

/// The folder of all users' Trashes, which the administrator made: a real folder in which nobody
/// can remove what is another's.
UniqueFd OpenShared(int top)
{
    UniqueFd shared(sys::OpenAt(top, ".Trash", O_PATH | O_DIRECTORY | O_NOFOLLOW));
    struct stat st;
    if (shared.IsOpen() && (sys::Stat(shared.Get(), &st) != B_OK || (st.st_mode & S_ISVTX) == 0)) {
        return UniqueFd(B_NOT_ALLOWED);
    }
    return shared;
}

status_t CheckFiles(int trash, TrashCreation creation)
{
    const UniqueFd files(OpenOwn(trash, "files", creation));
    return files.IsOpen() ? B_OK : files.Get();
}

status_t FindShared(int top, TrashCreation creation)
{
    const UniqueFd shared = OpenShared(top);
    if (!shared.IsOpen()) {
        return shared.Get();
    }
    const UniqueFd own(OpenOwn(shared.Get(), UserNumber().c_str(), creation));
    return own.IsOpen() ? CheckFiles(own.Get(), creation) : own.Get();
}

status_t FindPrivate(int top, TrashCreation creation)
{
    const UniqueFd own(OpenOwn(top, (".Trash-" + UserNumber()).c_str(), creation));
    return own.IsOpen() ? CheckFiles(own.Get(), creation) : own.Get();
}

std::string InFolder(const std::string& folder, const std::string& name)
{
    return folder == "/" ? folder + name : folder + "/" + name;
}

std::string ParentOf(const std::string& path)
{
    const size_t slash = path.rfind('/');
    return slash == 0 || slash == std::string::npos ? "/" : path.substr(0, slash);
}

/// The folder that a volume's Trash at `path` would be the Trash of; "" when it is named like none.
std::string TopFolderOf(const std::string& path)
{
    std::string parent = ParentOf(path);
    if (path == InFolder(parent, ".Trash-" + UserNumber())) {
        return parent;
    }
    const std::string above = ParentOf(parent);
    return path == InFolder(InFolder(above, ".Trash"), UserNumber()) ? above : std::string();
}

/// Errors: the mount of the folder is not listed, or the list cannot be read.
status_t FindWhetherMountedAt(int folder, const std::string& point, bool* isThere)
{
    Mount mount;
    if (!FindMountOf(folder, &mount)) {
        return B_IO_ERROR;
    }
    *isThere = mount.point == point;
    return B_OK;
}

/// Opens the folder of the records by its path. Returns a descriptor or a status.
int OpenInfo(const Trash& trash, TrashCreation creation)
{
    // The home Trash is the user's own to lay out, with links when they like.
    const bool isHome = trash.topFolder.empty();
    const UniqueFd folder(sys::OpenAt(sys::kWorkingDirectory, trash.folder.c_str(),
                                      O_PATH | O_DIRECTORY | (isHome ? 0 : O_NOFOLLOW)));
    if (!folder.IsOpen()) {
        return folder.Get();
    }
    if (!isHome) {
        return OpenOwn(folder.Get(), "info", creation);
    }
    constexpr int kFlags = O_PATH | O_DIRECTORY;
    const int opened = sys::OpenAt(folder.Get(), "info", kFlags);
    if (opened != B_ENTRY_NOT_FOUND || creation == TrashCreation::kNever) {
        return opened;
    }
    const status_t made = sys::MakeFolderAt(folder.Get(), "info", 0700);
    if (made != B_OK && made != B_FILE_EXISTS) {
        return made;
    }
    TrashWasMade();
    return sys::OpenAt(folder.Get(), "info", kFlags);
}

std::shared_ptr<const Trash> WithInfo(Trash trash)
{
    const UniqueFd info(OpenInfo(trash, TrashCreation::kNever));
    if (info.IsOpen()) {
        trash.info = FolderTable::Get().Know(info.Get());
    }
    return std::make_shared<const Trash>(std::move(trash));
}

/// Whether a status says that something is not there, or is not what was looked for.
bool IsNone(status_t status)
{
    return status == B_ENTRY_NOT_FOUND || status == B_NOT_A_DIRECTORY || status == B_NOT_ALLOWED;
}

/// Looks at a folder named as those of volumes' Trashes are; `path` is without "/files".
status_t RecognizeOnVolume(int files, const std::string& path, std::shared_ptr<const Trash>* trash)
{
    const std::string top = TopFolderOf(path);
    if (top.empty()) {
        return B_OK;
    }
    bool isMountedThere = false;
    const status_t found = FindWhetherMountedAt(files, top, &isMountedThere);
    if (found != B_OK || !isMountedThere) {
        return found;
    }
    const UniqueFd opened(sys::OpenAt(sys::kWorkingDirectory, top.c_str(), O_PATH | O_DIRECTORY));
    const bool isPrivate = ParentOf(path) == top;
    const status_t status = !opened.IsOpen() ? opened.Get()
                            : isPrivate      ? FindPrivate(opened.Get(), TrashCreation::kNever)
                                             : FindShared(opened.Get(), TrashCreation::kNever);
    if (status == B_OK) {
        *trash = WithInfo({path, top, {}});
    }
    return IsNone(status) ? status_t(B_OK) : status;
}

/// Looks whether the folder is a Trash's; `files` is a descriptor of it.
status_t Recognize(int files, dev_t device, ino_t node, std::shared_ptr<const Trash>* trash)
{
    Trash home = HomeTrash();
    const std::string homeFiles = home.folder + std::string(kFiles);
    struct stat st;
    const status_t status = sys::StatPath(homeFiles.c_str(), &st);
    bool isHome = status == B_OK && st.st_dev == device && st.st_ino == node;
    std::string path;
    if (!isHome && (sys::PathOf(files, &path) != B_OK || !path.ends_with(kFiles))) {
        return B_OK;
    }
    isHome |= path == homeFiles;
    if (isHome) {
        *trash = WithInfo(std::move(home));
        return B_OK;
    }
    if (status != B_OK && !IsNone(status)) {
        return status; // it may be that of the home Trash, by way of a link
    }
    path.resize(path.size() - kFiles.size());
    return RecognizeOnVolume(files, path, trash);
}

/// What was found about folders lately.
class Believed
{
public:
    using Clock = std::chrono::steady_clock;
    using Key = std::pair<dev_t, ino_t>;

    bool Find(const Key& key, std::shared_ptr<const Trash>* trash)
    {
        std::string home = HomeTrash().folder;
        MutexLock lock(fMutex);
        if (home != fHome) {
            fAnswers.clear();
            fHome = std::move(home);
        }
        const auto found = fAnswers.find(key);
        if (found == fAnswers.end() || Clock::now() - found->second.since > kBelievedFor) {
            return false;
        }
        *trash = found->second.trash;
        return true;
    }

    void Remember(const Key& key, std::shared_ptr<const Trash> trash)
    {
        MutexLock lock(fMutex);
        if (fAnswers.size() >= kMostBelieved) {
            fAnswers.clear();
        }
        fAnswers[key] = {std::move(trash), Clock::now()};
    }

    void Forget()
    {
        MutexLock lock(fMutex);
        fAnswers.clear();
    }

private:
    struct Answer
    {
        std::shared_ptr<const Trash> trash;
        Clock::time_point since;
    };

    Mutex fMutex;
    std::map<Key, Answer> fAnswers GUARDED_BY(fMutex);
    std::string fHome GUARDED_BY(fMutex); // the home Trash that the answers go by
};

Believed& TheBelieved()
{
    // Never destroyed: statics may still move entries.
    static Believed* sBelieved = new Believed;
    return *sBelieved;
}

} // namespace

std::string BaseFolder(const char* variable, const char* underHome)
{
    const char* value = std::getenv(variable);
    return value != nullptr && *value == '/' ? std::string(value) : HomeFolder() + "/" + underHome;
}

Trash HomeTrash()
{
    return {BaseFolder("XDG_DATA_HOME", ".local/share") + "/Trash", std::string(), {}};
}

status_t FindVolumeTrash(const std::string& topFolder, TrashCreation creation, Trash* trash)
{
    const UniqueFd top(
        sys::OpenAt(sys::kWorkingDirectory, topFolder.c_str(), O_PATH | O_DIRECTORY));
    if (!top.IsOpen()) {
        return top.Get();
    }
    if (FindShared(top.Get(), creation) == B_OK) {
        *trash = {InFolder(InFolder(topFolder, ".Trash"), UserNumber()), topFolder, {}};
        return B_OK;
    }
    const status_t status = FindPrivate(top.Get(), creation);
    if (status == B_OK) {
        *trash = {InFolder(topFolder, ".Trash-" + UserNumber()), topFolder, {}};
    }
    return status;
}

status_t FindTrashOf(const FolderHold& folder, std::shared_ptr<const Trash>* trash)
{
    trash->reset();
    FolderTable& table = FolderTable::Get();
    const Believed::Key key{table.DeviceOf(folder), table.NodeOf(folder)};
    if (TheBelieved().Find(key, trash)) {
        return B_OK;
    }
    OpenFolder open;
    status_t status = table.Open(folder, &open);
    if (status == B_OK) {
        status = Recognize(open->Get(), key.first, key.second, trash);
    }
    if (status == B_OK) {
        TheBelieved().Remember(key, *trash);
    }
    return status;
}

std::shared_ptr<const Trash> TrashOf(const FolderHold& folder)
{
    std::shared_ptr<const Trash> trash;
    return FindTrashOf(folder, &trash) == B_OK ? trash : nullptr;
}

void TrashWasMade()
{
    TheBelieved().Forget();
}

status_t OpenTrashInfo(const Trash& trash, TrashCreation creation, OpenFolder* info)
{
    struct stat st;
    // It may have been removed since it was found.
    if (trash.info && FolderTable::Get().Open(trash.info, info) == B_OK &&
        sys::Stat((*info)->Get(), &st) == B_OK && st.st_nlink > 0) {
        return B_OK;
    }
    auto opened = std::make_shared<const UniqueFd>(OpenInfo(trash, creation));
    const status_t status = opened->IsOpen() ? B_OK : opened->Get();
    *info = std::move(opened);
    return status;
}

} // namespace kits
