#pragma once

#include <string>
#include <vector>

class BMenu;

namespace norvane {

/// Where add-ons are looked for: the folders of the system and of the person, each at most once.
/// Thread: as for the next ones, any; they look at the disk.
std::vector<std::string> AddOnFolders();

/// The names in a folder's "Tracker", in byte order; none when it is missing.
std::vector<std::string> GetAddons(const std::string& folder);

/// The path of the add-on of that name in a folder, when there is one.
bool TestAddOnPath(const char* name, const std::string& folder, std::string* path);

/// The path of the add-on of that name in the first folder that has one.
bool FindAddOnPath(const char* name, std::string* path);

/// Adds an item for each add-on to a menu, with message kRunAddOn.
/// Thread: that of the menu's window.
void AddToMenu(const std::vector<std::string>& names, BMenu* menu);

} // namespace norvane
