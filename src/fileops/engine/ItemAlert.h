#pragma once

#include <SupportDefs.h>

#include <string>

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
    // Of a folder that is sent to a server.
    kNoSuchFolder,
    kNoMemoryToList,
    kBadFolder,
    kFolderNotOpen,
    kNameTooLongToList,
    kNoFolder,
    kLinksInCircle,
    // Of a folder that comes from a server.
    kIllegalPath,
    kBusyNode,
    kPathTooLong,
};

/// The alert's text. `name` is what Tell() gets: of kNoSuchFolder the whole path.
std::string TextOf(ItemAlert alert, const std::string& name);
/// Whether it is one of those about folders that are sent.
bool IsOfUpload(ItemAlert alert);
Notice NoticeOf(ItemAlert alert);
/// The same as the second half of "name: reason", for the list at the operation's end.
const char* ReasonOf(ItemAlert alert);

} // namespace norvane
