#pragma once

#include <SupportDefs.h>

/// The numbers that windows are made and set up with: types, looks, feels, flags.

/// What a window is, as one number for its look and feel.
enum window_type {
    B_UNTYPED_WINDOW = 0,
    B_TITLED_WINDOW = 1,
    B_MODAL_WINDOW = 3,
    B_DOCUMENT_WINDOW = 11,
    B_BORDERED_WINDOW = 20,
    B_FLOATING_WINDOW = 21,
};

/// How a window's frame looks. All with a title look alike here, as the desktop has it.
enum window_look {
    B_BORDERED_WINDOW_LOOK = 20,
    B_NO_BORDER_WINDOW_LOOK = 19,
    B_TITLED_WINDOW_LOOK = 1,
    B_DOCUMENT_WINDOW_LOOK = 11,
    B_MODAL_WINDOW_LOOK = 3,
    B_FLOATING_WINDOW_LOOK = 7,
};

/// How a window behaves towards others: a modal one keeps input from its subset, its program or
/// all; a floating one stays above them.
enum window_feel {
    B_NORMAL_WINDOW_FEEL = 0,
    B_MODAL_SUBSET_WINDOW_FEEL = 2,
    B_MODAL_APP_WINDOW_FEEL = 1,
    B_MODAL_ALL_WINDOW_FEEL = 3,
    B_FLOATING_SUBSET_WINDOW_FEEL = 5,
    B_FLOATING_APP_WINDOW_FEEL = 4,
    B_FLOATING_ALL_WINDOW_FEEL = 6,
};

// Window flags; what the desktop decides itself is taken for the platform's sake
constexpr uint32 B_NOT_MOVABLE = 0x00000001;     // for the platform's sake
constexpr uint32 B_NOT_CLOSABLE = 0x00000020;    // no close button; the person cannot close it
constexpr uint32 B_NOT_ZOOMABLE = 0x00000040;    // no button for the largest size
constexpr uint32 B_NOT_MINIMIZABLE = 0x00004000; // no button to minimize
constexpr uint32 B_NOT_H_RESIZABLE = 0x00000004; // its width stays
constexpr uint32 B_NOT_V_RESIZABLE = 0x00000008; // its height stays
constexpr uint32 B_NOT_RESIZABLE = 0x00000002;   // its size stays
constexpr uint32 B_AVOID_FRONT = 0x00000080;     // for the platform's sake
constexpr uint32 B_AVOID_FOCUS = 0x00002000;     // never has the keyboard
constexpr uint32 B_WILL_ACCEPT_FIRST_CLICK = 0x00000010;  // for the platform's sake
constexpr uint32 B_OUTLINE_RESIZE = 0x00001000;           // for the platform's sake
constexpr uint32 B_NO_WORKSPACE_ACTIVATION = 0x00000100;  // for the platform's sake
constexpr uint32 B_NOT_ANCHORED_ON_ACTIVATE = 0x00020000; // for the platform's sake
constexpr uint32 B_ASYNCHRONOUS_CONTROLS = 0x00080000;    // for the platform's sake
constexpr uint32 B_QUIT_ON_WINDOW_CLOSE = 0x00100000;     // closing it asks the program to quit

/// In which workspaces a window is shown; the desktop decides.
constexpr uint32 B_CURRENT_WORKSPACE = 0;
constexpr uint32 B_ALL_WORKSPACES = 0xffffffff;
