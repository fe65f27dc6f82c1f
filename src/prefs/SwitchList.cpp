#include "prefs/SwitchList.h"

#include <CheckBox.h>
#include <InterfaceDefs.h>
#include <Menu.h>
#include <MenuField.h>
#include <ScrollBar.h>
#include <ScrollView.h>

#include <algorithm>
#include <cmath>

namespace norvane {

namespace {

constexpr rgb_color kGrey = {216, 216, 216, 255};
constexpr float kTop = 12;   // above the first box
constexpr float kBottom = 5; // below the last one
constexpr float kStep = 20;  // from one box to the next
constexpr float kBoxHeight = 19;
constexpr float kMenuGap = 3; // above a field with a menu, which is higher
constexpr float kMenuHeight = 20;
constexpr float kLabelGap = 8;

/// A control of the list that comes into sight with the focus.
template<typename Control>
class Switch : public Control
{
public:
    template<typename... Arguments>
    explicit Switch(SwitchList& list, Arguments... arguments) : Control(arguments...), fList(list)
    {
    }

    // BView
    void MakeFocus(bool focus) override
    {
        Control::MakeFocus(focus);
        if (focus) {
            fList.ScrollIntoSight(Control::Frame());
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
    auto* box = new Switch<BCheckBox>(*this, NextPlace(kBoxHeight), name, label, nullptr,
                                      B_FOLLOW_LEFT_RIGHT | B_FOLLOW_TOP);
    fEntries.push_back(box);
    AddChild(box);
    FitBar();
    return box;
}

BMenuField* SwitchList::AddMenu(const char* name, const char* label, BMenu* menu)
{
    const BRect place = NextPlace(kMenuHeight).OffsetByCopy(0, kMenuGap);
    auto* field = new Switch<BMenuField>(*this, place, name, label, menu);
    fEntries.push_back(field);
    AddChild(field);
    field->SetDivider(std::ceil(field->StringWidth(label)) + kLabelGap);
    float width = 0;
    float height = 0;
    field->GetPreferredSize(&width, &height);
    field->ResizeTo(std::min(width, Bounds().Width()), kMenuHeight);
    FitBar();
    return field;
}

BRect SwitchList::NextPlace(float height) const
{
    const float top = fEntries.empty() ? kTop : fEntries.back()->Frame().bottom + 1;
    return BRect(0, top, Bounds().right, top + height);
}

float SwitchList::ContentsBottom() const
{
    return fEntries.empty() ? 0 : fEntries.back()->Frame().bottom + kBottom;
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
