#pragma once

#include "fileops/engine/CopyPlace.h"
#include "fileops/engine/FolderChain.h"

#include <Node.h>
#include <SupportDefs.h>

#include <sys/stat.h>

#include <memory>
#include <string>
#include <vector>

namespace norvane {

class FileCopier;
class OperationUI;
struct OperationContext;

/// Copies one item of an operation, a folder with all below it: files first, then links, then
/// subfolders.
///
/// Works relative to open folders, so that a folder swapped for a link meanwhile leads nowhere
/// else; keeps few of them open, and a stack of its own, however deep the tree is. Thread: the
/// operation's.
class TreeCopier
{
public:
    /// Ownership: borrows all for its own life, `item` until the operation's small files are done.
    TreeCopier(OperationContext& context, const CopyPurpose& purpose, ItemCopy& item);

    void Copy(const std::shared_ptr<const CopyWay>& way, const char* name, const char* targetName);

private:
    struct Child
    {
        std::string name;
        struct stat record;
    };
    /// A folder that is being copied.
    struct Level
    {
        std::string name;
        std::string targetName;
        struct stat record; // of the source
        node_ref target;
        uint64 place;
        bool isNew;
        size_t sourcePathBytes; // of the folder above
        size_t targetPathBytes;
        std::vector<Child> folders;
        size_t next = 0; // of them
    };
    struct Children
    {
        std::vector<std::string> files;
        std::vector<Child> others;
        std::vector<Child> folders;
    };
    using Folder = std::unique_ptr<BDirectory>;
    using Way = std::shared_ptr<const CopyWay>;

    bool CopyOpened(const Way& way, const CopyStep& step);
    void EndOrQueue(std::unique_ptr<FileCopier> copier);
    void CopyOne(const Way& way, const CopyStep& step, const struct stat& record);
    void CopyTree(const CopyStep& step, const struct stat& record);
    void EnterNext();
    bool Enter(const CopyStep& step, const struct stat& record);
    void CopyContents();
    void Leave();
    CopyResult RefuseKind(const char* name);
    Folder OpenSource(const CopyStep& step, const struct stat& record);
    [[nodiscard]] status_t OpenChild(BDirectory* child, const BDirectory& folder, const char* name);
    void CloseOthers();
    bool IsKernelVolume(const BDirectory& folder, dev_t device);
    Folder OpenTarget(const CopyStep& step, bool* isNew);
    bool MayMerge(const CopyStep& step, const node_ref& source, const node_ref& target, bool isNew);
    bool KeepFolderAttributes(const CopyStep& step, const BDirectory& source, BDirectory* target);
    void FinishFolder(const Level& level, std::shared_ptr<BDirectory> source,
                      std::shared_ptr<BDirectory> target);
    void NoteMade(const CopyStep& step, const node_ref& made);
    bool Note(const char* name, status_t status);
    void Fail(const char* name, const char* reason);
    void FailReading(const char* name, status_t status);
    Children List(const char* name, BDirectory& folder);
    bool IsMovedWhole(const CopyStep& step);
    void CopyFile(const Way& way, const std::string& name, uint64 folder);

    OperationContext& fContext;
    OperationUI& fUI;
    const CopyPurpose fPurpose;
    ItemCopy& fItem;
    node_ref fTopSource; // the item itself
    // The folder that this item became. The walk never enters it: a folder copied into itself would
    // not end.
    node_ref fTopTarget;
    bool fHasTopTarget = false;
    bool fHasMetItself = false; // its target lies in it
    // The walk: where it is in the source and in the target, and the paths that are shown.
    std::unique_ptr<FolderChain> fSources;
    std::unique_ptr<FolderChain> fTargets;
    std::vector<Level> fLevels;
    std::string fSourcePath;
    std::string fTargetPath;
    bool fHasStableTarget = true;
    // The volume that was looked at last: it seldom changes within a tree.
    dev_t fDevice = 0;
    bool fHasDevice = false;
    bool fIsKernelDevice = false;
};

} // namespace norvane
