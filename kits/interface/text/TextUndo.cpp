#include "TextUndo.h"

#include <utility>

namespace kits {

namespace {

// More than anybody takes back by hand; a paste of megabytes pushes out what came before.
constexpr size_t kMostSteps = 2000;
constexpr size_t kMostBytes = size_t{64} * 1024 * 1024;

bool IsBlank(char byte)
{
    return byte == ' ' || byte == '\t' || byte == '\n';
}

size_t SizeOf(const TextUndo::Step& step)
{
    return step.change.removed.size() + step.change.inserted.size();
}

} // namespace

void TextUndo::Record(const Step& step)
{
    fUndone.clear();
    fBytes += SizeOf(step);
    if (!Join(step)) {
        fDone.push_back(step);
    }
    fIsRunning = step.action == TextAction::kTyping || step.action == TextAction::kErasing;
    Limit();
}

bool TextUndo::Join(const Step& step)
{
    if (!fIsRunning || fDone.empty() || fDone.back().action != step.action) {
        return false;
    }
    TextChange& last = fDone.back().change;
    const TextChange& next = step.change;
    if (step.action == TextAction::kTyping) {
        const int32 end = last.offset + static_cast<int32>(last.inserted.size());
        if (next.offset != end || !next.removed.empty() || next.inserted.empty()) {
            return false;
        }
        const bool beginsWord =
            !last.inserted.empty() && IsBlank(last.inserted.back()) && !IsBlank(next.inserted[0]);
        if (beginsWord) {
            return false;
        }
        last.inserted += next.inserted;
        return true;
    }
    if (!last.inserted.empty() || !next.inserted.empty()) {
        return false;
    }
    if (next.offset + static_cast<int32>(next.removed.size()) == last.offset) {
        last.removed.insert(0, next.removed);
        last.offset = next.offset;
        return true;
    }
    if (next.offset == last.offset) {
        last.removed += next.removed;
        return true;
    }
    return false;
}

void TextUndo::Limit()
{
    while (fDone.size() > kMostSteps || (fBytes > kMostBytes && fDone.size() > 1)) {
        fBytes -= SizeOf(fDone.front());
        fDone.pop_front();
    }
}

void TextUndo::Clear()
{
    fDone.clear();
    fUndone.clear();
    fBytes = 0;
    fIsRunning = false;
}

const TextUndo::Step& TextUndo::TakeBack()
{
    fBytes -= SizeOf(fDone.back());
    fUndone.push_back(std::move(fDone.back()));
    fDone.pop_back();
    fIsRunning = false;
    return fUndone.back();
}

const TextUndo::Step& TextUndo::DoAgain()
{
    fBytes += SizeOf(fUndone.back());
    fDone.push_back(std::move(fUndone.back()));
    fUndone.pop_back();
    fIsRunning = false;
    return fDone.back();
}

TextAction TextUndo::LastAction() const
{
    return fDone.empty() ? TextAction::kOther : fDone.back().action;
}

} // namespace kits
