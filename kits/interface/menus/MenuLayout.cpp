// Where the items of a menu lie, and how large that makes it.

#include <Menu.h>

#include <Font.h>

#include <algorithm>
#include <cmath>

namespace {

constexpr float kShortcutGap = 24; // between the longest label and the longest shortcut

} // namespace

void BMenu::InvalidateLayout()
{
    fIsLaidOut = false;
    if (Window() != nullptr) {
        LayOutItems();
        if (fResizesToFit) {
            ResizeToPreferred();
        }
        Invalidate();
    }
}

void BMenu::SetItemMargins(float left, float top, float right, float bottom)
{
    WillChange();
    fMargins = BRect(left, top, right, bottom);
    InvalidateLayout();
}

void BMenu::GetItemMargins(float* left, float* top, float* right, float* bottom) const
{
    *left = fMargins.left;
    *top = fMargins.top;
    *right = fMargins.right;
    *bottom = fMargins.bottom;
}

void BMenu::LayOutItems()
{
    if (fIsLaidOut) {
        return;
    }
    fIsLaidOut = true;
    font_height height;
    GetFontHeight(&height);
    fFontAscent = height.ascent;
    fFontHeight = height.ascent + height.descent;
    if (fLayout == B_ITEMS_IN_ROW) {
        LayOutRow();
    } else {
        LayOutColumn();
    }
}

// One unit around the items is the edge.
void BMenu::LayOutRow()
{
    float left = 1;
    float tallest = fFontHeight;
    for (int32 i = 0; i < CountItems(); i++) {
        float width = 0;
        float height = 0;
        ItemAt(i)->GetContentSize(&width, &height);
        tallest = std::max(tallest, height);
        const float right = left + fMargins.left + width + fMargins.right - 1;
        ItemAt(i)->fFrame = BRect(left, 1, right, 1);
        left = right + 1;
    }
    const float bottom = fMargins.top + tallest + fMargins.bottom;
    for (int32 i = 0; i < CountItems(); i++) {
        ItemAt(i)->fFrame.bottom = bottom;
    }
    fContentWidth = left;
    fContentHeight = bottom + 1;
}

void BMenu::LayOutColumn()
{
    float widest = 0;
    float shortcut = 0;
    float top = 1;
    for (int32 i = 0; i < CountItems(); i++) {
        BMenuItem* item = ItemAt(i);
        float width = 0;
        float height = 0;
        item->GetContentSize(&width, &height);
        widest = std::max(widest, width);
        const std::string text = item->KeyText();
        if (!text.empty()) {
            shortcut = std::max(shortcut, std::ceil(StringWidth(text.c_str())) + kShortcutGap);
        }
        item->fFrame = BRect(1, top, 1, top + fMargins.top + height + fMargins.bottom - 1);
        top = item->fFrame.bottom + 1;
    }
    const float right = fMargins.left + widest + shortcut + fMargins.right;
    for (int32 i = 0; i < CountItems(); i++) {
        ItemAt(i)->fFrame.right = right;
    }
    fContentWidth = right + 1;
    fContentHeight = top;
}

void BMenu::InvalidateItem(BMenuItem* item)
{
    if (Window() != nullptr) {
        Invalidate(item->fFrame);
    }
}

BMenuItem* BMenu::ItemUnder(BPoint where) const
{
    for (int32 i = 0; i < CountItems(); i++) {
        if (ItemAt(i)->fFrame.Contains(where)) {
            return ItemAt(i);
        }
    }
    return nullptr;
}

void BMenu::GetPreferredSize(float* width, float* height)
{
    LayOutItems();
    *width = fContentWidth;
    *height = fContentHeight;
}

void BMenu::ResizeToPreferred()
{
    float width = 0;
    float height = 0;
    GetPreferredSize(&width, &height);
    ResizeTo(width, height);
}
