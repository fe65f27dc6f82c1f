#include "Departures.h"

#include "InputRouter.h"
#include "NativeWindow.h"

#include <OS.h>

#include <algorithm>
#include <utility>

namespace kits {

namespace {

constexpr int kLookMs = 8;
// A window manager may give the focus to nobody; nothing waits longer for it.
constexpr bigtime_t kFocusLimit = 300'000;
// The last keys are in the toolkit's queue by then, and taken from it at its next turn.
constexpr bigtime_t kKeysLimit = 100'000;

} // namespace

Departures::Departures(InputRouter& router) : fRouter(router)
{
    QObject::connect(&fLook, &QTimer::timeout, &fLook, [this] { Look(); });
}

void Departures::Add(const std::shared_ptr<NativeWindow>& window)
{
    fDepartures.push_back({window, system_time(), 0});
    fLook.start(kLookMs);
}

void Departures::FocusMoved()
{
    if (!fDepartures.empty()) {
        Look();
    }
}

void Departures::Look()
{
    const bigtime_t now = system_time();
    std::vector<std::shared_ptr<NativeWindow>> gone;
    for (Departure& departure : fDepartures) {
        if (departure.outOfSight == 0 &&
            (now - departure.left > kFocusLimit || !departure.window->HasSystemFocus())) {
            departure.outOfSight = now;
            departure.window->GoOutOfSight();
        } else if (departure.outOfSight != 0 && now - departure.outOfSight > kKeysLimit) {
            gone.push_back(departure.window);
        }
    }
    for (const std::shared_ptr<NativeWindow>& window : gone) {
        Finish(*window);
    }
}

bool Departures::Has(const NativeWindow& window) const
{
    return std::any_of(fDepartures.begin(), fDepartures.end(),
                       [&](const Departure& entry) { return entry.window.get() == &window; });
}

void Departures::Finish(const NativeWindow& window)
{
    const auto found =
        std::find_if(fDepartures.begin(), fDepartures.end(),
                     [&](const Departure& entry) { return entry.window.get() == &window; });
    if (found == fDepartures.end()) {
        return;
    }
    const std::shared_ptr<NativeWindow> kept = std::move(found->window);
    fDepartures.erase(found);
    if (fDepartures.empty()) {
        fLook.stop();
    }
    LetGo(*kept);
}

void Departures::LetGo(NativeWindow& window)
{
    fRouter.Gone(window.Token());
    window.Depart();
}

void Departures::FinishAll()
{
    while (!fDepartures.empty()) {
        Finish(*fDepartures.front().window);
    }
}

} // namespace kits
