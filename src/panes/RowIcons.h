#pragma once

#include <StorageDefs.h>

#include <memory>

class BBitmap;
struct entry_ref;

namespace norvane {

/// A picture for a row: its own, or one shared by all entries of a type, which lives for ever.
struct RowIcon
{
    std::unique_ptr<BBitmap> own; // null when `shared` is set
    const BBitmap* shared = nullptr;
};

/// The mini icon of an entry; of a link, that of its target.
/// Thread: any.
RowIcon FindRowIcon(const entry_ref& ref, mode_t mode);

// The program's own pictures, 16 x 16, made once. Thread: any.
const BBitmap* UpArrowIcon();
const BBitmap* RemoteFolderIcon();
const BBitmap* RemoteFileIcon();
const BBitmap* ManyFilesIcon();

} // namespace norvane
