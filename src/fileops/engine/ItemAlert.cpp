#include "fileops/engine/ItemAlert.h"

#include "fileops/engine/ProblemList.h"

#include <Errors.h>

namespace norvane {

const char* TextOf(ItemAlert alert)
{
    switch (alert) {
    case ItemAlert::kCannotOpen:
        return "Couldn't open the file for reading.";
    case ItemAlert::kVolumeFull:
        return "Out of space on the target volume.";
    case ItemAlert::kBrokenLink:
        break;
    }
    return "You appear to be trying to copy a link that is broken.  This is not supported in this "
           "version.";
}

Notice NoticeOf(ItemAlert alert)
{
    return alert == ItemAlert::kBrokenLink ? Notice::kInfo : Notice::kStop;
}

const char* ReasonOf(ItemAlert alert)
{
    switch (alert) {
    case ItemAlert::kCannotOpen:
        return "it cannot be opened for reading";
    case ItemAlert::kVolumeFull:
        return ReasonFor(B_DEVICE_FULL);
    case ItemAlert::kBrokenLink:
        break;
    }
    return "it is a broken link";
}

} // namespace norvane
