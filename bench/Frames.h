#pragma once

#include <X11/Xlib.h>

/// How many frames a second `window` shows in so many milliseconds while a person goes on as
/// `input` says (see desk.cpp); -1 when that is not understood or the window is not there.
double FramesASecond(Window window, double lengthMs, char** input, int count);
