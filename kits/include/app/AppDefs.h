#pragma once

#include <SupportDefs.h>

/// The messages that the system sends. Their codes begin with an underline.
constexpr uint32 B_ABOUT_REQUESTED = '_ABR';
constexpr uint32 B_WINDOW_ACTIVATED = '_ACT';
constexpr uint32 B_APP_ACTIVATED = B_WINDOW_ACTIVATED; // the platform gives both one code
constexpr uint32 B_ARGV_RECEIVED = '_ARG';
constexpr uint32 B_QUIT_REQUESTED = '_QRQ';
constexpr uint32 B_CLOSE_REQUESTED = B_QUIT_REQUESTED; // the older name
constexpr uint32 B_CANCEL = '_CNC';
constexpr uint32 B_KEY_DOWN = '_KYD';
constexpr uint32 B_KEY_UP = '_KYU';
constexpr uint32 B_UNMAPPED_KEY_DOWN = '_UKD';
constexpr uint32 B_UNMAPPED_KEY_UP = '_UKU';
constexpr uint32 B_MODIFIERS_CHANGED = '_MCH';
constexpr uint32 B_MINIMIZE = '_WMN';
constexpr uint32 B_MOUSE_DOWN = '_MDN';
constexpr uint32 B_MOUSE_MOVED = '_MMV';
constexpr uint32 B_MOUSE_ENTER_EXIT = '_MEX';
constexpr uint32 B_MOUSE_UP = '_MUP';
constexpr uint32 B_MOUSE_WHEEL_CHANGED = '_MWC';
constexpr uint32 B_OPEN_IN_WORKSPACE = '_OWS';
constexpr uint32 B_PRINTER_CHANGED = '_PCH';
constexpr uint32 B_PULSE = '_PUL';
constexpr uint32 B_READY_TO_RUN = '_RTR';
constexpr uint32 B_REFS_RECEIVED = '_RRC';
constexpr uint32 B_SCREEN_CHANGED = '_SCH';
constexpr uint32 B_VALUE_CHANGED = '_VCH';
constexpr uint32 B_VIEW_MOVED = '_VMV';
constexpr uint32 B_VIEW_RESIZED = '_VRS';
constexpr uint32 B_WINDOW_MOVE_BY = '_WMB';
constexpr uint32 B_WINDOW_MOVE_TO = '_WMO';
constexpr uint32 B_WINDOW_MOVED = '_WMV';
constexpr uint32 B_WINDOW_RESIZED = '_WRS';
constexpr uint32 B_WORKSPACES_CHANGED = '_WCG';
constexpr uint32 B_WORKSPACE_ACTIVATED = '_WAC';
constexpr uint32 B_ZOOM = '_WZM';

/// The messages that programs send each other and themselves.
constexpr uint32 B_SET_PROPERTY = 'PSET';
constexpr uint32 B_GET_PROPERTY = 'PGET';
constexpr uint32 B_CREATE_PROPERTY = 'PCRT';
constexpr uint32 B_DELETE_PROPERTY = 'PDEL';
constexpr uint32 B_COUNT_PROPERTIES = 'PCNT';
constexpr uint32 B_EXECUTE_PROPERTY = 'PEXE';
constexpr uint32 B_GET_SUPPORTED_SUITES = 'SUIT';
constexpr uint32 B_UNDO = 'UNDO';
constexpr uint32 B_CUT = 'CCUT';
constexpr uint32 B_COPY = 'COPY';
constexpr uint32 B_PASTE = 'PSTE';
constexpr uint32 B_SELECT_ALL = 'SALL';
constexpr uint32 B_SAVE_REQUESTED = 'SAVE';
constexpr uint32 B_MESSAGE_NOT_UNDERSTOOD = 'MNOT';
constexpr uint32 B_NO_REPLY = 'NONE';
constexpr uint32 B_REPLY = 'RPLY';
constexpr uint32 B_SIMPLE_DATA = 'DATA';
constexpr uint32 B_MIME_DATA = 'MIME';
constexpr uint32 B_ARCHIVED_OBJECT = 'ARCV';
constexpr uint32 B_UPDATE_STATUS_BAR = 'SBUP';
constexpr uint32 B_RESET_STATUS_BAR = 'SBRS';
constexpr uint32 B_NODE_MONITOR = 'NDMN';
constexpr uint32 B_QUERY_UPDATE = 'QUPD';
constexpr uint32 B_ENDORSABLE = 'ENDO';
constexpr uint32 B_COPY_TARGET = 'DDCP';
constexpr uint32 B_MOVE_TARGET = 'DDMV';
constexpr uint32 B_TRASH_TARGET = 'DDRM';
constexpr uint32 B_LINK_TARGET = 'DDLN';
constexpr uint32 B_INPUT_DEVICES_CHANGED = 'IDCH';
constexpr uint32 B_INPUT_METHOD_EVENT = 'IMEV';
constexpr uint32 B_SILENT_RELAUNCH = 'AREL';
constexpr uint32 B_OBSERVER_NOTICE_CHANGE = 'NTCH';
constexpr uint32 B_CONTROL_INVOKED = 'CIVK';
constexpr uint32 B_CONTROL_MODIFIED = 'CMOD';
