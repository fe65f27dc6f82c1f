#include "fileops/engine/ItemAlert.h"

#include "fileops/engine/ProblemList.h"

#include <Errors.h>
#include <Font.h>
#include <String.h>

namespace norvane {

namespace {

/// What is said of every item alike.
const char* FixedTextOf(ItemAlert alert)
{
    switch (alert) {
    case ItemAlert::kCannotOpen:
        return "Couldn't open the file for reading.";
    case ItemAlert::kVolumeFull:
        return "Out of space on the target volume.";
    case ItemAlert::kNoMemoryToList:
        return "Not enough memory to traverse the directory.";
    case ItemAlert::kBadFolder:
        return "Invalid input value, or the directory object was not initialized properly.";
    case ItemAlert::kFolderNotOpen:
        return "The directory object was not initialized properly.";
    case ItemAlert::kNameTooLongToList:
        return "The name returned for an entry is too long.";
    case ItemAlert::kNoFolder:
        return ", is not valid.\nThe volume may not be mounted.";
    case ItemAlert::kLinksInCircle:
        return "Link limit exceeded.  It is possible that a cyclic link exists in your file "
               "system.";
    case ItemAlert::kIllegalPath:
        return "Illegal path specified";
    case ItemAlert::kBusyNode:
        return "Node is busy and can not be acessed";
    case ItemAlert::kPathTooLong:
        return "The path Norvane is trying to create is too long for the file system.";
    case ItemAlert::kBrokenLink:
    case ItemAlert::kNoSuchFolder:
        break;
    }
    return "You appear to be trying to copy a link that is broken.  This is not supported in this "
           "version.";
}

} // namespace

std::string TextOf(ItemAlert alert, const std::string& name)
{
    if (alert == ItemAlert::kNoSuchFolder) {
        return std::string("The path, ") + BFont::VisibleText(name.c_str()).String() +
               ", that you are trying to upload is not valid.";
    }
    return FixedTextOf(alert);
}

bool IsOfUpload(ItemAlert alert)
{
    return alert >= ItemAlert::kNoSuchFolder && alert <= ItemAlert::kLinksInCircle;
}

Notice NoticeOf(ItemAlert alert)
{
    return alert == ItemAlert::kCannotOpen || alert == ItemAlert::kVolumeFull ? Notice::kStop
                                                                              : Notice::kInfo;
}

const char* ReasonOf(ItemAlert alert)
{
    switch (alert) {
    case ItemAlert::kCannotOpen:
        return "it cannot be opened for reading";
    case ItemAlert::kVolumeFull:
        return ReasonFor(B_DEVICE_FULL);
    case ItemAlert::kBrokenLink:
        return "it is a broken link";
    case ItemAlert::kNoSuchFolder:
        return ReasonFor(B_ENTRY_NOT_FOUND);
    case ItemAlert::kNoMemoryToList:
        return ReasonFor(B_NO_MEMORY);
    case ItemAlert::kNameTooLongToList:
    case ItemAlert::kPathTooLong:
        return ReasonFor(B_NAME_TOO_LONG);
    case ItemAlert::kNoFolder:
        return ReasonFor(B_NOT_A_DIRECTORY);
    case ItemAlert::kLinksInCircle:
        return ReasonFor(B_LINK_LIMIT);
    case ItemAlert::kBusyNode:
        return ReasonFor(B_BUSY);
    case ItemAlert::kBadFolder:
    case ItemAlert::kFolderNotOpen:
        return "the folder cannot be read";
    case ItemAlert::kIllegalPath:
        break;
    }
    return "its path is not one";
}

} // namespace norvane
