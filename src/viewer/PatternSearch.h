#pragma once

#include <Messenger.h>
#include <TextPattern.h>

#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace norvane {

/// Where a text holds what was looked for.
struct FoundPlace
{
    status_t status = B_ENTRY_NOT_FOUND; // B_BUSY: somewhere it would have taken too long
    size_t start = 0;
    size_t end = 0;
};

/// Latin letters stand for capital ones, too, unless there is a capital one that is not behind a
/// backslash.
BTextPattern::Case CaseOf(const std::string& expression);

/// The first match at or behind `from`, or the last one that begins before it, going round at the
/// text's ends. The text is looked at in pieces of whole lines; `wantsMore` is asked before each.
FoundPlace FindForward(const BTextPattern& pattern, std::string_view text, size_t from,
                       const std::function<bool()>& wantsMore);
FoundPlace FindBackward(const BTextPattern& pattern, std::string_view text, size_t from,
                        const std::function<bool()>& wantsMore);

/// Looks for an expression on a thread of its own.
///
/// Thread: the functions are the asker's.
class PatternSearch
{
public:
    enum class Direction { kForward, kBackward };

    /// `asker` is sent a kPatternFound with what became of it, unless this has gone by then: int32
    /// "status", int64 "start" and "end", int32 "search".
    PatternSearch(const std::string& expression, std::shared_ptr<const std::string> text,
                  size_t from, Direction direction, int32 number, const BMessenger& asker);
    /// Lets go. Waits for nothing.
    ~PatternSearch();
    PatternSearch(const PatternSearch&) = delete;
    PatternSearch& operator=(const PatternSearch&) = delete;

private:
    class Work;

    const std::shared_ptr<Work> fWork;
};

} // namespace norvane
