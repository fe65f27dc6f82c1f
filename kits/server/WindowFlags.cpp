#include "WindowFlags.h"

#include <QGuiApplication>
#include <algorithm>
#include <cmath>

namespace kits {

namespace {

// What the toolkit takes as "no limit".
constexpr int kUnlimited = 16777215;

int PixelsOf(float extent)
{
    const float pixels = std::floor(extent) + 1;
    return static_cast<int>(std::clamp(pixels, 1.0f, static_cast<float>(kUnlimited)));
}

bool Has(const WindowShape& shape, uint32 flag)
{
    return (shape.flags & flag) == flag;
}

Qt::WindowType TypeFor(const WindowShape& shape)
{
    if (shape.look == B_FLOATING_WINDOW_LOOK || shape.feel == B_FLOATING_APP_WINDOW_FEEL ||
        shape.feel == B_FLOATING_SUBSET_WINDOW_FEEL) {
        return Qt::Tool;
    }
    const bool isDialog =
        shape.look == B_MODAL_WINDOW_LOOK || shape.feel == B_MODAL_APP_WINDOW_FEEL ||
        shape.feel == B_MODAL_SUBSET_WINDOW_FEEL || shape.feel == B_MODAL_ALL_WINDOW_FEEL;
    return isDialog ? Qt::Dialog : Qt::Window;
}

/// On Wayland what the toolkit calls a pop-up takes the keyboard, by a key or button that has to be
/// down still when the compositor hears of it: whoever taps the key has the menu closed at once,
/// and keys typed ahead go nowhere. A tip over a window leaves the keyboard where it is.
Qt::WindowType PopUpType()
{
    return QGuiApplication::platformName().startsWith(QLatin1String("wayland")) ? Qt::ToolTip
                                                                                : Qt::Popup;
}

} // namespace

bool HasTitle(const WindowShape& shape)
{
    return shape.kind == WindowShape::Kind::kWindow && shape.look != B_NO_BORDER_WINDOW_LOOK &&
           shape.look != B_BORDERED_WINDOW_LOOK;
}

Qt::WindowFlags WindowFlagsFor(const WindowShape& shape)
{
    if (shape.kind == WindowShape::Kind::kPopUp) {
        return PopUpType() | Qt::FramelessWindowHint | Qt::NoDropShadowWindowHint;
    }
    if (shape.kind == WindowShape::Kind::kTip) {
        return Qt::ToolTip | Qt::FramelessWindowHint | Qt::NoDropShadowWindowHint |
               Qt::WindowTransparentForInput | Qt::WindowDoesNotAcceptFocus;
    }
    Qt::WindowFlags flags = TypeFor(shape);
    if (shape.feel == B_FLOATING_ALL_WINDOW_FEEL || shape.feel == B_MODAL_ALL_WINDOW_FEEL) {
        flags |= Qt::WindowStaysOnTopHint;
    }
    if (Has(shape, B_AVOID_FOCUS)) {
        flags |= Qt::WindowDoesNotAcceptFocus;
    }
    if (!HasTitle(shape)) {
        return flags | Qt::FramelessWindowHint;
    }
    flags |= Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowSystemMenuHint;
    if (!Has(shape, B_NOT_CLOSABLE)) {
        flags |= Qt::WindowCloseButtonHint;
    }
    if (!Has(shape, B_NOT_MINIMIZABLE)) {
        flags |= Qt::WindowMinimizeButtonHint;
    }
    if (!Has(shape, B_NOT_ZOOMABLE) && !Has(shape, B_NOT_RESIZABLE)) {
        flags |= Qt::WindowMaximizeButtonHint;
    }
    return flags;
}

SizeLimits SizeLimitsFor(const WindowShape& shape)
{
    SizeLimits limits;
    const QSize size = RectFrom(shape.frame).size();
    limits.smallest = QSize(PixelsOf(shape.minWidth), PixelsOf(shape.minHeight));
    limits.largest = QSize(PixelsOf(shape.maxWidth), PixelsOf(shape.maxHeight));
    if (Has(shape, B_NOT_RESIZABLE) || Has(shape, B_NOT_H_RESIZABLE)) {
        limits.smallest.setWidth(size.width());
        limits.largest.setWidth(size.width());
    }
    if (Has(shape, B_NOT_RESIZABLE) || Has(shape, B_NOT_V_RESIZABLE)) {
        limits.smallest.setHeight(size.height());
        limits.largest.setHeight(size.height());
    }
    limits.largest = limits.largest.expandedTo(limits.smallest);
    return limits;
}

QRect RectFrom(const BRect& frame)
{
    return QRect(static_cast<int>(std::lround(frame.left)),
                 static_cast<int>(std::lround(frame.top)), PixelsOf(frame.Width()),
                 PixelsOf(frame.Height()));
}

BRect RectTo(const QRect& frame)
{
    return BRect(static_cast<float>(frame.left()), static_cast<float>(frame.top()),
                 static_cast<float>(frame.right()), static_cast<float>(frame.bottom()));
}

} // namespace kits
