#pragma once

#include <SupportDefs.h>

namespace norvane {

/// How grave a notice is.
enum class Notice : uint8 {
    kInfo,
    kStop,
};

/// What of one item is told at once, in an alert of its own.
enum class ItemAlert : uint8 {
    kCannotOpen,
    kVolumeFull,
    kBrokenLink,
};

/// The alert's text.
const char* TextOf(ItemAlert alert);
Notice NoticeOf(ItemAlert alert);
/// The same as the second half of "name: reason", for the list at the operation's end.
const char* ReasonOf(ItemAlert alert);

} // namespace norvane
