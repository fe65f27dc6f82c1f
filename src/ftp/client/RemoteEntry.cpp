#include "ftp/client/RemoteEntry.h"

#include <algorithm>

namespace norvane {

namespace {

// What does not fit is cut, and the entry is for looking at only.
constexpr size_t kMaxLine = 255;
constexpr size_t kMaxPermissions = 24;
constexpr size_t kMaxSize = 28;
constexpr size_t kMaxDate = 28;
constexpr size_t kMaxName = 256;

constexpr std::string_view kTotal = "total ";
constexpr std::string_view kArrow = " -> ";

bool IsDigit(char letter)
{
    return letter >= '0' && letter <= '9';
}

bool BeginsWithDigit(std::string_view text)
{
    return !text.empty() && IsDigit(text.front());
}

/// Reads one line from its left to its right.
class LineReader
{
public:
    explicit LineReader(std::string_view line) : fRest(line) {}

    /// The text up to the next blank, which is skipped; "" when there is no blank any more.
    std::string_view TakeField()
    {
        const size_t end = fRest.find(' ');
        if (end == std::string_view::npos) {
            fRest = {};
            return {};
        }
        const std::string_view field = fRest.substr(0, end);
        fRest.remove_prefix(end + 1);
        return field;
    }
    void SkipBlanks() { fRest.remove_prefix(std::min(fRest.find_first_not_of(' '), fRest.size())); }
    void Skip(size_t count) { fRest.remove_prefix(std::min(count, fRest.size())); }
    std::string_view Rest() const { return fRest; }

private:
    std::string_view fRest;
};

/// The columns of a line, as they stand there.
struct Columns
{
    std::string_view permissions;
    std::string_view size;
    std::string_view date; // three fields, with the blanks between them
    std::string_view day[3];
    std::string_view name;
};

/// Behind the link count. It may be padded, and then no more than two characters of it are looked
/// for.
void SkipLinkCount(LineReader* line)
{
    if (line->Rest().substr(0, 1) != " ") {
        line->TakeField();
    } else {
        line->SkipBlanks();
        line->Skip(1);
        line->Skip(BeginsWithDigit(line->Rest()) ? 1 : 0);
    }
    line->SkipBlanks();
}

/// Whether there are all of them.
bool FindColumns(std::string_view text, Columns* columns)
{
    LineReader line(text);
    columns->permissions = line.TakeField();
    SkipLinkCount(&line);
    for (int skipped = 0; skipped < 2; skipped++) { // owner and group
        line.TakeField();
        line.SkipBlanks();
    }
    columns->size = line.TakeField();
    line.SkipBlanks();
    for (std::string_view& field : columns->day) {
        line.SkipBlanks();
        field = line.TakeField();
    }
    columns->name = line.Rest();
    const std::string_view last = columns->day[2];
    if (columns->permissions.empty() || last.empty() || columns->name.empty()) {
        return false;
    }
    const char* begin = columns->day[0].data();
    columns->date = std::string_view(begin, static_cast<size_t>(last.data() + last.size() - begin));
    return true;
}

bool HasColon(std::string_view text)
{
    return text.find(':') != std::string_view::npos;
}

/// "12:00", or a year of four digits.
bool IsTimeOrYear(std::string_view text)
{
    const auto digits = std::find_if_not(text.begin(), text.end(), IsDigit) - text.begin();
    return digits >= 4 || (digits > 0 && text.substr(static_cast<size_t>(digits), 1) == ":");
}

/// Whether the columns are what they are taken for. Servers that leave one out, or write the size
/// of a device as two numbers, or begin with the date, have the name looked for behind its begin.
bool AreInPlace(const Columns& columns)
{
    const bool isNumber = std::all_of(columns.size.begin(), columns.size.end(), IsDigit);
    const bool hasDay = (BeginsWithDigit(columns.day[0]) || BeginsWithDigit(columns.day[1])) &&
                        !HasColon(columns.day[0]) && !HasColon(columns.day[1]);
    return !BeginsWithDigit(columns.permissions) && isNumber && hasDay &&
           IsTimeOrYear(columns.day[2]);
}

/// The name of a link ends before the arrow; where there are two it cannot be told which that is.
std::string_view NameBeforeArrow(std::string_view name)
{
    const size_t arrow = name.find(kArrow);
    if (arrow == std::string_view::npos) {
        return name;
    }
    const bool isOnlyOne = name.find(kArrow, arrow + 1) == std::string_view::npos;
    return isOnlyOne ? name.substr(0, arrow) : std::string_view();
}

bool IsUsable(std::string_view name)
{
    return !name.empty() && name != "." && name != ".." &&
           name.find('/') == std::string_view::npos && name.find('\0') == std::string_view::npos;
}

/// Adds what the line says, if it speaks of an entry.
void AddEntry(std::string_view line, bool isWhole, std::vector<RemoteEntry>* entries)
{
    Columns columns;
    if (!FindColumns(line.substr(0, kMaxLine), &columns)) {
        return;
    }
    const size_t nameEnd = std::min(columns.name.find('\r'), columns.name.size());
    const std::string_view name = columns.name.substr(0, nameEnd);
    if (name.empty() || name == "." || name == "..") {
        return;
    }
    const bool isCut = !isWhole || line.size() > kMaxLine || nameEnd + 1 < columns.name.size() ||
                       columns.permissions.size() > kMaxPermissions ||
                       columns.size.size() > kMaxSize || columns.date.size() > kMaxDate ||
                       name.size() > kMaxName;
    RemoteEntry& entry = entries->emplace_back();
    entry.name = name.substr(0, kMaxName);
    entry.size = columns.size.substr(0, kMaxSize);
    entry.date = columns.date.substr(0, kMaxDate);
    entry.permissions = columns.permissions.substr(0, kMaxPermissions);
    const std::string_view commandName = entry.IsLink() ? NameBeforeArrow(name) : name;
    if (!isCut && AreInPlace(columns) && IsUsable(commandName)) {
        entry.commandName = commandName;
    }
}

} // namespace

std::vector<RemoteEntry> ParseListing(std::string_view listing, ListingEnd end)
{
    std::vector<RemoteEntry> entries;
    if (end != ListingEnd::kLineFeed && listing.find('\n') == std::string_view::npos) {
        return entries;
    }
    if (listing.substr(0, kTotal.size()) == kTotal) {
        listing.remove_prefix(std::min(listing.find('\n'), listing.size()));
    }
    while (!listing.empty()) {
        const size_t lineEnd = listing.find('\n');
        const bool isLast = lineEnd == std::string_view::npos;
        AddEntry(listing.substr(0, lineEnd), !isLast || end == ListingEnd::kLineFeed, &entries);
        listing.remove_prefix(isLast ? listing.size() : lineEnd + 1);
    }
    return entries;
}

} // namespace norvane
