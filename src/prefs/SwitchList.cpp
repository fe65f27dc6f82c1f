#include "prefs/SwitchList.h"

#include <CheckBox.h>
#include <InterfaceDefs.h>
#include <ScrollBar.h>
#include <ScrollView.h>

#include <algorithm>

namespace norvane {

namespace {

constexpr rgb_color kGrey = {216, 216, 216, 255};
constexpr float kTop = 12;   // above the first box
constexpr float kBottom = 5; // below the last one
constexpr float kStep = 20;  // from one box to the next
constexpr float kBoxHeight = 19;

class SwitchBox : public BCheckBox
{
public:
    SwitchBox(BRect frame, const char* name, const char* label, SwitchList& list)
        : BCheckBox(frame, name, label, nullptr, B_FOLLOW_LEFT_RIGHT | B_FOLLOW_TOP), fList(list)
    {
    }

    // BView
    void MakeFocus(bool focus) override
    {
        BCheckBox::MakeFocus(focus);
        if (focus) {
            fList.ScrollIntoSight(Frame());
        }
    }

private:
    SwitchList& fList; // the parent
};

} // namespace

SwitchList::SwitchList(BRect frame)
    : BView(frame, "Switches", B_FOLLOW_ALL_SIDES, B_WILL_DRAW | B_FRAME_EVENTS)
{
    SetViewColor(kGrey);
    SetLowColor(kGrey);
}

BCheckBox* SwitchList::AddSwitch(const char* name, const char* label)
{
    const float top = kTop + kStep * static_cast<float>(fBoxes.size());
    const BRect place(0, top, Bounds().right, top + kBoxHeight);
    fBoxes.push_back(new SwitchBox(place, name, label, *this));
    AddChild(fBoxes.back());
    FitBar();
    return fBoxes.back();
}

float SwitchList::ContentsBottom() const
{
    return fBoxes.empty() ? 0 : fBoxes.back()->Frame().bottom + kBottom;
}

void SwitchList::ScrollIntoSight(BRect place)
{
    if (fBar == nullptr) {
        return;
    }
    const BRect seen = Bounds();
    if (place.top < seen.top) {
        fBar->SetValue(place.top <= kTop ? 0 : place.top);
    } else if (place.bottom > seen.bottom) {
        fBar->SetValue(std::min(place.bottom + kBottom - seen.Height(), place.top));
    }
}

void SwitchList::AttachedToWindow()
{
    FitBar();
}

void SwitchList::FrameResized(float, float)
{
    FitBar();
}

void SwitchList::TargetedByScrollView(BScrollView* scrollView)
{
    fBar = scrollView != nullptr ? scrollView->ScrollBar(B_VERTICAL) : nullptr;
    fHidesBar = false;
    FitBar();
}

void SwitchList::FitBar()
{
    if (fBar == nullptr) {
        return;
    }
    const float height = Bounds().Height();
    const float contents = ContentsBottom();
    const float hidden = std::max(0.0f, contents - height);
    fBar->SetRange(0, hidden);
    fBar->SetProportion(hidden > 0 ? height / contents : 1);
    fBar->SetSteps(kStep, std::max(kStep, height - kStep));
    if (fHidesBar != (hidden == 0)) {
        fHidesBar = !fHidesBar;
        fHidesBar ? fBar->Hide() : fBar->Show();
    }
}

} // namespace norvane
