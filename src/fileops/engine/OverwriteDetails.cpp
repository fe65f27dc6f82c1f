#include "fileops/engine/OverwriteDetails.h"

#include <time.h>

namespace norvane {

std::string SizeDetails(int64 sizeBytes)
{
    return sizeBytes > 1024 ? std::to_string(sizeBytes / 1024) + " K"
                            : std::to_string(sizeBytes) + " Bytes";
}

std::string OverwriteDetails(int64 sizeBytes, std::time_t modified)
{
    std::string details = SizeDetails(sizeBytes);
    // Several operations may ask at the same time, so the shared buffer of ctime() is not for them.
    char date[64];
    if (ctime_r(&modified, date) != nullptr) {
        std::string text = date;
        if (!text.empty() && text.back() == '\n') {
            text.pop_back();
        }
        details += "  " + text;
    }
    return details;
}

} // namespace norvane
