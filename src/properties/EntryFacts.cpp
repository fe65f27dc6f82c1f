#include "properties/EntryFacts.h"

#include "panes/DatePattern.h"
#include "panes/RowTexts.h"
#include "properties/Tally.h"

#include <Errors.h>
#include <Mime.h>
#include <Node.h>
#include <NodeDetails.h>
#include <NodeInfo.h>
#include <Path.h>
#include <SymLink.h>
#include <fs_info.h>

#include <algorithm>

namespace norvane {

namespace {

constexpr const char* kTimeFormat = "%Y-%m-%d %H:%M:%S";
constexpr size_t kMostLinkBytes = 4096; // with the zero

std::string TimeText(time_t seconds)
{
    return DatePattern::For(kTimeFormat).Format(seconds);
}

std::string NameAndNumber(const std::string& name, uint32 number)
{
    return name.empty() ? std::to_string(number) : name + " (" + std::to_string(number) + ")";
}

std::string TypeText(const entry_ref& ref, BNode& node)
{
    char stored[B_MIME_TYPE_LENGTH];
    BMimeType type;
    if (BNodeInfo(&node).GetType(stored) != B_OK || type.SetTo(stored) != B_OK) {
        BMimeType::GuessMimeType(&ref, &type);
    }
    if (!type.IsValid()) {
        return "File";
    }
    char words[B_MIME_TYPE_LENGTH];
    if (type.GetShortDescription(words) != B_OK) {
        return type.Type();
    }
    return std::string(words) + " (" + type.Type() + ")";
}

std::string KindText(const entry_ref& ref, BNode& node, mode_t mode)
{
    switch (mode & S_IFMT) {
    case S_IFDIR:
        return "Folder";
    case S_IFLNK:
        return "Link";
    case S_IFIFO:
        return "Named pipe";
    case S_IFSOCK:
        return "Socket";
    case S_IFCHR:
        return "Character device";
    case S_IFBLK:
        return "Block device";
    default:
        return TypeText(ref, node);
    }
}

std::string FolderOf(const entry_ref& ref)
{
    BEntry above;
    BPath path;
    const bool isFound = BEntry(&ref).GetParent(&above) == B_OK && above.GetPath(&path) == B_OK;
    return isFound ? path.Path() : "";
}

void AddLink(const entry_ref& ref, std::vector<Fact>* lines)
{
    std::vector<char> text(kMostLinkBytes);
    const BSymLink link(&ref);
    if (link.ReadLink(text.data(), text.size()) >= 0) {
        lines->push_back({"Leads to", text.data()});
    }
    struct stat target;
    const char* what = "an entry of another kind";
    const BEntry entry(&ref, true);
    if (entry.InitCheck() != B_OK || entry.GetStat(&target) != B_OK) {
        what = "nothing that is there";
    } else if (S_ISDIR(target.st_mode)) {
        what = "a folder";
    } else if (S_ISREG(target.st_mode)) {
        what = "a file";
    }
    lines->push_back({"Which is", what});
}

void AddTimes(const BNodeDetails& details, std::vector<Fact>* lines)
{
    const struct stat& record = details.Record();
    lines->push_back({"Modified", TimeText(record.st_mtime)});
    lines->push_back({"Accessed", TimeText(record.st_atime)});
    lines->push_back({"Status changed", TimeText(record.st_ctime)});
    time_t made = 0;
    if (details.GetBirthTime(&made) == B_OK) {
        lines->push_back({"Created", TimeText(made)});
    }
}

void AddVolume(dev_t device, std::vector<Fact>* lines)
{
    fs_info volume;
    if (fs_stat_dev(device, &volume) != B_OK) {
        return;
    }
    lines->push_back({"Volume", std::string(volume.fsh_name) + " on " + volume.device_name});
    lines->push_back({"Free space", ReadableSize(volume.free_blocks * volume.block_size) + " of " +
                                        ReadableSize(volume.total_blocks * volume.block_size)});
}

void AddNumbers(const struct stat& record, std::vector<Fact>* lines)
{
    lines->push_back({"Owner", NameAndNumber(user_name(record.st_uid), record.st_uid)});
    lines->push_back({"Group", NameAndNumber(group_name(record.st_gid), record.st_gid)});
    lines->push_back({"Hard links", std::to_string(record.st_nlink)});
    lines->push_back({"Node number", std::to_string(record.st_ino)});
}

std::string WhoText(const BNodeDetails::Right& right)
{
    using Who = BNodeDetails::Right::Who;
    switch (right.who) {
    case Who::kOwner:
        return "Owner";
    case Who::kUser:
        return "User " + NameAndNumber(user_name(right.id), right.id);
    case Who::kGroup:
        return "Owning group";
    case Who::kNamedGroup:
        return "Group " + NameAndNumber(group_name(right.id), right.id);
    case Who::kMask:
        return "At most (the group's boxes)";
    default:
        return "Others";
    }
}

void AddAccessList(const BNodeDetails& details, std::vector<Fact>* lines)
{
    const BNodeDetails::Right* before = nullptr;
    for (const BNodeDetails::Right& right : details.AccessList()) {
        const bool isFirst = before == nullptr || before->isNew != right.isNew;
        const char* label = right.isNew ? "For new entries" : "Access list";
        std::string rights = "---";
        for (int bit = 0; bit < 3; bit++) {
            if ((right.rights & (4 >> bit)) != 0) {
                rights[static_cast<size_t>(bit)] = "rwx"[bit];
            }
        }
        lines->push_back({isFirst ? label : "", rights + "  " + WhoText(right)});
        before = &right;
    }
}

/// Whether a value can be shown as it is: no control characters but blanks.
bool IsText(const std::string& value)
{
    return std::none_of(value.begin(), value.end(), [](unsigned char byte) {
        return byte < ' ' && byte != '\t' && byte != '\n';
    });
}

void AddAttributes(const BNodeDetails& details, std::vector<Fact>* lines)
{
    bool isFirst = true;
    for (const BNodeDetails::Attribute& attribute : details.Attributes()) {
        std::string text = attribute.name + ", " + Counted(attribute.size, "byte", "bytes");
        if (attribute.size > 0 && IsText(attribute.beginning)) {
            const bool isCut = attribute.size > static_cast<off_t>(attribute.beginning.size());
            text += ": " + attribute.beginning + (isCut ? "..." : "");
        }
        lines->push_back({isFirst ? "Attributes" : "", text});
        isFirst = false;
    }
}

/// The lines that grow while folders are gone through.
void AddContents(const Tally& contents, bool isCounted, std::vector<Fact>* lines)
{
    const char* soFar = isCounted ? "" : " so far";
    lines->push_back({"Contents", contents.Text() + soFar});
    if (contents.unreadable > 0) {
        lines->push_back({"Not readable", Counted(contents.unreadable, "entry", "entries")});
    }
}

} // namespace

status_t ReadFacts(const entry_ref& ref, EntryFacts* facts)
{
    BNode node(&ref);
    if (node.InitCheck() != B_OK) {
        return node.InitCheck();
    }
    const BNodeDetails details(node);
    if (details.InitCheck() != B_OK) {
        return details.InitCheck();
    }
    EntryFacts read;
    read.record = details.Record();
    read.kind = KindText(ref, node, read.record.st_mode);
    read.place.push_back({"Location", FolderOf(ref)});
    if (S_ISLNK(read.record.st_mode)) {
        AddLink(ref, &read.place);
    }
    AddTimes(details, &read.rest);
    AddNumbers(read.record, &read.rest);
    AddVolume(read.record.st_dev, &read.rest);
    AddAccessList(details, &read.more);
    AddAttributes(details, &read.more);
    *facts = std::move(read);
    return B_OK;
}

std::vector<Fact> LinesOf(const EntryFacts& facts, const Tally* contents, bool isCounted)
{
    std::vector<Fact> lines = facts.place;
    int64 bytes = S_ISDIR(facts.record.st_mode) ? 0 : facts.record.st_size;
    int64 occupied = occupied_bytes(facts.record);
    if (contents != nullptr) {
        bytes += contents->bytes;
        occupied += contents->occupiedBytes;
        AddContents(*contents, isCounted, &lines);
    }
    lines.push_back({"Size", SizeInFull(bytes)});
    lines.push_back({"Size on disk", SizeInFull(occupied)});
    lines.insert(lines.end(), facts.rest.begin(), facts.rest.end());
    return lines;
}

std::vector<Fact> LinesOf(const Tally& chosen, const Tally& contents, bool isCounted)
{
    std::vector<Fact> lines = {{"Chosen", chosen.Text()}};
    if (chosen.unreadable > 0) {
        lines.push_back({"Gone or not readable", Counted(chosen.unreadable, "entry", "entries")});
    }
    if (chosen.folders > 0) {
        AddContents(contents, isCounted, &lines);
    }
    lines.push_back({"Size", SizeInFull(chosen.bytes + contents.bytes)});
    lines.push_back({"Size on disk", SizeInFull(chosen.occupiedBytes + contents.occupiedBytes)});
    return lines;
}

} // namespace norvane
