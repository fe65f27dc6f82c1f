#include "properties/Tally.h"

#include "panes/RowTexts.h"

#include <NodeDetails.h>

namespace norvane {

namespace {

constexpr int64 kLeastWithUnit = 1024; // bytes

} // namespace

void Tally::Add(const struct stat& record)
{
    if (S_ISREG(record.st_mode)) {
        files++;
        bytes += record.st_size;
    } else if (S_ISDIR(record.st_mode)) {
        folders++;
    } else if (S_ISLNK(record.st_mode)) {
        links++;
    } else {
        others++;
    }
    occupiedBytes += occupied_bytes(record);
    modes[record.st_mode]++;
}

void Tally::Add(const Tally& other)
{
    files += other.files;
    folders += other.folders;
    links += other.links;
    others += other.others;
    bytes += other.bytes;
    occupiedBytes += other.occupiedBytes;
    unreadable += other.unreadable;
    for (const auto& [mode, count] : other.modes) {
        modes[mode] += count;
    }
}

std::string Tally::Text() const
{
    struct Kind
    {
        int64 count;
        const char* one;
        const char* many;
    };
    const Kind kinds[] = {
        {files, "file", "files"},
        {folders, "folder", "folders"},
        {links, "link", "links"},
        {others, "special file", "special files"},
    };
    std::string text;
    for (const Kind& kind : kinds) {
        if (kind.count > 0) {
            text += text.empty() ? "" : ", ";
            text += Counted(kind.count, kind.one, kind.many);
        }
    }
    return text.empty() ? "nothing" : text;
}

int64 Tally::ChangedBy(const ModeChange& change) const
{
    int64 changed = 0;
    for (const auto& [mode, count] : modes) {
        changed += change.ForInside(mode) != mode ? count : 0;
    }
    return changed;
}

std::string GroupedNumber(int64 number)
{
    const std::string digits = std::to_string(number);
    std::string grouped;
    for (size_t at = 0; at < digits.size(); at++) {
        const size_t left = digits.size() - at;
        if (left % 3 == 0 && at > 0 && digits[at - 1] != '-') {
            grouped += ',';
        }
        grouped += digits[at];
    }
    return grouped;
}

std::string Counted(int64 count, const char* one, const char* many)
{
    std::string text = GroupedNumber(count);
    text += ' ';
    return text.append(count == 1 ? one : many);
}

std::string SizeInFull(int64 bytes)
{
    const std::string exact = Counted(bytes, "byte", "bytes");
    return bytes < kLeastWithUnit ? exact : exact + " (" + ReadableSize(bytes) + ")";
}

} // namespace norvane
