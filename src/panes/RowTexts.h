#pragma once

#include <SupportDefs.h>

#include <string>

namespace norvane {

/// A file's size as its row shows it: bytes up to 1024, whole kilobytes above.
std::string SizeText(int64 bytes);
/// What a folder occupies as its row shows it: always whole kilobytes.
std::string OccupiedText(int64 bytes);
/// Nine characters: read, write and execute of owner, group and others.
std::string PermissionText(unsigned int mode);

} // namespace norvane
