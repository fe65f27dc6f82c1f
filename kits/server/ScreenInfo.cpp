#include "ScreenInfo.h"

#include "WindowFlags.h"

#include <QGuiApplication>
#include <QScreen>
#include <QStyleHints>

namespace kits {

ScreenInfo& ScreenInfo::Get()
{
    static ScreenInfo info;
    return info;
}

void ScreenInfo::Refresh()
{
    const QScreen* screen = QGuiApplication::primaryScreen();
    if (screen == nullptr) {
        return;
    }
    const int interval = QGuiApplication::styleHints()->mouseDoubleClickInterval();
    caretFlash = QGuiApplication::styleHints()->cursorFlashTime() * bigtime_t{1000};
    MutexLock lock(fLock);
    fFrame = RectTo(screen->geometry());
    fAvailable = RectTo(screen->availableGeometry());
    fScale = static_cast<float>(screen->devicePixelRatio());
    fClickSpeed = interval * bigtime_t{1000};
}

BRect ScreenInfo::Frame() const
{
    MutexLock lock(fLock);
    return fFrame;
}

BRect ScreenInfo::Available() const
{
    MutexLock lock(fLock);
    return fAvailable;
}

float ScreenInfo::Scale() const
{
    MutexLock lock(fLock);
    return fScale;
}

bigtime_t ScreenInfo::ClickSpeed() const
{
    MutexLock lock(fLock);
    return fClickSpeed;
}

} // namespace kits
