#pragma once

#include <SupportDefs.h>

class BCursor;

/// The shapes of the pointer that every program needs: the ordinary one, and the one over text.
extern const BCursor* const B_CURSOR_SYSTEM_DEFAULT;
extern const BCursor* const B_CURSOR_I_BEAM;

/// The messages that the system sends. Their codes begin with an underline.
constexpr uint32 B_ABOUT_REQUESTED = '_ABR';  // the person asks what program this is
constexpr uint32 B_WINDOW_ACTIVATED = '_ACT'; // a window got or lost the keyboard ("active")
constexpr uint32 B_APP_ACTIVATED = B_WINDOW_ACTIVATED; // the program did; both have one code
constexpr uint32 B_ARGV_RECEIVED = '_ARG';  // the program was given arguments ("argc", "argv")
constexpr uint32 B_QUIT_REQUESTED = '_QRQ'; // a looper is asked to quit
constexpr uint32 B_CLOSE_REQUESTED = B_QUIT_REQUESTED; // the older name
constexpr uint32 B_CANCEL = '_CNC';                    // what is going on shall end
constexpr uint32 B_KEY_DOWN = '_KYD';            // a key with a character went down, or repeats
constexpr uint32 B_KEY_UP = '_KYU';              // it was released
constexpr uint32 B_UNMAPPED_KEY_DOWN = '_UKD';   // a key without a character went down
constexpr uint32 B_UNMAPPED_KEY_UP = '_UKU';     // it was released
constexpr uint32 B_MODIFIERS_CHANGED = '_MCH';   // other modifiers are held
constexpr uint32 B_MINIMIZE = '_WMN';            // a window is to minimize itself, or to come back
constexpr uint32 B_MOUSE_DOWN = '_MDN';          // a mouse button went down
constexpr uint32 B_MOUSE_MOVED = '_MMV';         // the pointer moved
constexpr uint32 B_MOUSE_ENTER_EXIT = '_MEX';    // the pointer crossed a view's edge
constexpr uint32 B_MOUSE_UP = '_MUP';            // a mouse button was released
constexpr uint32 B_MOUSE_WHEEL_CHANGED = '_MWC'; // the wheel was turned
constexpr uint32 B_OPEN_IN_WORKSPACE = '_OWS';   // a window is to open there
constexpr uint32 B_PRINTER_CHANGED = '_PCH';     // another printer was chosen
constexpr uint32 B_PULSE = '_PUL';               // the pulse rate has passed
constexpr uint32 B_READY_TO_RUN = '_RTR';        // the program has started
constexpr uint32 B_REFS_RECEIVED = '_RRC';       // the program is asked to open "refs"
constexpr uint32 B_SCREEN_CHANGED = '_SCH';      // the screen has another size or depth
constexpr uint32 B_VALUE_CHANGED = '_VCH';       // a scroll bar has another value
constexpr uint32 B_VIEW_MOVED = '_VMV';          // a view lies elsewhere in its parent
constexpr uint32 B_VIEW_RESIZED = '_VRS';        // a view has another size
constexpr uint32 B_WINDOW_MOVE_BY = '_WMB';      // a window is to move by a distance
constexpr uint32 B_WINDOW_MOVE_TO = '_WMO';      // a window is to move to a place
constexpr uint32 B_WINDOW_MOVED = '_WMV';        // a window lies elsewhere ("where")
constexpr uint32 B_WINDOW_RESIZED = '_WRS';      // a window has another size ("width", "height")
constexpr uint32 B_WORKSPACES_CHANGED = '_WCG';  // a window is in other workspaces
constexpr uint32 B_WORKSPACE_ACTIVATED = '_WAC'; // another workspace is shown
constexpr uint32 B_ZOOM = '_WZM'; // a window is asked to take its largest size, or to come back

/// The messages that programs send each other and themselves.
constexpr uint32 B_SET_PROPERTY = 'PSET';         // scripting: set a property
constexpr uint32 B_GET_PROPERTY = 'PGET';         // scripting: tell it
constexpr uint32 B_CREATE_PROPERTY = 'PCRT';      // scripting: make one
constexpr uint32 B_DELETE_PROPERTY = 'PDEL';      // scripting: take it away
constexpr uint32 B_COUNT_PROPERTIES = 'PCNT';     // scripting: tell how many there are
constexpr uint32 B_EXECUTE_PROPERTY = 'PEXE';     // scripting: do it
constexpr uint32 B_GET_SUPPORTED_SUITES = 'SUIT'; // scripting: tell what is understood
constexpr uint32 B_UNDO = 'UNDO';                 // the person takes the last step back
constexpr uint32 B_CUT = 'CCUT';                  // the person moves the selection to the clipboard
constexpr uint32 B_COPY = 'COPY';           // the person copies the selection to the clipboard
constexpr uint32 B_PASTE = 'PSTE';          // the person inserts what the clipboard holds
constexpr uint32 B_SELECT_ALL = 'SALL';     // the person selects everything
constexpr uint32 B_SAVE_REQUESTED = 'SAVE'; // a file panel tells where to save
constexpr uint32 B_MESSAGE_NOT_UNDERSTOOD = 'MNOT'; // the handler does not know the message
constexpr uint32 B_NO_REPLY = 'NONE'; // what a sender gets when its message ended without an answer
constexpr uint32 B_REPLY = 'RPLY';    // an answer that needs no code of its own
constexpr uint32 B_SIMPLE_DATA = 'DATA';     // data for whoever understands it, as in drag and drop
constexpr uint32 B_MIME_DATA = 'MIME';       // data in fields that are named by MIME types
constexpr uint32 B_ARCHIVED_OBJECT = 'ARCV'; // an object as a message
constexpr uint32 B_UPDATE_STATUS_BAR = 'SBUP'; // for BStatusBar: as Update()
constexpr uint32 B_RESET_STATUS_BAR = 'SBRS';  // for BStatusBar: as Reset()
constexpr uint32 B_NODE_MONITOR = 'NDMN';      // something watched has changed: see <NodeMonitor.h>
constexpr uint32 B_QUERY_UPDATE = 'QUPD';      // a live query has another hit, or one less
constexpr uint32 B_ENDORSABLE = 'ENDO';        // the sender can be shown as the source
constexpr uint32 B_COPY_TARGET = 'DDCP';       // drag and drop: copy it
constexpr uint32 B_MOVE_TARGET = 'DDMV';       // drag and drop: move it
constexpr uint32 B_TRASH_TARGET = 'DDRM';      // drag and drop: it may be thrown away
constexpr uint32 B_LINK_TARGET = 'DDLN';       // drag and drop: make a link to it
constexpr uint32 B_INPUT_DEVICES_CHANGED = 'IDCH';  // keyboards or mice came or went
constexpr uint32 B_INPUT_METHOD_EVENT = 'IMEV';     // an input method says something
constexpr uint32 B_SILENT_RELAUNCH = 'AREL';        // a program that runs already was started again
constexpr uint32 B_OBSERVER_NOTICE_CHANGE = 'NTCH'; // something observed has changed
constexpr uint32 B_CONTROL_INVOKED = 'CIVK';        // a control was worked to its end
constexpr uint32 B_CONTROL_MODIFIED = 'CMOD';       // a control is being worked
