#include "TrashRecords.h"

#include "EscapedPath.h"

#include <algorithm>
#include <chrono>
#include <cstring>
#include <fcntl.h>
#include <utility>

namespace kits {

namespace {

constexpr std::string_view kEnding = ".trashinfo";
constexpr size_t kLongestName = B_FILE_NAME_LENGTH - 1 - kEnding.size();
// An ending that tells the kind of a file is kept when its name is shortened.
constexpr size_t kLongestKind = 16;
constexpr int kMostTries = 10'000;

std::string RecordName(const std::string& name)
{
    return name + std::string(kEnding);
}

std::string LocalTime(time_t moment)
{
    // localtime_r() alone need not look at the zone; looking at it each time costs more than the
    // rest.
    static std::once_flag sIsZoneRead;
    std::call_once(sIsZoneRead, ::tzset);
    struct tm parts = {};
    ::localtime_r(&moment, &parts);
    char text[32];
    const size_t length = std::strftime(text, sizeof(text), "%Y-%m-%dT%H:%M:%S", &parts);
    return std::string(text, length);
}

/// The n-th shorter name for one that leaves no room for the record's ending: its beginning, "~", a
/// number from the second on, and the ending that tells its kind.
std::string Shortened(const std::string& name, int n)
{
    const size_t dot = name.rfind('.');
    const bool hasKind = dot != std::string::npos && dot > 0 && name.size() - dot <= kLongestKind;
    std::string tail = "~";
    if (n > 0) {
        tail += std::to_string(n + 1);
    }
    if (hasKind) {
        tail.append(name, dot);
    }
    size_t length = kLongestName - tail.size();
    // Not within a letter, where the name is UTF-8.
    for (int i = 0; i < 3 && (static_cast<unsigned char>(name[length]) & 0xc0) == 0x80; ++i) {
        --length;
    }
    return name.substr(0, length) + tail;
}

/// Tries `name`, or when it is too long shorter ones in turn, until one is free.
template<typename Try>
status_t WithFreeName(const std::string& name, std::string* used, Try tryName)
{
    const bool isLong = name.size() > kLongestName;
    status_t status = B_FILE_EXISTS;
    for (int n = 0; n < (isLong ? kMostTries : 1) && status == B_FILE_EXISTS; ++n) {
        const std::string candidate = isLong ? Shortened(name, n) : name;
        status = tryName(candidate);
        if (status == B_OK) {
            *used = candidate;
        }
    }
    return status;
}

/// Writes a new record in one go; leaves none behind when that fails.
status_t WriteRecord(int info, const std::string& name, const std::string& text)
{
    const std::string recordName = RecordName(name);
    UniqueFd record(
        sys::OpenAt(info, recordName.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW, 0600));
    if (!record.IsOpen()) {
        return record.Get();
    }
    const ssize_t written = sys::WriteAt(record.Get(), text.data(), text.size(), 0);
    const bool isWhole = written == static_cast<ssize_t>(text.size());
    status_t status = written < 0 ? static_cast<status_t>(written) : isWhole ? B_OK : B_DEVICE_FULL;
    const status_t closed = sys::Close(record.Release());
    if (status == B_OK) {
        status = closed;
    }
    if (status != B_OK) {
        sys::RemoveFileAt(info, recordName.c_str());
    }
    return status;
}

/// The path of the folder that an entry was moved from into a Trash last: thousands may follow from
/// there. It is believed for a moment in which nobody but this program would rename the folder.
class LastSource
{
public:
    using Clock = std::chrono::steady_clock;

    status_t PathOf(const FolderHold& hold, int folder, std::string* path)
    {
        const FolderTable& table = FolderTable::Get();
        const std::pair key(table.DeviceOf(hold), table.NodeOf(hold));
        MutexLock lock(fMutex);
        if (fPath.empty() || key != fKey || Clock::now() - fSince > kBelievedFor) {
            fPath.clear();
            fKey = key;
            fSince = Clock::now();
            const status_t status = sys::PathOf(folder, &fPath);
            if (status != B_OK) {
                return status;
            }
        }
        *path = fPath;
        return B_OK;
    }
    void Forget()
    {
        MutexLock lock(fMutex);
        fPath.clear();
    }

private:
    static constexpr auto kBelievedFor = std::chrono::milliseconds(100);

    Mutex fMutex;
    std::pair<dev_t, ino_t> fKey GUARDED_BY(fMutex);
    std::string fPath GUARDED_BY(fMutex); // "" when none is known
    Clock::time_point fSince GUARDED_BY(fMutex);
};

LastSource& TheLastSource()
{
    // Never destroyed: statics may still move entries.
    static LastSource* source = new LastSource;
    return *source;
}

/// The record of an entry that is moved into a Trash now.
status_t RecordOf(const TrashMove& move, std::string* text)
{
    std::string path;
    const status_t status = TheLastSource().PathOf(move.fromFolder, move.from, &path);
    if (status != B_OK) {
        return status;
    }
    path = path == "/" ? path + move.name : path + "/" + move.name;
    return TrashRecordText(*move.toTrash, path, std::time(nullptr), text);
}

/// Claims a name by its record, then moves the entry to it.
status_t MoveIn(const TrashMove& move, std::string* movedName)
{
    std::string text;
    status_t status = RecordOf(move, &text);
    if (status != B_OK) {
        return status;
    }
    OpenFolder info;
    status = OpenTrashInfo(*move.toTrash, TrashCreation::kWhenMissing, &info);
    if (status != B_OK) {
        return status;
    }
    return WithFreeName(move.newName, movedName, [&](const std::string& name) {
        status_t moved = WriteRecord(info->Get(), name, text);
        if (moved == B_OK) {
            moved = sys::RenameNewAt(move.from, move.name.c_str(), move.to, name.c_str());
            if (moved != B_OK) {
                sys::RemoveFileAt(info->Get(), RecordName(name).c_str());
            }
        }
        return moved;
    });
}

status_t ReadRecord(int info, const std::string& name, std::string* text,
                    size_t mostBytes = std::string::npos)
{
    const UniqueFd record(
        sys::OpenAt(info, RecordName(name).c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK));
    if (!record.IsOpen()) {
        return record.Get();
    }
    char buffer[4096];
    ssize_t count = 0;
    do {
        count = sys::ReadAt(record.Get(), buffer, sizeof(buffer), static_cast<off_t>(text->size()));
        text->append(buffer, count < 0 ? 0 : static_cast<size_t>(count));
    } while (count > 0 && text->size() < mostBytes);
    return count < 0 ? static_cast<status_t>(count) : status_t(B_OK);
}

/// Reads the record of an entry that lies in a Trash. B_ENTRY_NOT_FOUND only when two looks agree
/// on that: whatever goes on without its record cannot be restored.
status_t FindRecord(const TrashMove& move, OpenFolder* info, std::string* text)
{
    status_t status = OpenTrashInfo(*move.fromTrash, TrashCreation::kNever, info);
    if (status == B_ENTRY_NOT_FOUND) {
        return OpenTrashInfo(*move.fromTrash, TrashCreation::kNever, info) == B_OK ? B_IO_ERROR
                                                                                   : status;
    }
    if (status == B_OK) {
        status = ReadRecord((*info)->Get(), move.name, text);
    }
    if (status != B_ENTRY_NOT_FOUND) {
        return status;
    }
    struct stat st;
    const status_t looked = sys::StatAt((*info)->Get(), RecordName(move.name).c_str(), &st);
    return looked == B_OK ? status_t(B_IO_ERROR) : looked;
}

/// Claims a name in a Trash by a record that says `text`. One that says the same already, and
/// speaks of no entry, is left from a claim that could not be taken back: the entry had that name.
status_t ClaimByRecord(const TrashMove& move, int info, const std::string& text)
{
    const status_t status = WriteRecord(info, move.newName, text);
    std::string there;
    struct stat st;
    const bool isOwn = status == B_FILE_EXISTS && ReadRecord(info, move.newName, &there) == B_OK &&
                       there == text &&
                       sys::StatAt(move.to, move.newName.c_str(), &st) == B_ENTRY_NOT_FOUND;
    return isOwn ? status_t(B_OK) : status;
}

/// Renames an entry in a Trash. Its record is there under both names meanwhile: the new one claims
/// the name, and wherever the entry is found it can be restored.
status_t RenameInside(const TrashMove& move)
{
    OpenFolder info;
    std::string text;
    status_t status = FindRecord(move, &info, &text);
    const bool hasRecord = status == B_OK;
    if (hasRecord) {
        status = ClaimByRecord(move, info->Get(), text);
    }
    if (status != B_OK && (hasRecord || status != B_ENTRY_NOT_FOUND)) {
        return status;
    }
    status = sys::RenameNewAt(move.from, move.name.c_str(), move.to, move.newName.c_str());
    if (hasRecord) {
        const std::string& unused = status == B_OK ? move.name : move.newName;
        sys::RemoveFileAt(info->Get(), RecordName(unused).c_str());
    }
    return status;
}

bool IsInside(const TrashMove& move)
{
    return move.fromTrash != nullptr && move.toTrash != nullptr &&
           move.fromTrash->folder == move.toTrash->folder;
}

/// The path that a record's text notes, still escaped; "" when it is no record.
std::string_view NotedPath(std::string_view text)
{
    constexpr std::string_view kKey = "Path=";
    bool isInGroup = false;
    while (!text.empty()) {
        const std::string_view line = text.substr(0, text.find('\n'));
        text.remove_prefix(std::min(text.size(), line.size() + 1));
        if (line.starts_with('[')) {
            isInGroup = line == "[Trash Info]";
        } else if (isInGroup && line.starts_with(kKey)) {
            return line.substr(kKey.size()); // the first one counts
        }
    }
    return {};
}

/// Whether a path goes up anywhere, or ends in no name.
bool GoesAstray(const std::string& path)
{
    const std::string whole = "/" + path + "/";
    return whole.find("/../") != std::string::npos || whole.find("/./") != std::string::npos ||
           path.empty() || path.back() == '/';
}

} // namespace

status_t ReadTrashOrigin(const Trash& trash, const std::string& name, std::string* path)
{
    // A path of the longest names, each byte escaped, is shorter by far.
    constexpr size_t kMostBytes = 65'536;
    OpenFolder info;
    std::string text;
    status_t status = OpenTrashInfo(trash, TrashCreation::kNever, &info);
    if (status == B_OK) {
        status = ReadRecord(info->Get(), name, &text, kMostBytes);
    }
    if (status != B_OK) {
        return status;
    }
    std::string noted;
    const bool isHome = trash.topFolder.empty();
    if (!UnescapePath(NotedPath(text), &noted) || GoesAstray(noted) ||
        noted.starts_with('/') != isHome) {
        return B_MISMATCHED_VALUES;
    }
    *path = isHome ? noted : (trash.topFolder == "/" ? "/" : trash.topFolder + "/") + noted;
    return B_OK;
}

status_t TrashRecordText(const Trash& trash, const std::string& path, time_t deleted,
                         std::string* text)
{
    std::string_view noted = path;
    if (!trash.topFolder.empty()) {
        const std::string above = trash.topFolder == "/" ? "/" : trash.topFolder + "/";
        if (!noted.starts_with(above)) {
            return B_CROSS_DEVICE_LINK;
        }
        noted.remove_prefix(above.size());
    }
    *text =
        "[Trash Info]\nPath=" + EscapedPath(noted) + "\nDeletionDate=" + LocalTime(deleted) + "\n";
    return B_OK;
}

status_t ClaimTrashName(const Trash& trash, int files, const std::string& name,
                        const std::string& text, std::string* claimed)
{
    OpenFolder info;
    const status_t status = OpenTrashInfo(trash, TrashCreation::kWhenMissing, &info);
    if (status != B_OK) {
        return status;
    }
    return WithFreeName(name, claimed, [&](const std::string& candidate) {
        const status_t written = WriteRecord(info->Get(), candidate, text);
        struct stat st;
        const status_t looked =
            written == B_OK ? sys::StatAt(files, candidate.c_str(), &st) : written;
        if (written != B_OK || looked == B_ENTRY_NOT_FOUND) {
            return written;
        }
        sys::RemoveFileAt(info->Get(), RecordName(candidate).c_str());
        return looked == B_OK ? status_t(B_FILE_EXISTS) : looked;
    });
}

status_t RemoveTrashRecord(const Trash& trash, const std::string& name)
{
    if (name.size() > kLongestName) {
        return B_OK;
    }
    OpenFolder info;
    status_t status = OpenTrashInfo(trash, TrashCreation::kNever, &info);
    if (status == B_OK) {
        status = sys::RemoveFileAt(info->Get(), RecordName(name).c_str());
    }
    return status == B_ENTRY_NOT_FOUND ? B_OK : status;
}

status_t MoveWithRecord(const TrashMove& move, std::string* movedName)
{
    *movedName = move.newName;
    if (move.toTrash == nullptr) {
        TheLastSource().Forget(); // it may lie in what is renamed
    }
    if (IsInside(move)) {
        return RenameInside(move);
    }
    const status_t status =
        move.toTrash != nullptr
            ? MoveIn(move, movedName)
            : sys::RenameNewAt(move.from, move.name.c_str(), move.to, move.newName.c_str());
    if (status == B_OK && move.fromTrash != nullptr) {
        RemoveTrashRecord(*move.fromTrash, move.name);
    }
    return status;
}

status_t MoveWithRecordOver(const TrashMove& move)
{
    TheLastSource().Forget();
    const status_t status =
        sys::RenameAt(move.from, move.name.c_str(), move.to, move.newName.c_str());
    if (status != B_OK) {
        return status;
    }
    if (IsInside(move)) {
        // What had no record of its own, a copy written beside its target, gets the replaced one's.
        OpenFolder info;
        if (OpenTrashInfo(*move.toTrash, TrashCreation::kNever, &info) == B_OK) {
            // Without one there is none to give.
            [[maybe_unused]] const status_t renamed =
                sys::RenameAt(info->Get(), RecordName(move.name).c_str(), info->Get(),
                              RecordName(move.newName).c_str());
        }
        return B_OK;
    }
    if (move.toTrash != nullptr) {
        RemoveTrashRecord(*move.toTrash, move.newName); // it told of what was replaced
        std::string text;
        OpenFolder info;
        if (RecordOf(move, &text) == B_OK &&
            OpenTrashInfo(*move.toTrash, TrashCreation::kWhenMissing, &info) == B_OK) {
            WriteRecord(info->Get(), move.newName, text);
        }
    }
    if (move.fromTrash != nullptr) {
        RemoveTrashRecord(*move.fromTrash, move.name);
    }
    return B_OK;
}

} // namespace kits
