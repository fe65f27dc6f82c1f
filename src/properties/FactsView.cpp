#include "properties/FactsView.h"

#include "fileops/windows/DialogLayout.h"

#include <Font.h>
#include <String.h>
#include <ViewDescription.h>

#include <algorithm>
#include <cmath>

namespace norvane {

namespace {

constexpr rgb_color kGrey = {216, 216, 216, 255};
constexpr rgb_color kLabel = {90, 90, 90, 255};
constexpr rgb_color kText = {0, 0, 0, 255};
constexpr float kBetweenLines = 3;

float LineStep()
{
    return LineHeight() + kBetweenLines;
}

/// As one line.
std::string OnOneLine(std::string text)
{
    std::replace_if(
        text.begin(), text.end(), [](char c) { return c == '\n' || c == '\t'; }, ' ');
    return text;
}

} // namespace

FactsView::FactsView(const char* name)
    : BView(BRect(0, 0, 10, 10), name, B_FOLLOW_NONE, B_WILL_DRAW | B_FULL_UPDATE_ON_RESIZE)
{
    SetViewColor(kGrey);
    SetLowColor(kGrey);
}

void FactsView::SetTo(std::vector<Fact> facts)
{
    const size_t lines = std::max(facts.size(), fFacts.size());
    facts.swap(fFacts); // the old ones are in `facts` now
    for (size_t i = 0; i < lines && Window() != nullptr; i++) {
        if (i >= facts.size() || i >= fFacts.size() || facts[i] != fFacts[i]) {
            Invalidate(LineAt(i));
        }
    }
}

void FactsView::SetDivider(float divider)
{
    if (divider != fDivider) {
        fDivider = divider;
        if (Window() != nullptr) {
            Invalidate();
        }
    }
}

float FactsView::WidestLabel() const
{
    float widest = 0;
    for (const Fact& fact : fFacts) {
        widest = std::max(widest, std::ceil(BFont().StringWidth(fact.label.c_str())));
    }
    return widest;
}

float FactsView::NeededHeight() const
{
    return static_cast<float>(fFacts.size()) * LineStep();
}

BRect FactsView::LineAt(size_t index) const
{
    const float top = static_cast<float>(index) * LineStep();
    return BRect(0, top, Bounds().right, top + LineStep() - 1);
}

void FactsView::Describe(BViewDescription* description) const
{
    description->role = BViewDescription::Role::kStaticText;
    for (const Fact& fact : fFacts) {
        description->value += fact.label + ": " + fact.value + "\n";
    }
}

void FactsView::Draw(BRect updateRect)
{
    BFont font;
    GetFont(&font);
    font_height height;
    font.GetHeight(&height);
    for (size_t i = 0; i < fFacts.size(); i++) {
        const BRect line = LineAt(i);
        if (!line.Intersects(updateRect)) {
            continue;
        }
        const float base = line.top + std::ceil(height.ascent);
        SetHighColor(kLabel);
        DrawString(fFacts[i].label.c_str(), BPoint(0, base));
        BString value(OnOneLine(fFacts[i].value).c_str());
        font.TruncateString(&value, B_TRUNCATE_MIDDLE, Bounds().right - fDivider);
        SetHighColor(kText);
        DrawString(value.String(), BPoint(fDivider, base));
    }
}

} // namespace norvane
