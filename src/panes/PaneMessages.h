#pragma once

#include <SupportDefs.h>

namespace norvane {

/// How a pane's list was filled; also tells a row whether it shows a leaf name or a whole path.
enum PaneMode : int32 { kQueryMode = 1100, kLocalMode = 1101, kFtpMode = 1102 };

/// What a pane's list, its operations and its FTP session tell the pane and the window.
enum PaneMessage : uint32 {
    MSG_FTP_DISCONNECT = 208,
    MSG_PANE_INFO = 500,
    MSG_FTP_REFRESH = 511,
    kRenameCommitted = 513,
    kColumnWidthChanged = 600, // strings "ColumnIndex" and "ColumnWidth"
    MSG_FTP_STATUS = 603,      // string "status"
    kRemoteEntries = 604,
    kRenameCancelled = 605,
    MSG_PROGRESS_START = 607,
    MSG_PROGRESS_STOP = 608,
    MSG_PROGRESS_STEP = 609, // int32 "steps": how many it stands for, 1 when missing
    MSG_PROGRESS_MAX = 610,  // int32 "maxvalue"
    kFolderMeasured = 615,   // a folder's size from the worker: "device", "node", "name", "bytes"
    kLocalEntries = 'DATA'
};

} // namespace norvane
