#pragma once

#include <SupportDefs.h>

class BMessage;
class BMessenger;
struct entry_ref;

namespace norvane {

/// Entries on the desktop's clipboard, and which of them were cut here and not pasted yet.
///
/// Thread: any.
class EntryClipboard
{
public:
    /// Puts what a list's message carries there; entries that were cut are moved when pasted.
    static void Copy(const BMessage& entries);
    static void Cut(const BMessage& entries);
    /// Has kEntriesToPaste sent to `list` with what is there, perhaps nothing.
    static void Ask(const BMessenger& list);
    /// Whether there are entries there to be pasted, as far as that can be known within a tenth of
    /// a second; true when it cannot.
    static bool MayHoldEntries();
    /// What kEntriesToPaste brought is being moved: if it was cut here it is taken away.
    static void Pasted(const BMessage& entries);

    /// The clipboard may hold something else now.
    static void Changed();
    /// Counts how often other entries became the ones that are cut.
    static uint32 Generation();
    static bool IsCut(const entry_ref& ref);
};

} // namespace norvane
