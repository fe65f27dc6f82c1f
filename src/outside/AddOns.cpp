#include "outside/AddOns.h"

#include "MessageCodes.h"

#include <Directory.h>
#include <Entry.h>
#include <FindDirectory.h>
#include <Menu.h>
#include <MenuItem.h>
#include <Message.h>
#include <Path.h>

#include <algorithm>

namespace norvane {

namespace {

constexpr const char* kSubfolder = "Tracker";

} // namespace

std::vector<std::string> AddOnFolders()
{
    std::vector<std::string> folders;
    for (const directory_which which : {B_BEOS_ADDONS_DIRECTORY, B_USER_ADDONS_DIRECTORY}) {
        BPath path;
        if (find_directory(which, &path) == B_OK &&
            std::find(folders.begin(), folders.end(), path.Path()) == folders.end()) {
            folders.emplace_back(path.Path());
        }
    }
    return folders;
}

std::vector<std::string> GetAddons(const std::string& folder)
{
    std::vector<std::string> names;
    const BPath path(folder.c_str(), kSubfolder);
    BDirectory addOns(path.Path());
    entry_ref ref;
    while (addOns.GetNextRef(&ref) == B_OK) {
        names.emplace_back(ref.name);
    }
    return names;
}

bool TestAddOnPath(const char* name, const std::string& folder, std::string* path)
{
    const BPath place(folder.c_str(), kSubfolder);
    const BEntry entry(BPath(place.Path(), name).Path(), true);
    BPath found;
    if (!entry.Exists() || entry.GetPath(&found) != B_OK) {
        return false;
    }
    *path = found.Path();
    return true;
}

bool FindAddOnPath(const char* name, std::string* path)
{
    const std::vector<std::string> folders = AddOnFolders();
    return std::any_of(folders.begin(), folders.end(), [&](const std::string& folder) {
        return TestAddOnPath(name, folder, path);
    });
}

void AddToMenu(const std::vector<std::string>& names, BMenu* menu)
{
    for (const std::string& name : names) {
        const char shortcut = name == "MakeArchive" ? 'K' : '\0';
        menu->AddItem(new BMenuItem(name.c_str(), new BMessage(kRunAddOn), shortcut)); // adopted
    }
}

} // namespace norvane
