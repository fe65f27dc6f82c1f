#pragma once

#include <SupportDefs.h>

namespace norvane {

/// How a pane's list was filled; also tells a row whether it shows a leaf name or a whole path.
enum PaneMode : int32 { kQueryMode = 1100, kLocalMode = 1101, kFtpMode = 1102 };

} // namespace norvane
