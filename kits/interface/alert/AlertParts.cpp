#include "AlertParts.h"

#include "AlertIcons.h"
#include "interface/views/Look.h"

#include <Font.h>
#include <InterfaceDefs.h>
#include <OS.h>
#include <ScrollBar.h>
#include <TextView.h>

#include <algorithm>
#include <cmath>

namespace kits {

namespace {

constexpr float kStripWidth = 30;
constexpr BPoint kIconPlace(18, 10);
constexpr float kIconSize = 32;
constexpr float kTextLeft = 66;
constexpr float kTextLeftWithoutIcon = 16;
constexpr float kTextTop = 14;
constexpr float kTextRight = 16;
constexpr float kTextBottom = 14;
const std::string kTab = "    "; // as wide as the indent of a list
constexpr rgb_color kStrip = {190, 190, 190, 255};

} // namespace

void AlertAnswer::Give(int32 button)
{
    MutexLock lock(fLock);
    if (!fIsGiven) {
        fIsGiven = true;
        fButton = button;
        fGiven.Broadcast();
    }
}

bool AlertAnswer::WaitFor(bigtime_t microseconds)
{
    const bigtime_t end = system_time() + microseconds;
    MutexLock lock(fLock);
    while (!fIsGiven && fGiven.WaitUntil(fLock, end)) {
    }
    return fIsGiven;
}

int32 AlertAnswer::Button() const
{
    MutexLock lock(fLock);
    return fButton;
}

AlertTextView::AlertTextView(BRect frame, const std::string& text, alert_type type)
    : BView(frame, "alert", B_FOLLOW_ALL_SIDES, B_WILL_DRAW), fText(text), fType(type),
      fTextView(new BTextView(BRect(kTextLeft, kTextTop, frame.right, frame.bottom), "text",
                              BRect(0, 0, frame.Width(), 0), B_FOLLOW_LEFT | B_FOLLOW_TOP,
                              B_WILL_DRAW))
{
    SetViewColor(look::kGround);
    SetLowColor(look::kGround);
    BFont font;
    GetFont(&font);
    fTextView->SetViewColor(look::kGround);
    fTextView->SetLowColor(look::kGround);
    fTextView->SetFontAndColor(&font, B_FONT_ALL, &look::kText);
    fTextView->SetTabWidth(font.StringWidth(kTab.c_str()));
    fTextView->SetWordWrap(true);
    fTextView->MakeEditable(false);
    fTextView->MakeSelectable(false);
    fTextView->SetText(fText.c_str());
    AddChild(fTextView); // adopted
}

bool AlertTextView::BreaksAListLine(float width) const
{
    BFont font;
    GetFont(&font);
    const float room = TextRoom(width);
    for (size_t begin = fText.find("\n\t"); begin != std::string::npos;
         begin = fText.find("\n\t", begin)) {
        begin += 2;
        const std::string line = kTab + fText.substr(begin, fText.find('\n', begin) - begin);
        if (font.StringWidth(line.c_str()) > room) {
            return true;
        }
    }
    return false;
}

void AlertTextView::SetType(alert_type type)
{
    fType = type;
    Invalidate();
}

float AlertTextView::TextLeft() const
{
    return fType == B_EMPTY_ALERT ? kTextLeftWithoutIcon : kTextLeft;
}

float AlertTextView::TextRoom(float width) const
{
    return width - TextLeft() - kTextRight;
}

int32 AlertTextView::CountLines(float textWidth)
{
    fTextView->SetTextRect(BRect(0, 0, textWidth - 1, 0));
    return fTextView->CountLines();
}

float AlertTextView::HeightFor(float width)
{
    const auto lines = static_cast<float>(CountLines(TextRoom(width)));
    const float text = kTextTop + lines * fTextView->LineHeight() + kTextBottom;
    const float icon = fType == B_EMPTY_ALERT ? 0 : kIconPlace.y + kIconSize + kTextBottom;
    return std::ceil(std::max(text, icon));
}

void AlertTextView::SetRoom(float width, float height)
{
    if (fScrollBar != nullptr) {
        RemoveChild(fScrollBar);
        delete fScrollBar;
        fScrollBar = nullptr;
    }
    const float line = fTextView->LineHeight();
    const float room = TextRoom(width);
    // Lines that have no room as a whole are not shown at all.
    const float fitting = std::max(1.0f, std::floor((height - kTextTop - kTextBottom) / line));
    const float lines = static_cast<float>(CountLines(room));
    const float shown = std::min(lines, fitting) * line;
    const bool scrolls = lines > fitting;
    const float textWidth = scrolls ? room - B_V_SCROLL_BAR_WIDTH - 4 : room;
    fTextView->MoveTo(TextLeft(), kTextTop);
    fTextView->ResizeTo(textWidth - 1, shown - 1);
    CountLines(textWidth);
    if (scrolls) {
        const float left = TextLeft() + room - B_V_SCROLL_BAR_WIDTH;
        fScrollBar =
            new BScrollBar(BRect(left, kTextTop, left + B_V_SCROLL_BAR_WIDTH, kTextTop + shown - 1),
                           "scroll", fTextView, 0, 0, B_VERTICAL);
        AddChild(fScrollBar); // adopted
        fTextView->ScrollToOffset(0);
    }
    Invalidate();
}

bool AlertTextView::ScrollByKey(char byte)
{
    if (fScrollBar == nullptr ||
        (byte != B_PAGE_UP && byte != B_PAGE_DOWN && byte != B_HOME && byte != B_END)) {
        return false;
    }
    const char bytes[] = {byte, '\0'};
    fTextView->KeyDown(bytes, 1);
    return true;
}

void AlertTextView::Draw(BRect)
{
    if (fType != B_EMPTY_ALERT) {
        look::Fill(this, BRect(0, 0, kStripWidth - 1, Bounds().bottom), kStrip);
        DrawAlertIcon(this, kIconPlace, fType);
    }
}

} // namespace kits
