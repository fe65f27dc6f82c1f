#include "ScreenInfo.h"

#include "Fitting.h"
#include "WindowFlags.h"

#include <QGuiApplication>
#include <QScreen>
#include <QStyleHints>

#include <utility>

namespace kits {

ScreenInfo& ScreenInfo::Get()
{
    static ScreenInfo info;
    return info;
}

void ScreenInfo::Refresh()
{
    std::vector<Screen> screens;
    for (const QScreen* screen : QGuiApplication::screens()) { // the main one is the first
        screens.push_back({RectTo(screen->geometry()), RectTo(screen->availableGeometry()),
                           static_cast<float>(screen->devicePixelRatio())});
    }
    if (screens.empty()) {
        return;
    }
    const int interval = QGuiApplication::styleHints()->mouseDoubleClickInterval();
    caretFlash = QGuiApplication::styleHints()->cursorFlashTime() * bigtime_t{1000};
    const MutexLock lock(fLock);
    fScreens = std::move(screens);
    fClickSpeed = interval * bigtime_t{1000};
}

ScreenInfo::Screen ScreenInfo::At(int32 screen) const
{
    const MutexLock lock(fLock);
    const bool isThere = screen >= 0 && static_cast<size_t>(screen) < fScreens.size();
    return fScreens[isThere ? static_cast<size_t>(screen) : 0];
}

BRect ScreenInfo::Frame(int32 screen) const
{
    return At(screen).frame;
}

BRect ScreenInfo::Available(int32 screen) const
{
    return At(screen).available;
}

float ScreenInfo::Scale(int32 screen) const
{
    return At(screen).scale;
}

int32 ScreenInfo::CountScreens() const
{
    const MutexLock lock(fLock);
    return static_cast<int32>(fScreens.size());
}

int32 ScreenInfo::ScreenOf(BRect frame) const
{
    std::vector<QRect> areas;
    {
        const MutexLock lock(fLock);
        for (const Screen& screen : fScreens) {
            areas.push_back(RectFrom(screen.frame));
        }
    }
    return AreaOf(RectFrom(frame), areas);
}

bigtime_t ScreenInfo::ClickSpeed() const
{
    MutexLock lock(fLock);
    return fClickSpeed;
}

} // namespace kits
