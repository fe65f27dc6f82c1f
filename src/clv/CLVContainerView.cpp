#include "clv/CLVContainerView.h"

#include "clv/ScrollViewCorner.h"

#include <InterfaceDefs.h>

#include <algorithm>

namespace norvane {

CLVContainerView::CLVContainerView(const char* name, BView* list, BView* strip, uint32 resizingMode,
                                   uint32 flags, bool horizontal, bool vertical,
                                   border_style border)
    : BScrollView(name, list, resizingMode, flags, horizontal, vertical, border), fList(list),
      fStrip(strip)
{
    AddChild(strip);
    if (horizontal && vertical) {
        fCorner = new ScrollViewCorner(0, 0);
        AddChild(fCorner); // adopted
    }
    SetViewColor(216, 216, 216);
}

CLVContainerView::~CLVContainerView()
{
    if (fList != nullptr && fFarewell != nullptr) {
        fFarewell();
    }
}

void CLVContainerView::ResizeContentTo(float width, float height)
{
    if (fList == nullptr) {
        return;
    }
    const float stripHeight = fStrip->Frame().Height();
    const float inset = BorderInset();
    const float contentWidth = std::max(width, 0.0f);
    const float contentHeight = std::max(height, stripHeight + 1);
    BScrollBar* verticalBar = ScrollBar(B_VERTICAL);
    BScrollBar* horizontalBar = ScrollBar(B_HORIZONTAL);
    const float right = inset + contentWidth + 1;
    const float bottom = inset + contentHeight + 1;
    // The container first: its children follow its sides, and get their own frames after that.
    ResizeTo((verticalBar != nullptr ? right + B_V_SCROLL_BAR_WIDTH : right - 1) + inset,
             (horizontalBar != nullptr ? bottom + B_H_SCROLL_BAR_HEIGHT : bottom - 1) + inset);
    fStrip->MoveTo(inset, inset);
    fStrip->ResizeTo(contentWidth, stripHeight);
    fList->MoveTo(inset, inset + stripHeight + 1);
    fList->ResizeTo(contentWidth, contentHeight - stripHeight - 1);
    if (verticalBar != nullptr) {
        verticalBar->MoveTo(right, inset);
        verticalBar->ResizeTo(B_V_SCROLL_BAR_WIDTH, contentHeight + (fCorner != nullptr ? 1 : 0));
    }
    if (horizontalBar != nullptr) {
        horizontalBar->MoveTo(inset, bottom);
        horizontalBar->ResizeTo(contentWidth + (fCorner != nullptr ? 1 : 0), B_H_SCROLL_BAR_HEIGHT);
    }
    if (fCorner != nullptr) {
        fCorner->MoveTo(right + 1, bottom + 1); // the bars' outer lines meet before it
    }
}

float CLVContainerView::BorderInset() const
{
    switch (Border()) {
    case B_FANCY_BORDER:
        return 2;
    case B_PLAIN_BORDER:
        return 1;
    default:
        return 0;
    }
}

} // namespace norvane
