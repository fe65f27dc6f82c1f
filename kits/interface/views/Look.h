#pragma once

#include <GraphicsDefs.h>
#include <Rect.h>

class BMessage;
class BView;

/// What all controls share of their looks and manners.
namespace kits::look {

constexpr rgb_color kGround = {216, 216, 216, 255};
constexpr rgb_color kShine = {255, 255, 255, 255};
constexpr rgb_color kSoftShine = {232, 232, 232, 255};
constexpr rgb_color kShadow = {152, 152, 152, 255};
constexpr rgb_color kSoftShadow = {184, 184, 184, 255};
constexpr rgb_color kOutline = {96, 96, 96, 255};
constexpr rgb_color kFocus = {0, 0, 229, 255};
constexpr rgb_color kText = {0, 0, 0, 255};
constexpr rgb_color kDisabledText = {136, 136, 136, 255};
constexpr rgb_color kSelectedRow = {184, 198, 222, 255};

/// Draws a frame one unit broad: `leftTop` on those two sides, `rightBottom` on the others.
void Frame(BView* view, BRect frame, rgb_color leftTop, rgb_color rightBottom);
/// Draws the frame of something that stands out, light from the left top, or lies deeper.
void RaisedFrame(BView* view, BRect frame);
void SunkenFrame(BView* view, BRect frame);
void Fill(BView* view, BRect area, rgb_color color);
/// Draws text so that it stands in the middle of `area`, whole units from its edges.
void CenteredText(BView* view, BRect area, const char* text);

enum class Arrow : uint8 { kUp, kDown, kLeft, kRight };
/// Draws a filled arrow head `depth` units deep and 2 * depth - 1 broad into the middle of `area`.
void ArrowHead(BView* view, BRect area, Arrow direction, int32 depth, rgb_color color);

/// Whether the message is a key that a person pressed while looking at this window: neither a
/// repeat nor a key typed before the window had the keyboard. Only such keys press buttons. True
/// for other messages.
bool IsFreshKey(const BMessage* message);
/// Whether the view shows that it has the focus: its window has the keyboard, or is about to get it
/// with its first frame.
bool ShowsFocus(const BView* view);
/// Whether the message that the view's window is handling may press a button: a fresh key or a
/// click, and not sooner than the window wants to be answered.
bool MayAnswer(const BView* view);

} // namespace kits::look
