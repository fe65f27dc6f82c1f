#include <View.h>

#include "ToolTips.h"
#include "ViewHost.h"

#include <ToolTip.h>

#include <cstring>
#include <utility>

// A view's tip.

void BView::SetToolTip(const char* text)
{
    if (text == nullptr || *text == '\0') {
        SetToolTip(static_cast<BToolTip*>(nullptr));
        return;
    }
    const auto* shown = dynamic_cast<const BTextToolTip*>(fToolTip);
    if (shown == nullptr || std::strcmp(shown->Text(), text) != 0) {
        const BReference<BToolTip> tip(new BTextToolTip(text), true);
        SetToolTip(tip.Get());
    }
}

void BView::SetToolTip(BToolTip* tip)
{
    if (tip == fToolTip) {
        return;
    }
    if (tip != nullptr) {
        tip->AcquireReference();
    }
    if (BToolTip* former = std::exchange(fToolTip, tip)) {
        former->ReleaseReference();
    }
}

bool BView::GetToolTipAt(BPoint, BToolTip** tip)
{
    *tip = fToolTip;
    return fToolTip != nullptr;
}

void BView::ShowToolTip(BToolTip* tip)
{
    CheckLock();
    if (fHost != nullptr) {
        kits::ToolTips::Of(*fHost->Owner()).Show(*this, tip != nullptr ? tip : fToolTip);
    }
}

void BView::HideToolTip()
{
    CheckLock();
    if (fHost != nullptr) {
        kits::ToolTips::Of(*fHost->Owner()).Hide(*this);
    }
}
