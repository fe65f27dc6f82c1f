#include <ListItem.h>

#include "interface/views/Look.h"

#include <Font.h>
#include <ListView.h>
#include <View.h>

#include <cmath>

namespace {

constexpr float kTextIndent = 5;

} // namespace

BListItem::BListItem(uint32 outlineLevel, bool expanded)
    : fOutlineLevel(outlineLevel), fIsExpanded(expanded)
{
}

BListItem::~BListItem() = default;

void BListItem::SetHeight(float height)
{
    if (fHeight == height) {
        return;
    }
    fHeight = height;
    if (fOwner != nullptr) {
        fOwner->HeightsChanged();
    }
}

void BListItem::SetEnabled(bool enabled)
{
    fIsEnabled = enabled;
}

void BListItem::Update(BView* owner, const BFont* font)
{
    font_height height;
    font->GetHeight(&height);
    SetWidth(owner->Bounds().Width());
    SetHeight(std::ceil(height.ascent + height.descent + height.leading));
}

BStringItem::BStringItem(const char* text, uint32 outlineLevel, bool expanded)
    : BListItem(outlineLevel, expanded), fText(text != nullptr ? text : "")
{
}

void BStringItem::SetText(const char* text)
{
    fText = text != nullptr ? text : "";
}

void BStringItem::DrawItem(BView* owner, BRect frame, bool complete)
{
    if (IsSelected()) {
        kits::look::Fill(owner, frame, kits::look::kSelectedRow);
        owner->SetLowColor(kits::look::kSelectedRow);
    } else {
        const rgb_color ground = owner->ViewColor();
        if (complete) {
            kits::look::Fill(owner, frame, ground);
        }
        owner->SetLowColor(ground);
    }
    owner->SetHighColor(IsEnabled() ? kits::look::kText : kits::look::kDisabledText);
    const float indent = kTextIndent + 10.0f * static_cast<float>(OutlineLevel());
    owner->DrawString(fText.c_str(), BPoint(frame.left + indent, frame.top + fBaselineOffset));
}

void BStringItem::Update(BView* owner, const BFont* font)
{
    BListItem::Update(owner, font);
    font_height height;
    font->GetHeight(&height);
    fBaselineOffset = std::ceil(height.ascent) + std::floor(height.leading / 2);
}
