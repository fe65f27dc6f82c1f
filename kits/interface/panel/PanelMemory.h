#pragma once

#include <string>

namespace kits {

/// The folder in which a file was chosen last, by this program or another: kept in the person's
/// settings. Thread: any; both wait for the disk.
std::string LastPanelFolder();
void KeepPanelFolder(const std::string& path);

} // namespace kits
