#include "viewer/FilePart.h"

#include "DetachedThread.h"
#include "MessageCodes.h"

#include <Entry.h>
#include <File.h>
#include <OS.h>

#include <algorithm>
#include <mutex>
#include <optional>
#include <sys/stat.h>
#include <utility>

namespace norvane {

namespace {

struct Wish
{
    int64 start;
    size_t length;
};

// Opened anew for each part: the file may be another one by now, or gone.
FilePart ReadPart(const std::string& path, const Wish& wish)
{
    FilePart part;
    part.isRead = true;
    part.start = wish.start;
    const BEntry entry(path.c_str(), true);
    struct stat st;
    if (entry.GetStat(&st) != B_OK || !S_ISREG(st.st_mode)) {
        return part;
    }
    BFile file(&entry, B_READ_ONLY);
    off_t size = 0;
    if (file.InitCheck() != B_OK || file.GetSize(&size) != B_OK) {
        return part;
    }
    file.GetNodeRef(&part.node);
    part.fileSize = size;
    part.bytes.resize(wish.length);
    const ssize_t count = file.ReadAt(wish.start, part.bytes.data(), wish.length);
    part.bytes.resize(static_cast<size_t>(std::max<ssize_t>(0, count)));
    return part;
}

} // namespace

bool FilePart::Covers(int64 from, int64 to) const
{
    const int64 end = start + static_cast<int64>(bytes.size());
    return from >= start && std::min(to, fileSize) <= end;
}

/// What the owner and the thread share.
class FilePartReading::Work
{
public:
    Work(const std::string& path, const BMessenger& asker) : fPath(path), fAsker(asker) {}

    /// True: a thread is to be started.
    bool Ask(const Wish& wish);
    void Run();
    void LetGo();
    FilePart Take();

private:
    std::optional<Wish> NextWish();
    void Keep(FilePart part);

    const std::string fPath;
    const BMessenger fAsker;
    std::mutex fMutex; // guards all below
    std::optional<Wish> fWish;
    FilePart fPart;
    bool fIsRunning = false;
};

bool FilePartReading::Work::Ask(const Wish& wish)
{
    const std::lock_guard lock(fMutex);
    fWish = wish;
    return !std::exchange(fIsRunning, true);
}

std::optional<Wish> FilePartReading::Work::NextWish()
{
    const std::lock_guard lock(fMutex);
    std::optional<Wish> wish = std::exchange(fWish, std::nullopt);
    fIsRunning = wish.has_value();
    return wish;
}

void FilePartReading::Work::Keep(FilePart part)
{
    {
        const std::lock_guard lock(fMutex);
        fPart = std::move(part);
    }
    fAsker.SendMessage(kFilePartRead);
}

void FilePartReading::Work::Run()
{
    while (const std::optional<Wish> wish = NextWish()) {
        Keep(ReadPart(fPath, *wish));
    }
}

void FilePartReading::Work::LetGo()
{
    const std::lock_guard lock(fMutex);
    fWish.reset();
}

FilePart FilePartReading::Work::Take()
{
    const std::lock_guard lock(fMutex);
    return std::exchange(fPart, FilePart());
}

FilePartReading::FilePartReading(const std::string& path, const BMessenger& asker)
    : fWork(std::make_shared<Work>(path, asker))
{
}

FilePartReading::~FilePartReading()
{
    fWork->LetGo();
}

void FilePartReading::Ask(int64 start, size_t length)
{
    if (!fWork->Ask({start, length})) {
        return;
    }
    if (!StartDetached("viewing", B_NORMAL_PRIORITY, [work = fWork] { work->Run(); })) {
        fWork->Run();
    }
}

FilePart FilePartReading::Take()
{
    return fWork->Take();
}

} // namespace norvane
