#include "ScreenWatch.h"

#include <X11/Xatom.h>
#include <X11/Xutil.h>
#include <X11/extensions/XTest.h>

#include <chrono>
#include <poll.h>
#include <thread>

namespace {

// A window may vanish between being listed and being asked: that is no error here.
int IgnoreError(Display*, XErrorEvent*)
{
    return 0;
}

std::string TitleOf(Display* display, Window window)
{
    const Atom utf8 = XInternAtom(display, "UTF8_STRING", False);
    const Atom name = XInternAtom(display, "_NET_WM_NAME", False);
    Atom type = 0;
    int format = 0;
    unsigned long count = 0;
    unsigned long rest = 0;
    unsigned char* data = nullptr;
    std::string title;
    if (XGetWindowProperty(display, window, name, 0, 256, False, utf8, &type, &format, &count,
                           &rest, &data) == Success &&
        data != nullptr) {
        title.assign(reinterpret_cast<char*>(data), count);
        XFree(data);
    }
    return title;
}

// An operation adds its progress: "Copy - 42 %".
bool IsTitled(const std::string& found, const std::string& title)
{
    return found == title || found.rfind(title + " - ", 0) == 0;
}

} // namespace

ScreenWatch::ScreenWatch() : fDisplay(XOpenDisplay(nullptr))
{
    int error = 0;
    if (fDisplay == nullptr || !XDamageQueryExtension(fDisplay, &fDamageEvent, &error)) {
        return;
    }
    XSetErrorHandler(IgnoreError);
    fDamage = XDamageCreate(fDisplay, DefaultRootWindow(fDisplay), XDamageReportRawRectangles);
    XSync(fDisplay, False);
}

ScreenWatch::~ScreenWatch()
{
    if (fDisplay != nullptr) {
        XCloseDisplay(fDisplay);
    }
}

double ScreenWatch::Now()
{
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    return std::chrono::duration<double, std::milli>(now).count();
}

bool ScreenWatch::NextChange(double untilMs)
{
    for (;;) {
        while (XPending(fDisplay) > 0) {
            XEvent event;
            XNextEvent(fDisplay, &event);
            if (event.type == fDamageEvent + XDamageNotify) {
                return true;
            }
        }
        const double left = untilMs - Now();
        if (left <= 0) {
            return false;
        }
        pollfd ready{ConnectionNumber(fDisplay), POLLIN, 0};
        poll(&ready, 1, static_cast<int>(left) + 1);
    }
}

void ScreenWatch::WatchOnly(Window window)
{
    XDamageDestroy(fDisplay, fDamage);
    fDamage = XDamageCreate(fDisplay, window, XDamageReportRawRectangles);
    Drain();
}

void ScreenWatch::Drain()
{
    XSync(fDisplay, False);
    while (NextChange(Now())) {
    }
}

double ScreenWatch::FirstChange(double limitMs)
{
    return NextChange(Now() + limitMs) ? Now() : -1;
}

double ScreenWatch::LastChange(double quietMs, double limitMs)
{
    const double end = Now() + limitMs;
    double last = -1;
    if (!NextChange(end)) {
        return -1;
    }
    do {
        last = Now();
        if (last > end) {
            return -1;
        }
    } while (NextChange(last + quietMs));
    return last;
}

bool ScreenWatch::Press(const std::string& keyName)
{
    const KeySym symbol = XStringToKeysym(keyName.c_str());
    const KeyCode code = XKeysymToKeycode(fDisplay, symbol);
    if (code == 0) {
        return false;
    }
    XTestFakeKeyEvent(fDisplay, code, True, CurrentTime);
    XTestFakeKeyEvent(fDisplay, code, False, CurrentTime);
    XFlush(fDisplay);
    return true;
}

bool ScreenWatch::IsShown(Window window)
{
    XWindowAttributes attributes;
    return XGetWindowAttributes(fDisplay, window, &attributes) &&
           attributes.map_state == IsViewable;
}

Window ScreenWatch::FindWindow(Window parent, const std::string& title)
{
    Window root = 0;
    Window ignored = 0;
    Window* children = nullptr;
    unsigned int count = 0;
    if (!XQueryTree(fDisplay, parent, &root, &ignored, &children, &count)) {
        return None;
    }
    Window found = None;
    for (unsigned int i = 0; i < count && found == None; i++) {
        if (IsShown(children[i]) && IsTitled(TitleOf(fDisplay, children[i]), title)) {
            found = children[i];
        } else {
            found = FindWindow(children[i], title);
        }
    }
    if (children != nullptr) {
        XFree(children);
    }
    return found;
}

Window ScreenWatch::WaitForWindow(const std::string& title, double limitMs,
                                  const std::function<bool()>& isTooLate)
{
    const double end = Now() + limitMs;
    for (;;) {
        const Window window = FindWindow(DefaultRootWindow(fDisplay), title);
        if (window != None || Now() > end || isTooLate()) {
            return window;
        }
        // Looking more often would keep the server from what is measured.
        std::this_thread::sleep_for(std::chrono::milliseconds(8));
    }
}

bool ScreenWatch::WaitForEnd(Window window, double limitMs)
{
    const double end = Now() + limitMs;
    XDamageDestroy(fDisplay, fDamage);
    XSelectInput(fDisplay, window, StructureNotifyMask);
    bool isThere = IsShown(window);
    while (isThere) {
        while (isThere && XPending(fDisplay) > 0) {
            XEvent event;
            XNextEvent(fDisplay, &event);
            isThere = event.type != UnmapNotify && event.type != DestroyNotify;
        }
        const double left = end - Now();
        if (isThere && left <= 0) {
            return false;
        }
        if (isThere) {
            pollfd ready{ConnectionNumber(fDisplay), POLLIN, 0};
            poll(&ready, 1, static_cast<int>(left) + 1);
        }
    }
    return true;
}
