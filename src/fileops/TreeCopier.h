#pragma once

#include "fileops/FileCopier.h"

#include <Node.h>

#include <string>
#include <vector>

namespace norvane {

/// Copies one item of an operation, a folder with all below it: files first, then links, then
/// subfolders.
///
/// Works relative to open folders, so that a folder swapped for a link meanwhile leads nowhere
/// else. Thread: the operation's.
class TreeCopier
{
public:
    /// Ownership: borrows `ui` for its own life.
    explicit TreeCopier(OperationUI& ui) : fUI(ui) {}

    /// Copies the entry `name` of `source` into `target`, under its own name.
    CopyResult Copy(const CopyPlace& source, const CopyPlace& target, const char* name);

private:
    struct Child
    {
        std::string name;
        struct stat record;
    };
    struct Children
    {
        std::vector<Child> files;
        std::vector<Child> others;
        std::vector<Child> folders;
        bool isWhole = true; // all were listed
    };

    CopyResult CopyEntry(const CopyPlace& source, const CopyPlace& target, const char* name,
                         const struct stat& record);
    CopyResult CopyFolder(const CopyPlace& source, const CopyPlace& target, const char* name,
                          const struct stat& record);
    CopyResult CopyLink(const CopyPlace& source, const CopyPlace& target, const char* name);
    CopyResult RefuseKind(const char* name);
    bool OpenSource(BDirectory* folder, const CopyPlace& source, const char* name,
                    const struct stat& record);
    bool IsKernelVolume(const BDirectory& folder, dev_t device);
    bool OpenTarget(BDirectory* folder, const CopyPlace& target, const char* name,
                    const struct stat& record, bool* isNew);
    bool Note(const char* name, status_t status);
    Children List(const char* name, BDirectory& folder);
    bool CopyChildren(const std::vector<Child>& children, const CopyPlace& source,
                      const CopyPlace& target);

    OperationUI& fUI;
    // The folder that this item became. The walk never enters it: a folder copied into itself would
    // not end.
    node_ref fTopTarget;
    bool fHasTopTarget = false;
    // The volume that was looked at last: it seldom changes within a tree.
    dev_t fDevice = 0;
    bool fHasDevice = false;
    bool fIsKernelDevice = false;
};

} // namespace norvane
