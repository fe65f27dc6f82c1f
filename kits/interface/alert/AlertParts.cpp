#include "AlertParts.h"

#include "AlertIcons.h"
#include "interface/views/Look.h"

#include <Font.h>
#include <OS.h>

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
const std::string kTab = "    "; // as the text is broken
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
    : BView(frame, "alert", B_FOLLOW_ALL_SIDES, B_WILL_DRAW), fText(text), fType(type)
{
    SetViewColor(look::kGround);
    SetLowColor(look::kGround);
}

bool AlertTextView::BreaksAListLine(float width) const
{
    BFont font;
    GetFont(&font);
    const float room = width - TextLeft() - kTextRight;
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

float AlertTextView::HeightFor(float width)
{
    BFont font;
    GetFont(&font);
    fLines = WrapText(fText, width - TextLeft() - kTextRight,
                      [&font](const std::string& text) { return font.StringWidth(text.c_str()); });
    font_height height;
    font.GetHeight(&height);
    const float line = height.ascent + height.descent + height.leading;
    const float text = kTextTop + static_cast<float>(fLines.size()) * line + kTextBottom;
    const float icon = fType == B_EMPTY_ALERT ? 0 : kIconPlace.y + kIconSize + kTextBottom;
    return std::ceil(std::max(text, icon));
}

void AlertTextView::Draw(BRect)
{
    if (fType != B_EMPTY_ALERT) {
        look::Fill(this, BRect(0, 0, kStripWidth - 1, Bounds().bottom), kStrip);
        DrawAlertIcon(this, kIconPlace, fType);
    }
    font_height height;
    GetFontHeight(&height);
    const float line = height.ascent + height.descent + height.leading;
    float base = kTextTop + height.ascent;
    SetHighColor(look::kText);
    SetLowColor(look::kGround);
    for (const std::string& text : fLines) {
        DrawString(text.c_str(), BPoint(TextLeft(), base));
        base += line;
    }
}

} // namespace kits
