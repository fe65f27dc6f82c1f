#include "settings/HomeFolder.h"

#include <FindDirectory.h>
#include <Path.h>

namespace norvane {

const std::string& HomeFolder()
{
    static const std::string home = [] {
        BPath path;
        if (find_directory(B_USER_DIRECTORY, &path) != B_OK) {
            return std::string("/");
        }
        return std::string(path.Path());
    }();
    return home;
}

} // namespace norvane
