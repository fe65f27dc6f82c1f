#pragma once

#include "support/SharedText.h"

#include <SupportDefs.h>

#include <atomic>
#include <memory>

class BMessage;

namespace kits {

/// The desktop's clipboard, and what was selected last and the middle button pastes.
enum class ClipboardKind : uint8 { kClipboard, kPrimary };

struct ClipboardContent
{
    SharedText text;
    // Names what this program offered, while no other program has offered anything since; else 0.
    uint64 offer = 0;
    // The other program did not answer, or stopped in the middle; the text is empty then.
    bool isOwnerSilent = false;
    // Another program's files: "refs" and "be:actions". Null for none; there is no text then.
    std::shared_ptr<const BMessage> entries = nullptr;
};

/// The desktop's clipboard, which lies above this layer.
struct ClipboardHooks
{
    /// Makes `text` what other programs get; returns the offer's number, never 0. Does not wait;
    /// nothing is copied or converted before somebody asks for it.
    uint64 (*offer)(ClipboardKind kind, SharedText text) = nullptr;
    /// Tells what is there as far as that needs no other program; false when it does.
    bool (*peek)(ClipboardKind kind, ClipboardContent* content) = nullptr;
    /// Asks for what is there. Waits for another program: a second at most for its first bytes,
    /// five in all. Gives up soon after `isCancelled`, which may be null, has become true.
    ClipboardContent (*fetch)(ClipboardKind kind, const std::atomic<bool>* isCancelled) = nullptr;
    /// As `offer`, for a message with "refs" and "be:actions", which others get as files.
    uint64 (*offerEntries)(const std::shared_ptr<const BMessage>& data) = nullptr;
    /// As `fetch`, for the clipboard's files, or its text where it holds none. Waits for the disk.
    ClipboardContent (*fetchEntries)() = nullptr;
};

/// Registers the desktop; without it a program's clipboard is its own.
/// Thread: any; who asked before still uses those from before.
void SetClipboardHooks(const ClipboardHooks& hooks);
const ClipboardHooks& GetClipboardHooks();

/// Tells those who watch the clipboard that another program has changed it. Thread: any; waits for
/// nobody.
void ClipboardReplaced();

} // namespace kits
