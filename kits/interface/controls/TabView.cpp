#include <TabView.h>

#include "TabWidths.h"
#include "interface/views/Look.h"

#include <AppDefs.h>
#include <Font.h>
#include <Message.h>
#include <ViewDescription.h>
#include <Window.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

constexpr float kBorder = 2;      // around the container
constexpr float kFirstLeft = 3;   // of the first tab
constexpr float kLabelMargin = 9; // at both sides of a label
constexpr float kUsualWidth = 75;
constexpr float kLabelRoom = 8; // above and below a label
constexpr float kRise = 2;      // how far the selected tab stands out from the others
constexpr float kOthersTop = 3;

constexpr rgb_color kOtherFace = {200, 200, 200, 255};

} // namespace

BTabView::BTabView(BRect frame, const char* name, button_width width, uint32 resizingMode,
                   uint32 flags)
    : BView(frame, name, resizingMode, flags | B_FULL_UPDATE_ON_RESIZE),
      fContainer(new BView(BRect(0, 0, 0, 0), "_container_", B_FOLLOW_ALL_SIDES, 0)),
      fTabWidth(width)
{
    font_height font;
    GetFontHeight(&font);
    fTabHeight = font.ascent + font.descent + kLabelRoom;
    const BRect inside = ContainerFrame();
    fContainer->MoveTo(inside.LeftTop());
    fContainer->ResizeTo(inside.Width(), inside.Height());
    AddChild(fContainer); // adopted
    SetViewColor(kits::look::kGround);
    fContainer->SetViewColor(kits::look::kGround);
}

BTabView::~BTabView()
{
    for (const std::unique_ptr<BTab>& tab : fTabs) {
        tab->fOwner = nullptr;
    }
    fTabs.clear(); // the pages leave the container with them
}

// Tabs

void BTabView::AddTab(BView* page, BTab* tab)
{
    std::unique_ptr<BTab> added(tab != nullptr ? tab : new BTab);
    if (page != nullptr) {
        added->SetView(page);
    }
    fTabs.push_back(std::move(added));
    fTabs.back()->fOwner = this;
    PutIn(*fTabs.back());
    if (fSelection < 0) {
        Select(0);
    }
    InvalidateTabs();
}

BTab* BTabView::RemoveTab(int32 index)
{
    if (TabAt(index) == nullptr) {
        return nullptr;
    }
    // Another page is in front before this one goes, so that the focus has somewhere to be.
    if (index == fSelection && CountTabs() > 1) {
        Select(index + 1 < CountTabs() ? index + 1 : index - 1);
    }
    std::unique_ptr<BTab> removed = std::move(fTabs[static_cast<size_t>(index)]);
    TakeOut(*removed);
    removed->fOwner = nullptr;
    fTabs.erase(fTabs.begin() + index);
    if (fTabs.empty()) {
        fSelection = -1;
    } else if (fSelection > index) {
        fSelection--;
    }
    InvalidateTabs();
    return removed.release(); // to the caller
}

// A page behind the others is hidden before it comes in, so that its first frame is never seen.
void BTabView::PutIn(BTab& tab)
{
    if (tab.fView == nullptr) {
        return;
    }
    if (!tab.IsSelected()) {
        tab.fView->Hide();
    }
    fContainer->AddChild(tab.fView);
}

void BTabView::TakeOut(BTab& tab)
{
    if (tab.fView == nullptr) {
        return;
    }
    fContainer->RemoveChild(tab.fView);
    if (!tab.IsSelected()) {
        tab.fView->Show();
    }
}

BTab* BTabView::TabAt(int32 index) const
{
    return index >= 0 && index < CountTabs() ? fTabs[static_cast<size_t>(index)].get() : nullptr;
}

BView* BTabView::ViewForTab(int32 index) const
{
    const BTab* tab = TabAt(index);
    return tab != nullptr ? tab->View() : nullptr;
}

int32 BTabView::IndexOf(const BTab& tab) const
{
    const auto place = std::find_if(fTabs.begin(), fTabs.end(),
                                    [&tab](const auto& other) { return other.get() == &tab; });
    return place != fTabs.end() ? static_cast<int32>(place - fTabs.begin()) : -1;
}

// Choosing

void BTabView::Select(int32 index)
{
    BTab* tab = TabAt(index);
    if (tab == nullptr || index == fSelection) {
        return;
    }
    const BTab* former = TabAt(fSelection);
    const bool keepsFocus = former != nullptr && HasFocusIn(*former);
    fSelection = index;
    if (tab->fView != nullptr) {
        tab->fView->Show();
    }
    if (keepsFocus) {
        MakeFocus(true);
    }
    if (former != nullptr && former->fView != nullptr) {
        former->fView->Hide();
    }
    InvalidateTabs();
}

bool BTabView::HasFocusIn(const BTab& tab) const
{
    const BView* view = Window() != nullptr ? Window()->CurrentFocus() : nullptr;
    while (view != nullptr && view != tab.fView) {
        view = view->Parent();
    }
    return view != nullptr;
}

// The next tab in a direction that a person may choose; none is chosen beyond the ends.
void BTabView::Choose(int32 from, int32 direction)
{
    int32 index = from;
    while (TabAt(index) != nullptr && !TabAt(index)->IsEnabled()) {
        index += direction;
    }
    Select(index);
}

bool BTabView::ChooseByKey(const BMessage& key)
{
    const char* bytes = nullptr;
    const auto down = static_cast<uint32>(key.GetInt32("modifiers", 0));
    if (key.FindString("bytes", &bytes) != B_OK || (down & B_COMMAND_KEY) == 0) {
        return false;
    }
    const bool isTab = bytes[0] == B_TAB;
    if (!isTab && bytes[0] != B_PAGE_UP && bytes[0] != B_PAGE_DOWN) {
        return false;
    }
    const bool isBack = isTab ? (down & B_SHIFT_KEY) != 0 : bytes[0] == B_PAGE_UP;
    const int32 direction = isBack ? -1 : 1;
    const int32 before = fSelection;
    Choose(fSelection + direction, direction);
    if (isTab && fSelection == before) {
        Choose(isBack ? CountTabs() - 1 : 0, direction); // round the end
    }
    return true;
}

void BTabView::MouseDown(BPoint where)
{
    const BMessage* press = Window()->CurrentMessage();
    const int32 button = press != nullptr ? press->GetInt32("button", B_PRIMARY_MOUSE_BUTTON)
                                          : int32(B_PRIMARY_MOUSE_BUTTON);
    if (button != B_PRIMARY_MOUSE_BUTTON) {
        return;
    }
    for (int32 i = 0; i < CountTabs(); i++) {
        if (TabAt(i)->IsEnabled() && TabFrame(i).Contains(where)) {
            Select(i);
            return;
        }
    }
}

void BTabView::KeyDown(const char* bytes, int32 byteCount)
{
    const BMessage* key = Window() != nullptr ? Window()->CurrentMessage() : nullptr;
    const auto down = static_cast<uint32>(key != nullptr ? key->GetInt32("modifiers", 0) : 0);
    const bool isPlain = (down & (B_COMMAND_KEY | B_OPTION_KEY)) == 0;
    switch (byteCount == 1 && isPlain ? bytes[0] : '\0') {
    case B_LEFT_ARROW:
    case B_UP_ARROW:
        Choose(fSelection - 1, -1);
        break;
    case B_RIGHT_ARROW:
    case B_DOWN_ARROW:
        Choose(fSelection + 1, 1);
        break;
    case B_HOME:
        Choose(0, 1);
        break;
    case B_END:
        Choose(CountTabs() - 1, -1);
        break;
    default:
        if (key == nullptr || !ChooseByKey(*key)) {
            BView::KeyDown(bytes, byteCount);
        }
    }
}

// Keys that no view of the page had a use for come by here.
void BTabView::MessageReceived(BMessage* message)
{
    if (message->what != B_KEY_DOWN || !ChooseByKey(*message)) {
        BView::MessageReceived(message);
    }
}

void BTabView::MakeFocus(bool focused)
{
    if (focused != IsFocus()) {
        BView::MakeFocus(focused);
        InvalidateTabs();
    }
}

void BTabView::WindowActivated(bool active)
{
    BView::WindowActivated(active);
    if (IsFocus()) {
        InvalidateTabs();
    }
}

void BTabView::Describe(BViewDescription* description) const
{
    description->role = BViewDescription::Role::kTabList;
    const std::vector<BRect> frames = LayOut();
    for (int32 i = 0; i < CountTabs(); i++) {
        BViewDescription::Part part;
        part.thing = TabAt(i);
        part.role = BViewDescription::Role::kTab;
        part.states = TabAt(i)->IsEnabled() ? 0 : uint32{BViewDescription::kDisabled};
        part.states |= i == fSelection ? uint32{BViewDescription::kSelected} : 0;
        part.frame = frames[static_cast<size_t>(i)];
        part.name = TabAt(i)->Label();
        if (i == fSelection) {
            description->value = part.name;
        }
        description->parts.push_back(std::move(part));
    }
}

// Where things are

void BTabView::SetTabWidth(button_width width)
{
    fTabWidth = width;
    InvalidateTabs();
}

void BTabView::SetTabHeight(float height)
{
    fTabHeight = std::max(1.0f, std::round(height));
    const BRect inside = ContainerFrame();
    fContainer->MoveTo(inside.LeftTop());
    fContainer->ResizeTo(inside.Width(), inside.Height());
    if (Window() != nullptr) {
        Invalidate();
    }
}

BRect BTabView::ContainerFrame() const
{
    BRect frame = Bounds();
    frame.top += fTabHeight;
    return frame.InsetByCopy(kBorder, kBorder);
}

BRect BTabView::TabFrame(int32 index) const
{
    return TabAt(index) != nullptr ? LayOut()[static_cast<size_t>(index)] : BRect();
}

std::vector<BRect> BTabView::LayOut() const
{
    std::vector<float> liked;
    std::vector<float> needed;
    for (const std::unique_ptr<BTab>& tab : fTabs) {
        needed.push_back(std::ceil(StringWidth(tab->Label())) + 2 * kLabelMargin);
        const float least = fTabWidth == B_WIDTH_AS_USUAL ? kUsualWidth : 0;
        liked.push_back(std::max(needed.back(), least));
    }
    if (fTabWidth == B_WIDTH_FROM_WIDEST && !liked.empty()) {
        liked.assign(liked.size(), *std::max_element(liked.begin(), liked.end()));
    }
    const float room = Bounds().Width() - 2 * kFirstLeft;
    std::vector<BRect> frames;
    float left = kFirstLeft;
    // Neighbours share the line between them.
    for (const float width : kits::ShareTabWidths(liked, needed, room)) {
        frames.emplace_back(left, 0, left + width, fTabHeight - 1);
        left += width;
    }
    return frames;
}

void BTabView::InvalidateTabs()
{
    if (Window() != nullptr) {
        Invalidate(BRect(0, 0, Bounds().right, fTabHeight + kBorder));
    }
}

// Drawing

void BTabView::AttachedToWindow()
{
    BView::AttachedToWindow();
    if (Parent() != nullptr) {
        SetViewColor(Parent()->ViewColor());
    }
    SetLowColor(ViewColor());
    fContainer->SetViewColor(ViewColor());
}

void BTabView::Draw(BRect)
{
    DrawBorder();
    const std::vector<BRect> frames = LayOut();
    for (int32 i = 0; i < CountTabs(); i++) {
        if (i != fSelection) {
            BRect frame = frames[static_cast<size_t>(i)];
            frame.top = kOthersTop;
            DrawTab(*TabAt(i), frame, false);
        }
    }
    if (fSelection >= 0) {
        BRect frame = frames[static_cast<size_t>(fSelection)];
        frame.left -= kRise;
        frame.right += kRise;
        DrawTab(*TabAt(fSelection), frame, true);
    }
}

void BTabView::DrawBorder()
{
    BRect border = Bounds();
    border.top += fTabHeight;
    SetHighColor(kits::look::kOutline);
    StrokeRect(border);
    kits::look::Frame(this, border.InsetByCopy(1, 1), kits::look::kShine, kits::look::kSoftShadow);
}

// The selected tab has no line below it: it and the page are one piece.
void BTabView::DrawTab(const BTab& tab, BRect frame, bool isSelected)
{
    const float bottom = isSelected ? fTabHeight + 1 : fTabHeight - 1;
    const rgb_color face = isSelected ? ViewColor() : kOtherFace;
    kits::look::Fill(this, BRect(frame.left + 1, frame.top + 1, frame.right - 1, bottom), face);
    SetHighColor(kits::look::kShine);
    StrokeLine(BPoint(frame.left + 1, bottom), BPoint(frame.left + 1, frame.top + 2));
    StrokeLine(BPoint(frame.left + 2, frame.top + 1), BPoint(frame.right - 2, frame.top + 1));
    SetHighColor(kits::look::kSoftShadow);
    StrokeLine(BPoint(frame.right - 1, frame.top + 2), BPoint(frame.right - 1, bottom));
    // Corners are left out, which makes it look rounded at every scale.
    SetHighColor(kits::look::kOutline);
    const float foot = isSelected ? fTabHeight : bottom;
    StrokeLine(BPoint(frame.left, foot), BPoint(frame.left, frame.top + 2));
    StrokeLine(BPoint(frame.left + 1, frame.top + 1), BPoint(frame.left + 1, frame.top + 1));
    StrokeLine(BPoint(frame.left + 2, frame.top), BPoint(frame.right - 2, frame.top));
    StrokeLine(BPoint(frame.right - 1, frame.top + 1), BPoint(frame.right - 1, frame.top + 1));
    StrokeLine(BPoint(frame.right, frame.top + 2), BPoint(frame.right, foot));

    BFont font;
    GetFont(&font);
    BString label(tab.Label());
    const float room = frame.Width() - (isSelected ? 2 * kRise : 0) - kLabelMargin;
    font.TruncateString(&label, B_TRUNCATE_END, room);
    SetLowColor(face);
    SetHighColor(tab.IsEnabled() ? kits::look::kText : kits::look::kDisabledText);
    frame.bottom = fTabHeight;
    kits::look::CenteredText(this, frame, label.String());
    if (isSelected && kits::look::ShowsFocus(this)) {
        DrawFocus(frame);
    }
}

void BTabView::DrawFocus(BRect frame)
{
    SetHighColor(kits::look::kFocus);
    const BRect ring(frame.left + 3, frame.top + 3, frame.right - 3, fTabHeight - 1);
    StrokeRect(ring);
    StrokeRect(ring.InsetByCopy(1, 1));
}
