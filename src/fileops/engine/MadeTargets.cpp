#include "fileops/engine/MadeTargets.h"

#include "fileops/engine/OwnNames.h"

#include <Directory.h>
#include <Errors.h>

namespace norvane {

bool RemoveIfNode(BDirectory& folder, const char* name, const node_ref& node)
{
    struct stat record;
    if (folder.GetStatFor(name, &record) != B_OK || NodeOf(record) != node) {
        return false;
    }
    // Between a look and a removal by name another's file may come to that name: what is removed
    // has a name that nobody else knows.
    const OwnTemporaryName aside;
    if (folder.RenameChild(name, aside.Name()) != B_OK) {
        return false;
    }
    if (folder.GetStatFor(aside.Name(), &record) == B_OK && NodeOf(record) == node) {
        return folder.RemoveChildFile(aside.Name()) == B_OK;
    }
    [[maybe_unused]] const status_t back = folder.RenameChild(aside.Name(), name);
    return false;
}

} // namespace norvane
