#include "viewer/PatternSearch.h"

#include "DetachedThread.h"
#include "MessageCodes.h"

#include <Message.h>
#include <OS.h>

#include <algorithm>
#include <atomic>
#include <utility>

namespace norvane {

namespace {

constexpr size_t kPieceBytes = size_t{64} * 1024;
// A line that is longer than a piece is looked at in such ones, which share so much.
constexpr size_t kShared = size_t{4} * 1024;

struct Piece
{
    size_t begin;
    size_t end;
};

size_t LineStart(std::string_view text, size_t place)
{
    const size_t least = place > kPieceBytes ? place - kPieceBytes : 0;
    const size_t found =
        place == 0 ? std::string_view::npos : text.substr(least, place - least).rfind('\n');
    return found == std::string_view::npos ? least : least + found + 1;
}

/// The piece that begins there: it ends with a line, if that is not too long.
Piece PieceFrom(std::string_view text, size_t begin)
{
    const size_t most = std::min(text.size(), begin + kPieceBytes);
    if (most == text.size()) {
        return {begin, most};
    }
    const size_t found = text.substr(begin, most - begin).rfind('\n');
    return {begin, found == std::string_view::npos ? most : begin + found + 1};
}

FoundPlace FindIn(const BTextPattern& pattern, std::string_view text, const Piece& piece,
                  size_t from)
{
    FoundPlace found;
    const std::string_view part = text.substr(piece.begin, piece.end - piece.begin);
    found.status = pattern.Find(part, from - piece.begin, &found.start, &found.end);
    found.start += piece.begin;
    found.end += piece.begin;
    return found;
}

/// From `from` to a match that begins before `to`.
FoundPlace FindBetween(const BTextPattern& pattern, std::string_view text, size_t from, size_t to,
                       const std::function<bool()>& wantsMore)
{
    FoundPlace none;
    for (Piece piece = PieceFrom(text, LineStart(text, from)); piece.begin < to && wantsMore();) {
        const FoundPlace found = FindIn(pattern, text, piece, std::max(from, piece.begin));
        if (found.status == B_OK) {
            return found.start < to ? found : none;
        }
        if (found.status == B_BUSY) {
            none.status = B_BUSY;
        }
        if (piece.end >= text.size()) {
            break;
        }
        const bool cutsLine = text[piece.end - 1] != '\n';
        from = std::max(from, piece.end);
        piece = PieceFrom(text, cutsLine ? piece.end - kShared : piece.end);
    }
    return none;
}

/// The last one that begins from `from` on and before `to`, looked for in pieces from the end.
FoundPlace FindLastBetween(const BTextPattern& pattern, std::string_view text, size_t from,
                           size_t to, const std::function<bool()>& wantsMore)
{
    FoundPlace last;
    while (to > from && wantsMore()) {
        const size_t begin =
            std::max(from, LineStart(text, to > kPieceBytes / 2 ? to - kPieceBytes / 2 : 0));
        for (size_t place = begin; place < to;) {
            const FoundPlace found = FindBetween(pattern, text, place, to, wantsMore);
            if (found.status != B_OK) {
                break;
            }
            last = found;
            place = found.end;
        }
        if (last.status == B_OK) {
            return last;
        }
        to = begin;
    }
    return last;
}

} // namespace

BTextPattern::Case CaseOf(const std::string& expression)
{
    for (size_t i = 0; i < expression.size(); i++) {
        if (expression[i] == '\\') {
            i++;
        } else if (expression[i] >= 'A' && expression[i] <= 'Z') {
            return BTextPattern::Case::kExact;
        }
    }
    return BTextPattern::Case::kFolded;
}

FoundPlace FindForward(const BTextPattern& pattern, std::string_view text, size_t from,
                       const std::function<bool()>& wantsMore)
{
    const FoundPlace found = FindBetween(pattern, text, from, text.size(), wantsMore);
    return found.status == B_OK ? found : FindBetween(pattern, text, 0, from, wantsMore);
}

FoundPlace FindBackward(const BTextPattern& pattern, std::string_view text, size_t from,
                        const std::function<bool()>& wantsMore)
{
    const FoundPlace found = FindLastBetween(pattern, text, 0, from, wantsMore);
    return found.status == B_OK ? found
                                : FindLastBetween(pattern, text, from, text.size(), wantsMore);
}

/// What the owner and the thread share.
class PatternSearch::Work
{
public:
    Work(const std::string& expression, std::shared_ptr<const std::string> text, size_t from,
         Direction direction, int32 number, const BMessenger& asker)
        : fPattern(expression, CaseOf(expression)), fText(std::move(text)), fFrom(from),
          fDirection(direction), fNumber(number), fAsker(asker)
    {
    }

    void Run();
    void LetGo() { fIsLetGo = true; }

private:
    const BTextPattern fPattern;
    const std::shared_ptr<const std::string> fText;
    const size_t fFrom;
    const Direction fDirection;
    const int32 fNumber;
    const BMessenger fAsker;
    std::atomic<bool> fIsLetGo = false;
};

void PatternSearch::Work::Run()
{
    const auto find = fDirection == Direction::kForward ? FindForward : FindBackward;
    const FoundPlace found = find(fPattern, *fText, fFrom, [this] { return !fIsLetGo; });
    if (fIsLetGo) {
        return;
    }
    BMessage message(kPatternFound);
    message.AddInt32("status", found.status);
    message.AddInt64("start", static_cast<int64>(found.start));
    message.AddInt64("end", static_cast<int64>(found.end));
    message.AddInt32("search", fNumber);
    fAsker.SendMessage(&message);
}

PatternSearch::PatternSearch(const std::string& expression, std::shared_ptr<const std::string> text,
                             size_t from, Direction direction, int32 number,
                             const BMessenger& asker)
    : fWork(std::make_shared<Work>(expression, std::move(text), from, direction, number, asker))
{
    if (!StartDetached("finding", B_NORMAL_PRIORITY, [work = fWork] { work->Run(); })) {
        fWork->Run();
    }
}

PatternSearch::~PatternSearch()
{
    fWork->LetGo();
}

} // namespace norvane
