#include "common/DialogParts.h"

#include <Alert.h>
#include <Button.h>
#include <Font.h>
#include <InterfaceDefs.h>
#include <Message.h>
#include <Screen.h>
#include <StringView.h>
#include <TextControl.h>
#include <View.h>

#include <algorithm>
#include <cmath>

namespace add_ons {

namespace {

constexpr rgb_color kGrey = {216, 216, 216, 255};
constexpr float kLeastButtonWidth = 75;
constexpr float kBesideLabel = 20;
constexpr float kAroundLabel = 9;
constexpr float kFrameRoom = 40; // for the border that the window manager draws

} // namespace

float LineHeight()
{
    font_height height;
    BFont().GetHeight(&height);
    return std::ceil(height.ascent + height.descent);
}

float FieldHeight()
{
    return LineHeight() + kFieldPadding;
}

float ButtonHeight()
{
    return LineHeight() + kAroundLabel;
}

float ButtonWidth(const char* label)
{
    return std::max(kLeastButtonWidth, TextWidth(label) + kBesideLabel);
}

float TextWidth(const char* text)
{
    return std::ceil(BFont().StringWidth(text));
}

BRect FrameOverActiveWindow(float width, float height)
{
    const BRect screen = BScreen(B_MAIN_SCREEN_ID).Frame();
    width = std::min(width, screen.Width() - kFrameRoom);
    height = std::min(height, screen.Height() - kFrameRoom);
    const BPoint place = BAlert::AlertPosition(width, height);
    return BRect(place.x, place.y, place.x + width, place.y + height);
}

BView* MakeGround(BRect bounds, const char* name)
{
    auto* ground = new BView(bounds, name, B_FOLLOW_ALL_SIDES, B_WILL_DRAW);
    ground->SetViewColor(kGrey);
    ground->SetLowColor(kGrey);
    return ground;
}

BButton* AddButton(BView* ground, float right, float top, const char* name, const char* label,
                   uint32 what, uint32 resizingMode)
{
    auto* button = new BButton(BRect(right - ButtonWidth(label), top, right, top + ButtonHeight()),
                               name, label, new BMessage(what), resizingMode);
    ground->AddChild(button);
    return button;
}

BStringView* AddLine(BView* ground, BRect frame, const char* name, const char* text,
                     uint32 resizingMode)
{
    auto* line = new BStringView(frame, name, text, resizingMode);
    line->SetTruncation(B_TRUNCATE_END);
    ground->AddChild(line);
    return line;
}

BTextControl* AddField(BView* ground, BRect frame, const char* name, const char* label,
                       const char* text, float divider, uint32 what, uint32 resizingMode)
{
    auto* field = new BTextControl(frame, name, label, text, nullptr, resizingMode);
    ground->AddChild(field);
    field->SetDivider(divider);
    field->SetModificationMessage(new BMessage(what));
    return field;
}

} // namespace add_ons
