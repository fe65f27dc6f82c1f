#include "panes/NorvFtr.h"

#include "clv/ListLock.h"
#include "panes/DirPane.h"
#include "panes/NVHeader.h"

#include <StatusBar.h>
#include <ViewDescription.h>

namespace norvane {

namespace {

constexpr float kBarHeight = 22;
constexpr float kBarTop = -14; // the bar's line of text is cut off by the footer's edge

} // namespace

NorvFtr::NorvFtr(BRect frame)
    : BView(frame, "Footer", B_FOLLOW_LEFT | B_FOLLOW_BOTTOM,
            B_WILL_DRAW | B_FULL_UPDATE_ON_RESIZE),
      fBaseline(StripBaseline()), fBar(new BStatusBar(Bounds(), "progress"))
{
    fBar->SetBarHeight(kBarHeight);
    SetViewColor(DirPane::kBackground);
    SetLowColor(DirPane::kBackground);
    SetHighColor(DirPane::kFooterText);
}

NorvFtr::~NorvFtr()
{
    if (fBar->Parent() == nullptr) {
        delete fBar;
    }
}

void NorvFtr::Describe(BViewDescription* description) const
{
    description->role = BViewDescription::Role::kStaticText;
    description->name = fText;
}

void NorvFtr::Draw(BRect)
{
    DrawStrip(*this, fText.c_str(), fBaseline);
}

void NorvFtr::MouseDown(BPoint)
{
    if (auto* pane = dynamic_cast<DirPane*>(Parent())) {
        pane->SetFocus();
    }
}

void NorvFtr::ResizeTo(float width, float height)
{
    fBar->MoveTo(0, kBarTop);
    fBar->ResizeTo(width, height);
    BView::ResizeTo(width, height);
}

void NorvFtr::Start(float max)
{
    ListLock lock(*this);
    if (fBar->Parent() == nullptr) {
        AddChild(fBar);
    }
    fBar->Reset();
    fBar->SetMaxValue(max);
}

void NorvFtr::Stop()
{
    ListLock lock(*this);
    if (fBar->Parent() != nullptr) {
        RemoveChild(fBar);
    }
}

void NorvFtr::Update(float steps)
{
    fBar->Update(steps);
}

void NorvFtr::SetMax(int max)
{
    fBar->SetMaxValue(static_cast<float>(max));
}

} // namespace norvane
