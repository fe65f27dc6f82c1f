#include "panes/PlaceHistory.h"

#include <utility>

namespace norvane {

void PlaceHistory::Show(const std::string& folder)
{
    fAsked.reset();
    fIsElsewhere = false;
    if (!fPlaces.empty() && fPlaces[fShown].folder == folder) {
        return;
    }
    if (!fPlaces.empty()) {
        fPlaces.resize(fShown + 1);
    }
    if (fPlaces.size() == kMost) {
        fPlaces.erase(fPlaces.begin());
    }
    fPlaces.push_back({folder, {}});
    fShown = fPlaces.size() - 1;
}

void PlaceHistory::Rename(const std::string& folder)
{
    if (!fPlaces.empty() && !fIsElsewhere) {
        fPlaces[fShown].folder = folder;
    }
}

void PlaceHistory::NoteView(RowsView view)
{
    if (!fPlaces.empty() && !fIsElsewhere) {
        fPlaces[fShown].view = std::move(view);
    }
}

const PlaceHistory::Place* PlaceHistory::Ask(Step step)
{
    if (fPlaces.empty()) {
        return nullptr;
    }
    size_t index = fAsked.value_or(fShown);
    // From what is no folder it is one step back to the folder before it.
    const bool isOnTheSpot = fIsElsewhere && !fAsked.has_value();
    if (step == Step::kForward) {
        if (index + 1 == fPlaces.size()) {
            return nullptr;
        }
        ++index;
    } else if (!isOnTheSpot) {
        if (index == 0) {
            return nullptr;
        }
        --index;
    }
    fAsked = index;
    return &fPlaces[index];
}

const PlaceHistory::Place& PlaceHistory::Arrive()
{
    fShown = fAsked.value_or(fShown);
    fAsked.reset();
    fIsElsewhere = false;
    return fPlaces[fShown];
}

void PlaceHistory::Fail()
{
    if (!fAsked.has_value()) {
        return;
    }
    const size_t gone = *std::exchange(fAsked, std::nullopt);
    Erase(gone);
    // What stood on both sides of it is one place now.
    if (gone > 0 && gone < fPlaces.size() && fPlaces[gone - 1].folder == fPlaces[gone].folder) {
        Erase(gone == fShown ? gone - 1 : gone);
    }
}

void PlaceHistory::Erase(size_t index)
{
    fPlaces.erase(fPlaces.begin() + static_cast<std::ptrdiff_t>(index));
    if (index < fShown || (index == fShown && fShown > 0)) {
        --fShown;
    }
}

} // namespace norvane
