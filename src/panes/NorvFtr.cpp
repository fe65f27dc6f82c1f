#include "panes/NorvFtr.h"

#include "clv/ListLock.h"
#include "panes/DirPane.h"
#include "panes/StripDrawing.h"

#include <StatusBar.h>
#include <ViewDescription.h>

#include <cmath>

namespace norvane {

namespace {

constexpr float kBarHeight = 22;
constexpr float kMarksMargin = 9; // as the text's at the other end
constexpr float kMarksGap = 18;   // between the two
constexpr float kBarTop = -14;    // the bar's line of text is cut off by the footer's edge

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
    description->name = fMarks.empty() ? fText : fText + "; " + fMarks;
}

void NorvFtr::Draw(BRect)
{
    DrawStrip(*this, fText.c_str(), fBaseline);
    DrawMarks();
}

void NorvFtr::DrawMarks()
{
    const float left = Bounds().right - kMarksMargin - StringWidth(fMarks.c_str());
    if (fMarks.empty() || left < kMarksMargin + StringWidth(fText.c_str()) + kMarksGap) {
        return;
    }
    SetDrawingMode(B_OP_OVER);
    DrawString(fMarks.c_str(), BPoint(std::floor(left), StripTextBottom(fBaseline)));
    SetDrawingMode(B_OP_COPY);
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
