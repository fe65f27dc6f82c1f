#pragma once

#include "viewer/TextSearch.h"

class BTextView;

namespace norvane {

/// Looks for texts and lines in what a view shows, and shows what it finds.
///
/// Thread: the view's.
class TextFinder
{
public:
    void SetSought(const std::string& sought) { fSearch = TextSearch(sought); }
    const std::string& Sought() const { return fSearch.Sought(); }

    /// Selects the next place behind the selection, or the last one before it, going round at the
    /// text's ends; false when there is none.
    bool FindNext(BTextView& view) const;
    bool FindPrevious(BTextView& view) const;
    /// Selects a line, counted from 1; the last one for one that is not there.
    static void GoToLine(BTextView& view, int64 line);

private:
    bool Show(BTextView& view, size_t place) const;

    TextSearch fSearch{""};
};

} // namespace norvane
