#include "viewer/HexView.h"

#include <InterfaceDefs.h>
#include <Message.h>

#include <algorithm>
#include <cmath>

namespace norvane {

namespace {

// A float counts as far as this without leaving one out; more rows share values.
constexpr int64 kMostValues = int64{1} << 20;
// How the bar's own steps are told from dragging, which moves by more of so many values.
constexpr float kSmallStep = 1;
constexpr float kLargeStep = 2;

} // namespace

HexBar::HexBar(BRect frame, HexView* view)
    : BScrollBar(frame, "HexBar", nullptr, 0, 0, B_VERTICAL), fView(view)
{
}

void HexBar::ShowTop(int64 top, int64 rows, int64 room)
{
    fIsShowing = true;
    fLast = std::max<int64>(0, rows - room);
    const bool isExact = fLast <= kMostValues;
    const auto most = static_cast<float>(std::min(fLast, kMostValues));
    auto value = static_cast<float>(top);
    if (!isExact) {
        const double share = static_cast<double>(top) / static_cast<double>(fLast);
        value = std::round(static_cast<float>(share * kMostValues));
        // Away from the ends there is always room for a step.
        value = top == 0       ? 0
                : top == fLast ? most
                               : std::clamp(value, kLargeStep, most - kLargeStep);
    }
    SetProportion(rows > room ? static_cast<float>(room) / static_cast<float>(rows) : 1.0f);
    SetRange(0, most);
    SetSteps(kSmallStep, isExact ? static_cast<float>(std::max<int64>(2, room - 1)) : kLargeStep);
    SetValue(value);
    fTold = Value();
    fIsShowing = false;
}

void HexBar::ValueChanged(float newValue)
{
    if (fIsShowing) {
        return;
    }
    const float moved = newValue - fTold;
    if (fLast <= kMostValues) {
        fView->SetTop(static_cast<int64>(newValue));
    } else if (std::fabs(moved) == kSmallStep) {
        fView->SetTop(fView->Top() + (moved < 0 ? -1 : 1));
    } else if (std::fabs(moved) == kLargeStep) {
        const int64 page = std::max<int64>(1, fView->Room() - 1);
        fView->SetTop(fView->Top() + (moved < 0 ? -page : page));
    } else {
        const double share = static_cast<double>(newValue) / kMostValues;
        fView->SetTop(std::llround(share * static_cast<double>(fLast)));
    }
}

void HexBar::MessageReceived(BMessage* message)
{
    if (message->what == B_MOUSE_WHEEL_CHANGED) {
        fView->MessageReceived(message);
    } else {
        BScrollBar::MessageReceived(message);
    }
}

} // namespace norvane
