#include "Frames.h"

#include "Paintings.h"
#include "ScreenWatch.h"

#include <X11/XKBlib.h>
#include <X11/extensions/XTest.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <poll.h>
#include <thread>
#include <vector>

namespace {

constexpr std::chrono::nanoseconds kStepTime(1'000'000'000 / 60);
constexpr unsigned int kRepeatDelayMs = 200;
constexpr unsigned int kRepeatIntervalMs = 16; // no less often than 60 times a second
constexpr double kStartMs = 700;               // until the keyboard repeats, and drags have begun
constexpr unsigned int kPrimaryButton = 1;
constexpr unsigned int kWheelDown = 5;

/// What a person does with keyboard and pointer, over a connection of its own.
class Hand
{
public:
    explicit Hand(Window window) : fDisplay(XOpenDisplay(nullptr)), fWindow(window) {}
    ~Hand()
    {
        if (fDisplay != nullptr) {
            XCloseDisplay(fDisplay);
        }
    }
    Hand(const Hand&) = delete;
    Hand& operator=(const Hand&) = delete;

    bool IsThere() const { return fDisplay != nullptr; }

    bool Hold(const char* keyName, bool isDown)
    {
        const KeyCode code = XKeysymToKeycode(fDisplay, XStringToKeysym(keyName));
        if (code == 0) {
            return false;
        }
        XkbSetAutoRepeatRate(fDisplay, XkbUseCoreKbd, kRepeatDelayMs, kRepeatIntervalMs);
        XTestFakeKeyEvent(fDisplay, code, isDown ? True : False, CurrentTime);
        XSync(fDisplay, False);
        return true;
    }

    void MoveTo(int x, int y)
    {
        int left = 0;
        int top = 0;
        Window child = None;
        XTranslateCoordinates(fDisplay, fWindow, DefaultRootWindow(fDisplay), x, y, &left, &top,
                              &child);
        XTestFakeMotionEvent(fDisplay, -1, left, top, CurrentTime);
        XSync(fDisplay, False);
    }

    void Press(unsigned int button, bool isDown)
    {
        XTestFakeButtonEvent(fDisplay, button, isDown ? True : False, CurrentTime);
        XSync(fDisplay, False);
    }

    void Click(unsigned int button)
    {
        Press(button, true);
        Press(button, false);
    }

private:
    Display* fDisplay;
    const Window fWindow;
};

/// Calls `step` with its number 60 times a second.
void Go(double lengthMs, const std::function<void(int)>& step)
{
    const double end = ScreenWatch::Now() + lengthMs;
    auto next = std::chrono::steady_clock::now();
    for (int number = 0; ScreenWatch::Now() < end; number++) {
        step(number);
        next += kStepTime;
        std::this_thread::sleep_until(next);
    }
}

/// Notes when a window without a frame, as what is dragged has for its picture, comes to be in
/// another place, until it is let go.
class Moves
{
public:
    Moves()
    {
        fThread = std::thread([this] { Watch(); });
    }
    ~Moves() { End(); }
    Moves(const Moves&) = delete;
    Moves& operator=(const Moves&) = delete;

    size_t CountBetween(double beginMs, double endMs)
    {
        End();
        return static_cast<size_t>(
            std::count_if(fTimes.begin(), fTimes.end(), [beginMs, endMs](double when) {
                return when >= beginMs && when < endMs;
            }));
    }

private:
    void Watch()
    {
        Display* display = XOpenDisplay(nullptr);
        if (display == nullptr) {
            return;
        }
        XSelectInput(display, DefaultRootWindow(display), SubstructureNotifyMask);
        XFlush(display);
        int x = 0;
        int y = 0;
        while (!fIsOver) {
            pollfd ready{ConnectionNumber(display), POLLIN, 0};
            poll(&ready, 1, 100);
            while (XPending(display) > 0) {
                XEvent event;
                XNextEvent(display, &event);
                const XConfigureEvent& now = event.xconfigure;
                if (event.type == ConfigureNotify && now.override_redirect &&
                    (now.x != x || now.y != y)) {
                    x = now.x;
                    y = now.y;
                    fTimes.push_back(ScreenWatch::Now());
                }
            }
        }
        XCloseDisplay(display);
    }

    void End()
    {
        fIsOver = true;
        if (fThread.joinable()) {
            fThread.join();
        }
    }

    std::atomic<bool> fIsOver = false;
    std::vector<double> fTimes; // the thread's until it has ended
    std::thread fThread;
};

template<typename Count>
double CountWhile(Count&& frames, double lengthMs, const std::function<void(int)>& step)
{
    const double begin = ScreenWatch::Now() + kStartMs;
    Go(kStartMs + lengthMs, step);
    return static_cast<double>(frames.CountBetween(begin, begin + lengthMs)) * 1000 / lengthMs;
}

double Held(Hand& hand, Window window, double lengthMs, const char* key)
{
    if (!hand.Hold(key, true)) {
        return -1;
    }
    const double frames = CountWhile(Paintings(window), lengthMs, [](int) {});
    hand.Hold(key, false);
    return frames;
}

double Wheel(Hand& hand, Window window, double lengthMs, char** place)
{
    hand.MoveTo(std::atoi(place[0]), std::atoi(place[1]));
    return CountWhile(Paintings(window), lengthMs, [&hand](int) { hand.Click(kWheelDown); });
}

template<typename Count>
double Drag(Hand& hand, Count&& count, double lengthMs, char** way)
{
    const int x = std::atoi(way[0]);
    const int y = std::atoi(way[1]);
    const int alongX = std::atoi(way[2]);
    const int alongY = std::atoi(way[3]);
    const int steps = std::max(1, std::atoi(way[4]));
    hand.MoveTo(x, y);
    hand.Press(kPrimaryButton, true);
    const double frames = CountWhile(count, lengthMs, [&](int number) {
        const int part = number % (2 * steps);
        const int place = part < steps ? part : 2 * steps - part;
        hand.MoveTo(x + alongX * place / steps, y + alongY * place / steps);
    });
    hand.MoveTo(x, y);
    hand.Press(kPrimaryButton, false);
    return frames;
}

} // namespace

double FramesASecond(Window window, double lengthMs, char** input, int count)
{
    Hand hand(window);
    if (window == None || !hand.IsThere() || lengthMs <= 0) {
        return -1;
    }
    if (count == 2 && std::strcmp(input[0], "held") == 0) {
        return Held(hand, window, lengthMs, input[1]);
    }
    if (count == 3 && std::strcmp(input[0], "wheel") == 0) {
        return Wheel(hand, window, lengthMs, input + 1);
    }
    if (count == 6 && std::strcmp(input[0], "drag") == 0) {
        return Drag(hand, Paintings(window), lengthMs, input + 1);
    }
    if (count == 6 && std::strcmp(input[0], "carry") == 0) {
        return Drag(hand, Moves(), lengthMs, input + 1);
    }
    return -1;
}
