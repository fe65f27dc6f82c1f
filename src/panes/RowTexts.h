#pragma once

#include <SupportDefs.h>

#include <string>

namespace norvane {

/// How sizes are written, in all panes.
enum class SizeUnits : uint8 {
    kKilobytes, // whole ones, however many
    kReadable,  // whatever takes few digits: "812 Bytes", "1.4 MiB", "152 GiB"
};

/// Sets how sizes are written from now on; kKilobytes at first. What is shown has to be drawn anew.
/// Thread: any.
void SetSizeUnits(SizeUnits units);
/// What SetSizeUnits() set. Thread: any.
SizeUnits CurrentSizeUnits();

/// A file's size as its row shows it: bytes up to 1024, whole kilobytes above, or readable.
std::string SizeText(int64 bytes);
/// What a folder occupies as its row shows it: always whole kilobytes, or readable.
std::string OccupiedText(int64 bytes);
/// A size in whatever unit takes few digits; one decimal below a hundred.
std::string ReadableSize(int64 bytes);
/// Nine characters: read, write and execute of owner, group and others.
std::string PermissionText(unsigned int mode);

} // namespace norvane
