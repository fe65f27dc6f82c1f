#include "panes/RowTexts.h"

namespace norvane {

namespace {

constexpr int64 kKilobyte = 1024;
constexpr unsigned int kFirstPermission = 0x100;

} // namespace

std::string SizeText(int64 bytes)
{
    if (bytes <= kKilobyte) {
        return std::to_string(bytes) + " Bytes";
    }
    return std::to_string(bytes / kKilobyte) + " K";
}

std::string OccupiedText(int64 bytes)
{
    return std::to_string(bytes / kKilobyte) + " K";
}

std::string PermissionText(unsigned int mode)
{
    std::string text = "rwxrwxrwx";
    unsigned int bit = kFirstPermission;
    for (char& letter : text) {
        if ((mode & bit) == 0) {
            letter = '-';
        }
        bit >>= 1;
    }
    return text;
}

} // namespace norvane
