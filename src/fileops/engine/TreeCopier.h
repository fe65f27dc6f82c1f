#pragma once

#include "fileops/engine/CopyPlace.h"
#include "fileops/engine/CopyQueue.h"

#include <Entry.h>
#include <Node.h>
#include <SupportDefs.h>

#include <sys/stat.h>

#include <string>
#include <vector>

namespace norvane {

class OperationUI;

/// Finds whether `entry` is the node, or lies below it at any depth. Errors: those of looking on
/// the way up, which leave it open.
[[nodiscard]] status_t LiesIn(BEntry entry, const node_ref& node, bool* lies);

/// Copies one item of an operation, a folder with all below it: files first, then links, then
/// subfolders.
///
/// Works relative to open folders, so that a folder swapped for a link meanwhile leads nowhere
/// else. Thread: the operation's.
class TreeCopier
{
public:
    /// Ownership: borrows both for its own life.
    TreeCopier(OperationUI& ui, const CopyPurpose& purpose) : fUI(ui), fPurpose(purpose) {}

    CopyResult Copy(const CopyStep& step);

private:
    struct Child
    {
        std::string name;
        struct stat record;
    };
    struct Children
    {
        std::vector<std::string> files;
        std::vector<Child> others;
        std::vector<Child> folders;
        bool isWhole = true; // all were listed
    };

    CopyResult CopyEntry(const CopyStep& step, const struct stat& record);
    CopyResult CopyFolder(const CopyStep& step, const struct stat& record);
    bool CopyContents(const CopyStep& step, BDirectory& source, BDirectory& target);
    CopyResult CopyLink(const CopyStep& step, const struct stat& record);
    [[nodiscard]] status_t TextFor(const CopyStep& step, std::string* text) const;
    [[nodiscard]] status_t MakeLink(const CopyStep& step, const struct stat& record);
    CopyResult RefuseKind(const char* name);
    bool OpenSource(BDirectory* folder, const CopyStep& step, const struct stat& record);
    bool IsKernelVolume(const BDirectory& folder, dev_t device);
    bool OpenTarget(BDirectory* folder, const CopyStep& step, const struct stat& record,
                    bool* isNew);
    bool FinishFolder(const CopyStep& step, BDirectory& source, BDirectory& target,
                      const struct stat& record, bool isNew);
    bool Note(const char* name, status_t status);
    Children List(const char* name, BDirectory& folder);
    bool CopyFiles(const std::vector<std::string>& names, const CopyPlace& source,
                   const CopyPlace& target);
    bool CopyChildren(const std::vector<Child>& children, const CopyPlace& source,
                      const CopyPlace& target);

    OperationUI& fUI;
    const CopyPurpose fPurpose;
    CopyQueue fSmallFiles; // of all folders; empty again when the item is done
    node_ref fTopSource;   // the item itself
    // The folder that this item became. The walk never enters it: a folder copied into itself would
    // not end.
    node_ref fTopTarget;
    bool fHasTopTarget = false;
    bool fHasMetItself = false; // its target lies in it
    // The volume that was looked at last: it seldom changes within a tree.
    dev_t fDevice = 0;
    bool fHasDevice = false;
    bool fIsKernelDevice = false;
};

} // namespace norvane
