#pragma once

#include <EntryRef.h>
#include <SupportDefs.h>

#include <memory>
#include <vector>

namespace kits {

/// The known folders that a message's value speaks of: they stay known as long as it is held.
struct ValueFolders
{
    FolderHold own; // of an entry
    // Of the entries in a message inside; null when there are none.
    std::shared_ptr<const std::vector<FolderHold>> inner;
};

/// Finds the folder of an entry whose bytes are a message's value; null when it is not known.
using FindRefFolder = FolderHold (*)(const void* data, size_t size);

/// Registers the table of known folders, which lies above this layer.
/// Thread: before main().
void SetRefFolderHook(FindRefFolder hook);

/// Whether values of that type may speak of folders.
bool MayNameFolders(type_code type);
/// Errors: std::bad_alloc.
ValueFolders FoldersOf(type_code type, const void* data, size_t size);

} // namespace kits
