#pragma once

#include "properties/EntryFacts.h"

#include <View.h>

#include <vector>

namespace norvane {

/// Lines of what is known: labels in one column, what they are about beside them, cut in the middle
/// where there is no room.
class FactsView : public BView
{
public:
    explicit FactsView(const char* name);

    /// Shows other lines; only what differs is drawn again. The height is the caller's to set.
    void SetTo(std::vector<Fact> facts);
    /// Where what they are about begins.
    void SetDivider(float divider);
    /// The room that labels need, and that all lines do.
    float WidestLabel() const;
    float NeededHeight() const;

    // BView
    void Describe(BViewDescription* description) const override;
    void Draw(BRect updateRect) override;

private:
    BRect LineAt(size_t index) const;

    std::vector<Fact> fFacts;
    float fDivider = 0;
};

} // namespace norvane
