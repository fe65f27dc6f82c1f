#include "panes/NewName.h"

#include <cstring>

namespace norvane {

std::string NewFolderName(int32 number)
{
    return number == 1 ? "New Folder" : "New Folder " + std::to_string(number);
}

const char* ReasonAgainstName(const char* name)
{
    if (name[0] == '\0') {
        return "a name needs at least one letter";
    }
    if (std::strcmp(name, ".") == 0 || std::strcmp(name, "..") == 0) {
        return "this name stands for a folder already";
    }
    return std::strchr(name, '/') != nullptr ? "a name cannot hold \"/\"" : nullptr;
}

} // namespace norvane
