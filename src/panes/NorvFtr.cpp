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
constexpr float kSideMargin = 9; // as the text's at the other end
constexpr float kGap = 18;       // between two texts
constexpr rgb_color kQuiet = {112, 112, 112, 255};
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
    for (const std::string& text : {fMarks, fSpace}) {
        description->name += text.empty() ? "" : "; " + text;
    }
}

void NorvFtr::Draw(BRect)
{
    DrawStrip(*this, fText.c_str(), fBaseline);
    const float right = DrawAtRight(fMarks, Bounds().right - kSideMargin);
    SetHighColor(kQuiet);
    DrawAtRight(fSpace, right);
    SetHighColor(DirPane::kFooterText);
}

/// Draws a text that ends there, when it has room, and returns where one before it would end.
float NorvFtr::DrawAtRight(const std::string& text, float right)
{
    const float left = std::floor(right - StringWidth(text.c_str()));
    if (text.empty() || left < kSideMargin + StringWidth(fText.c_str()) + kGap) {
        return right;
    }
    SetDrawingMode(B_OP_OVER);
    DrawString(text.c_str(), BPoint(left, StripTextBottom(fBaseline)));
    SetDrawingMode(B_OP_COPY);
    return left - kGap;
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
