#pragma once

#include "storage/FolderTable.h"

#include <Entry.h>

#include <TempTree.h>
#include <functional>
#include <string>
#include <sys/stat.h>

/// Puts a folder "a" with a file into `tree` that has the numbers of another one, which was there
/// before and was removed while nothing held it open: file systems give numbers anew, the same one
/// to the next folder where nobody else is faster. `known` is called with a ref to the file of the
/// former. False where numbers are not given twice.
inline bool MakeWithNumbersOfRemoved(TempTree& tree,
                                     const std::function<void(const entry_ref&)>& known)
{
    for (int round = 0; round < 50; ++round) {
        tree.Write("a/file", "x");
        entry_ref before;
        if (get_ref_for_path(tree.Path("a/file").c_str(), &before) != B_OK) {
            return false;
        }
        known(before);
        kits::FolderTable::Get().CloseIdle(0, kits::FolderTable::Volumes::kAll);
        tree.Remove("a");
        for (int i = 0; i < 20; ++i) {
            const std::string name = std::to_string(round) + "-" + std::to_string(i);
            tree.MakeFolder(name);
            struct stat made = {};
            if (stat(tree.Path(name).c_str(), &made) == 0 && made.st_ino == before.directory &&
                made.st_dev == before.device) {
                tree.Write(name + "/file", "another");
                return rename(tree.Path(name).c_str(), tree.Path("a").c_str()) == 0;
            }
        }
    }
    return false;
}
