// query-hits FOLDER: for each predicate of the standard input, one a line, prints the paths below
// the folder of all its hits, each ended by a zero byte, and an empty one behind the last.

#include <Entry.h>
#include <Path.h>
#include <Query.h>
#include <Volume.h>

#include <cstdio>
#include <iostream>
#include <string>
#include <sys/stat.h>

namespace {

bool PrintHits(const BVolume& volume, const std::string& folder, const std::string& predicate)
{
    BQuery query;
    if (query.SetVolume(&volume) != B_OK || query.SetPredicate(predicate.c_str()) != B_OK ||
        query.Fetch() != B_OK) {
        return false;
    }
    BEntry entry;
    BPath path;
    status_t status = query.GetNextEntry(&entry);
    for (; status == B_OK; status = query.GetNextEntry(&entry)) {
        const std::string found = entry.GetPath(&path) == B_OK ? path.Path() : "";
        if (found.starts_with(folder + "/")) {
            std::cout << found.substr(folder.size() + 1) << '\0';
        }
    }
    std::cout << '\0' << std::flush;
    return status == B_ENTRY_NOT_FOUND;
}

} // namespace

int main(int count, char** arguments)
{
    struct stat st = {};
    if (count != 2 || stat(arguments[1], &st) != 0) {
        std::fprintf(stderr, "query-hits FOLDER\n");
        return 2;
    }
    const BVolume volume(st.st_dev);
    std::string predicate;
    while (std::getline(std::cin, predicate)) {
        if (!PrintHits(volume, arguments[1], predicate)) {
            std::fprintf(stderr, "not answered: %s\n", predicate.c_str());
            return 1;
        }
    }
    return 0;
}
