#pragma once

#include <Point.h>
#include <Rect.h>
#include <SupportDefs.h>

#include <memory>
#include <string>
#include <vector>

namespace kits {
class LooperCore;
}

/// A window that a person sees.
struct SeenWindow
{
    int32 token = 0;
    BRect frame; // in screen units
    std::string title;
    bool isMenu = false;
    const kits::LooperCore* core = nullptr; // to compare only
};

/// The windows on the screen, from back to front.
std::vector<SeenWindow> SeenWindows();
/// Gives the keyboard to one, as a click on its title bar does.
void Activate(const SeenWindow& window);
/// Turns the wheel over the frontmost window there.
void TurnWheelAt(BPoint screen, float notchesDown, uint32 modifiers);
bool IsDragging();
/// Who has the keyboard, and what is held, for a report.
std::string DescribeInput();
/// Waits a little until no window has many messages waiting, busy ones aside.
void AwaitShortQueues();
