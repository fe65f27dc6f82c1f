#pragma once

#include <GraphicsDefs.h>
#include <Rect.h>

class BWindow;

/// What can be known of a screen. Thread: any.
class BScreen
{
public:
    /// The screen of that number: the main one has 0, the others those that follow.
    explicit BScreen(screen_id id = B_MAIN_SCREEN_ID);
    /// The screen that shows most of that window, or the one that is nearest to it; the main one
    /// for null. Thread: the window's, or with it locked.
    explicit BScreen(BWindow* window);

    /// Whether there is such a screen, now.
    bool IsValid() const;
    /// The screen's number.
    screen_id ID() const;
    /// The whole screen, in units: right and bottom are one less than its size.
    BRect Frame() const;
    /// An extension of the platform. What panels leave of the screen.
    BRect AvailableFrame() const;
    /// How pixels of the screen are stored: B_RGB32; B_NO_COLOR_SPACE without a screen.
    color_space ColorSpace() const;
    /// Lends the system's colour map, which never changes.
    const color_map* ColorMap() const;
    /// The entry of the colour map nearest to the colour; the transparent entry when alpha is 0.
    uint8 IndexForColor(rgb_color color) const;
    uint8 IndexForColor(uint8 red, uint8 green, uint8 blue, uint8 alpha = 255) const;
    /// The colour of an entry of the colour map.
    rgb_color ColorForIndex(uint8 index) const;

private:
    screen_id fId;
};

/// Lends the system's colour map. Thread: any.
const color_map* system_colors();
