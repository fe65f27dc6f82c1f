#include "viewer/TextFinder.h"

#include <TextView.h>

#include <algorithm>

namespace norvane {

namespace {

std::string_view TextOf(const BTextView& view)
{
    return {view.Text(), static_cast<size_t>(view.TextLength())};
}

} // namespace

bool TextFinder::FindNext(BTextView& view) const
{
    int32 end = 0;
    view.GetSelection(nullptr, &end);
    const std::string_view text = TextOf(view);
    const size_t place = fSearch.Find(text, static_cast<size_t>(end));
    return Show(view, place != TextSearch::kNowhere ? place : fSearch.Find(text, 0));
}

bool TextFinder::FindPrevious(BTextView& view) const
{
    int32 start = 0;
    view.GetSelection(&start, nullptr);
    const std::string_view text = TextOf(view);
    const size_t place = fSearch.FindBefore(text, static_cast<size_t>(start));
    return Show(view,
                place != TextSearch::kNowhere ? place : fSearch.FindBefore(text, text.size()));
}

bool TextFinder::Show(BTextView& view, size_t place) const
{
    if (place == TextSearch::kNowhere) {
        return false;
    }
    const int32 start = static_cast<int32>(place);
    view.Select(start, start + static_cast<int32>(fSearch.Sought().size()));
    view.ScrollToOffset(start);
    return true;
}

void TextFinder::GoToLine(BTextView& view, int64 line)
{
    const std::string_view text = TextOf(view);
    const size_t start = StartOfLine(text, line);
    const size_t end = std::min(text.find('\n', start), text.size());
    view.Select(static_cast<int32>(start), static_cast<int32>(end));
    view.ScrollToOffset(static_cast<int32>(start));
}

} // namespace norvane
