#pragma once

#include "fileops/engine/FolderChain.h"

#include <SupportDefs.h>

#include <sys/stat.h>

#include <string>
#include <vector>

namespace norvane {

struct OperationContext;

/// Has the links in what is to get another place go on leading where they lead: those that lead out
/// of it from where they are get the whole paths.
///
/// Done before the move, so that at no moment one leads anywhere else, and nothing is to be undone
/// when the move cannot be. Links that lead into what moves along stay as they are, and those that
/// lead nowhere. Thread: the operation's.
class LinkKeeper
{
public:
    /// Ownership: borrows `context` for its own life.
    explicit LinkKeeper(OperationContext& context) : fContext(context) {}

    /// Of one link. Errors: those of finding where it leads, and of making another one.
    [[nodiscard]] status_t Keep(BDirectory& folder, const char* name);
    /// Of all in the folder `name`. Errors: also B_CROSS_DEVICE_LINK when a volume is mounted in
    /// it, B_CANCELED when the person asked to stop.
    [[nodiscard]] status_t KeepBelow(BDirectory& parent, const char* name);

private:
    struct Level
    {
        std::vector<std::string> folders;
        size_t next = 0; // of them
    };

    [[nodiscard]] status_t Enter(const std::string& name);
    [[nodiscard]] status_t KeepIn(BDirectory& folder, std::vector<std::string>* folders);
    [[nodiscard]] status_t Replace(BDirectory& folder, const char* name, const struct stat& record,
                                   const char* text);

    OperationContext& fContext;
    FolderChain* fFolders = nullptr; // of the walk
    std::vector<Level> fLevels;
};

} // namespace norvane
