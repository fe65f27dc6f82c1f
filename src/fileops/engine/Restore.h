#pragma once

#include <Entry.h>

#include <string>

namespace norvane {

/// Moves an entry that lies in a Trash back to where its record says that it was. Nothing is
/// replaced, no folder made, and nothing copied to another volume: the reason why it stayed is
/// returned then; "" when it is back. Waits for the disk.
///
/// Thread: any.
std::string RestoreFromTrash(const entry_ref& entry);

} // namespace norvane
