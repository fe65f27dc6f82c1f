#pragma once

#include <Messenger.h>
#include <Node.h>
#include <StorageDefs.h>

#include <memory>
#include <string>

class BBitmap;
struct entry_ref;

namespace norvane {

/// A picture for a row: its own, or one shared by all entries of a type, which lives for ever.
struct RowIcon
{
    std::unique_ptr<BBitmap> own; // null when `shared` is set
    const BBitmap* shared = nullptr;
};

/// The mini icon of an entry; of a link, that of its target. Looks at the disk.
/// Thread: any.
RowIcon FindRowIcon(const entry_ref& ref, mode_t mode);
/// The icon that an entry of that name and kind has when nothing else is known of it, as of most
/// nothing else is. Asks no disk.
const BBitmap* LikelyRowIcon(const entry_ref& ref, mode_t mode);
/// Looks for the icon by DiskErrands; when it is another one than `likely`, `list` is told by
/// kIconFound.
void FindRowIconLater(const entry_ref& ref, const node_ref& node, mode_t mode,
                      const BBitmap* likely, const BMessenger& list);

/// What kIconFound tells.
struct FoundIcon
{
    std::string name; // of the row
    node_ref node;    // of its entry
    RowIcon icon;

    /// False when the message is not such a one, or was read before.
    bool Read(const BMessage& message);
};

// The program's own pictures, 16 x 16, made once. Thread: any.
const BBitmap* UpArrowIcon();
const BBitmap* RemoteFolderIcon();
const BBitmap* RemoteFileIcon();
const BBitmap* ManyFilesIcon();

} // namespace norvane
