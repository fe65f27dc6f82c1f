#include "panes/NewName.h"

#include <Errors.h>

#include <cstring>

namespace norvane {

const char kTooManyNewFolders[] =
    "Hum...you never should have hit this limit.\n  You have more folders starting with \"New "
    "Folder\" then Norvane is prepared to handle.";

std::string NewFolderName(int32 number)
{
    return number == 1 ? "New Folder" : "New Folder " + std::to_string(number);
}

status_t MakeNewFolder(const std::function<status_t(const std::string&)>& make, int32 first,
                       std::string* name)
{
    status_t status = B_FILE_EXISTS;
    for (int32 number = first; status == B_FILE_EXISTS && number <= kLastFolderNumber; number++) {
        *name = NewFolderName(number);
        status = make(*name);
    }
    return status;
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
