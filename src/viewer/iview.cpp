#include "viewer/iview.h"

#include "MessageCodes.h"
#include "viewer/ViewerKeys.h"
#include "viewer/WrappedText.h"

#include <Bitmap.h>
#include <Message.h>
#include <Screen.h>
#include <ScrollBar.h>
#include <ViewDescription.h>
#include <Window.h>

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace norvane {

namespace {

constexpr float kBarBreadth = 14;
// What a window's frame takes of the screen.
constexpr float kFrameWidth = 12;
constexpr float kFrameHeight = 32;
constexpr rgb_color kQuiet = {110, 110, 110, 255};
constexpr float kTextMargin = 10;
// How much larger a step makes an image, and what it stays within.
constexpr float kZoomStep = 1.25f;
// As much of the wheel as is felt is told as so many lines.
constexpr float kLinesOfANotch = 3;
constexpr float kLargestScale = 64;
constexpr float kLargestSide = 200000;
constexpr float kLeastSide = 8;

} // namespace

TImageView::TImageView(BRect frame, float scale, int32 scaleMode)
    : BView(frame, "imageView", B_FOLLOW_ALL_SIDES, B_WILL_DRAW | B_FRAME_EVENTS | B_NAVIGABLE),
      fPlace(frame.LeftTop())
{
    SetViewColor(255, 255, 255);
    SetImageScale(scale, scaleMode);
}

TImageView::~TImageView() = default;

void TImageView::SetImage(std::unique_ptr<BBitmap> image)
{
    fImage = std::move(image);
    SetImageScale(0, kSameMode);
}

void TImageView::SetTrouble(const std::string& trouble)
{
    std::fputs("Image load failed.\n", stdout);
    std::fflush(stdout);
    fTrouble = "This image cannot be shown: " + trouble + ".";
    FixupScrollbars();
    Invalidate();
}

float TImageView::ScaleThatFits() const
{
    const BRect screen = BScreen(Window()).Frame();
    const BRect image = fImage->Bounds();
    const float across = screen.Width() - kBarBreadth - fPlace.x - kFrameWidth;
    const float down = screen.Height() - kBarBreadth - fPlace.y - kFrameHeight;
    return std::min(across / (image.right + 1), down / (image.bottom + 1));
}

void TImageView::SetImageScale(float scale, int32 scaleMode)
{
    if (scale > 0) {
        fScale = scale;
    }
    if (scaleMode < kSameMode) {
        fMode = scaleMode;
    }
    if (fMode == kLargestFit && fImage != nullptr) {
        fMode = kFixedScale;
        const float fitting = ScaleThatFits();
        fScale = fitting > 0 ? fitting : 1.0f;
    }
    const uint32 whole = fMode == kFixedScale ? 0 : B_FULL_UPDATE_ON_RESIZE;
    SetFlags((Flags() & ~B_FULL_UPDATE_ON_RESIZE) | whole);
    FixupScrollbars();
    Invalidate();
}

void TImageView::ZoomBy(float factor, BPoint where)
{
    if (fImage == nullptr || fMode != kFixedScale || factor <= 0) {
        return;
    }
    const float side = std::max(fImage->Bounds().right, fImage->Bounds().bottom) + 1;
    const float most = std::max(fScale, std::min(kLargestScale, kLargestSide / side));
    const float least = std::min(fScale, kLeastSide / side);
    const float scale = std::clamp(fScale * factor, least, most);
    const float grown = scale / fScale;
    const BPoint offset = where - Bounds().LeftTop();
    SetImageScale(scale, kFixedScale);
    for (const orientation direction : {B_HORIZONTAL, B_VERTICAL}) {
        if (BScrollBar* bar = ScrollBar(direction)) {
            const bool isAcross = direction == B_HORIZONTAL;
            bar->SetValue((isAcross ? where.x : where.y) * grown -
                          (isAcross ? offset.x : offset.y));
        }
    }
}

void TImageView::AskToZoom(float factor, BPoint where)
{
    BMessage zoom(kZoomImage);
    zoom.AddFloat("factor", factor);
    zoom.AddPoint("where", where);
    Window()->PostMessage(&zoom);
}

void TImageView::GetMaxSize(float* width, float* height) const
{
    *width = Window() != nullptr ? -1.0f : 0.0f;
    *height = *width;
    if (Window() == nullptr || fImage == nullptr) {
        return;
    }
    if (fMode == kFixedScale) {
        *width = std::floor(fImage->Bounds().right * fScale);
        *height = std::floor(fImage->Bounds().bottom * fScale);
    } else if (fMode != kStretched) {
        std::fprintf(stderr, "[%s:%d] scale_mode set to strange value (%ld)\n", "iview.cpp", 83,
                     static_cast<long>(fMode));
    }
}

void TImageView::FixupBar(orientation direction, float room, float most)
{
    BScrollBar* bar = ScrollBar(direction);
    if (bar == nullptr) {
        return;
    }
    bar->SetProportion(most > room ? room / most : 1.0f);
    bar->SetRange(0, std::max(0.0f, most - room));
    bar->SetSteps(std::max(1.0f, std::floor(room / 8)), std::max(1.0f, std::floor(room / 2)));
}

void TImageView::FixupScrollbars()
{
    float width = 1;
    float height = 1;
    if (fImage != nullptr) {
        GetMaxSize(&width, &height);
    } else if (!fTrouble.empty()) {
        std::fputs("Image is null\n", stderr);
    }
    FixupBar(B_HORIZONTAL, Bounds().Width(), width);
    FixupBar(B_VERTICAL, Bounds().Height(), height);
}

void TImageView::MessageReceived(BMessage* message)
{
    float turned = 0;
    const auto held = static_cast<uint32>(message->GetInt32("modifiers", 0));
    const bool zooms = message->what == B_MOUSE_WHEEL_CHANGED && (held & B_COMMAND_KEY) != 0 &&
                       message->FindFloat("be:wheel_delta_y", &turned) == B_OK;
    if (!zooms) {
        BView::MessageReceived(message);
        return;
    }
    BPoint where;
    uint32 buttons = 0;
    GetMouse(&where, &buttons, false);
    AskToZoom(std::pow(kZoomStep, -turned / kLinesOfANotch), where);
}

void TImageView::AttachedToWindow()
{
    BView::AttachedToWindow();
    FixupScrollbars();
}

void TImageView::FrameResized(float width, float height)
{
    BView::FrameResized(width, height);
    FixupScrollbars();
    if (fImage == nullptr) {
        Invalidate(); // the lines of what is said break elsewhere
    }
}

BRect TImageView::ImageRect() const
{
    if (fMode == kStretched) {
        return BRect(0, 0, Bounds().Width(), Bounds().Height());
    }
    const BRect image = fImage->Bounds();
    return BRect(0, 0, (image.right + 1) * fScale - 1, (image.bottom + 1) * fScale - 1);
}

void TImageView::Draw(BRect)
{
    if (fImage == nullptr) {
        DrawTrouble();
        return;
    }
    // All of it: what lies outside of the part to be drawn costs nothing, and parts that are drawn
    // one by one fit each other.
    SetDrawingMode(fImage->ColorSpace() == B_RGBA32 ? B_OP_ALPHA : B_OP_COPY);
    SetBlendingMode(B_PIXEL_ALPHA, B_ALPHA_OVERLAY);
    DrawBitmap(fImage.get(), fImage->Bounds(), ImageRect());
}

void TImageView::DrawTrouble()
{
    if (fTrouble.empty()) {
        return;
    }
    font_height height;
    GetFontHeight(&height);
    const float line = std::ceil(height.ascent + height.descent + height.leading);
    float baseLine = kTextMargin + std::ceil(height.ascent);
    SetHighColor(kQuiet);
    SetDrawingMode(B_OP_OVER);
    for (const std::string& text :
         WrappedText(fTrouble, *this, Bounds().Width() - 2 * kTextMargin)) {
        DrawString(text.c_str(), BPoint(kTextMargin, baseLine));
        baseLine += line;
    }
}

void TImageView::ScrollBy(orientation direction, float share)
{
    if (BScrollBar* bar = ScrollBar(direction)) {
        const float room = direction == B_VERTICAL ? Bounds().Height() : Bounds().Width();
        bar->SetValue(bar->Value() + std::floor(room * share));
    }
}

void TImageView::KeyDown(const char* bytes, int32 byteCount)
{
    constexpr float kStep = 0.125f;
    constexpr float kPage = 0.875f;
    constexpr float kAll = 1e6f;
    switch (bytes[0]) {
    case B_LEFT_ARROW:
        ScrollBy(B_HORIZONTAL, -kStep);
        break;
    case B_RIGHT_ARROW:
        ScrollBy(B_HORIZONTAL, kStep);
        break;
    case B_UP_ARROW:
        ScrollBy(B_VERTICAL, -kStep);
        break;
    case B_DOWN_ARROW:
        ScrollBy(B_VERTICAL, kStep);
        break;
    case B_PAGE_UP:
        ScrollBy(B_VERTICAL, -kPage);
        break;
    case B_PAGE_DOWN:
        ScrollBy(B_VERTICAL, kPage);
        break;
    case B_HOME:
        ScrollBy(B_VERTICAL, -kAll);
        break;
    case B_END:
        ScrollBy(B_VERTICAL, kAll);
        break;
    default:
        if (!ZoomKey(bytes[0]) && !ViewerKey(*this, bytes[0])) {
            BView::KeyDown(bytes, byteCount);
        }
    }
}

bool TImageView::ZoomKey(char key)
{
    const BRect seen = Bounds();
    const BPoint middle((seen.left + seen.right) / 2, (seen.top + seen.bottom) / 2);
    switch (key) {
    case '+':
    case '=':
        AskToZoom(kZoomStep, middle);
        return true;
    case '-':
        AskToZoom(1 / kZoomStep, middle);
        return true;
    case '0':
        AskToZoom(1 / fScale, middle);
        return true;
    default:
        return false;
    }
}

void TImageView::Describe(BViewDescription* description) const
{
    description->value = fTrouble;
}

} // namespace norvane
