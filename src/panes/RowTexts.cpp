#include "panes/RowTexts.h"

#include <atomic>
#include <cstdio>

namespace norvane {

namespace {

constexpr int64 kKilobyte = 1024;
constexpr unsigned int kFirstPermission = 0x100;
constexpr double kUnitStep = 1024;
constexpr const char* kUnits[] = {"KiB", "MiB", "GiB", "TiB", "PiB", "EiB"};
// What rounds to more than these digits belongs to the next form, or the next unit.
constexpr double kMostWithDecimal = 99.95;
constexpr double kMostWithout = 1023.5;

std::atomic<SizeUnits> gUnits{SizeUnits::kKilobytes};

} // namespace

void SetSizeUnits(SizeUnits units)
{
    gUnits = units;
}

SizeUnits CurrentSizeUnits()
{
    return gUnits;
}

std::string ReadableSize(int64 bytes)
{
    if (bytes < kKilobyte) {
        return std::to_string(bytes) + (bytes == 1 ? " Byte" : " Bytes");
    }
    double size = static_cast<double>(bytes) / kUnitStep;
    const char* const* unit = kUnits;
    while (size >= kMostWithout) {
        size /= kUnitStep;
        unit++;
    }
    char text[32];
    std::snprintf(text, sizeof(text), size < kMostWithDecimal ? "%.1f %s" : "%.0f %s", size, *unit);
    return text;
}

std::string SizeText(int64 bytes)
{
    if (gUnits == SizeUnits::kReadable) {
        return ReadableSize(bytes);
    }
    if (bytes <= kKilobyte) {
        return std::to_string(bytes) + " Bytes";
    }
    return std::to_string(bytes / kKilobyte) + " K";
}

std::string OccupiedText(int64 bytes)
{
    if (gUnits == SizeUnits::kReadable) {
        return ReadableSize(bytes);
    }
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
