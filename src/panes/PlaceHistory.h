#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace norvane {

/// How a list looks at its rows.
struct RowsView
{
    std::string selected; // the first selected row's name; empty: none is
    float top = 0;        // where the list begins to show them
};

/// The folders that a list has shown, with how it looked at each, and which of them is shown now.
///
/// What is no folder of a disk (hits, a server) is not kept: back from there is the folder shown
/// before. Plain data.
class PlaceHistory
{
public:
    static constexpr size_t kMost = 50;

    struct Place
    {
        std::string folder;
        RowsView view;
    };

    enum class Step : bool { kBack, kForward };

    /// A folder is shown, wherever it was come to from: what was forward is forgotten, unless it is
    /// the same folder as before.
    void Show(const std::string& folder);
    /// The folder shown has another name from now on.
    void Rename(const std::string& folder);
    /// What is no folder is shown.
    void ShowOther() { fIsElsewhere = true; }
    /// How the folder shown was looked at.
    void NoteView(RowsView view);

    /// The next folder on the way that was not tried yet; none at the end. What was asked for and
    /// has not been shown counts as gone to. Lent until the next call.
    const Place* Ask(Step step);
    /// What was asked for last is shown. Lent until the next call.
    const Place& Arrive();
    /// What was asked for last cannot be shown: it is forgotten.
    void Fail();
    /// Something else was gone to: nothing is asked for any more.
    void Forget() { fAsked.reset(); }

private:
    void Erase(size_t index);

    std::vector<Place> fPlaces;
    size_t fShown = 0;         // its index, when there are any
    bool fIsElsewhere = false; // what is shown is no folder
    std::optional<size_t> fAsked;
};

} // namespace norvane
