#pragma once

#include <SupportDefs.h>

#include <string>

namespace kits {

/// The desktop's clipboard, and what was selected last and the middle button pastes.
enum class ClipboardKind : uint8 { kClipboard, kPrimary };

struct ClipboardContent
{
    std::string text;
    // Names what this program offered, while no other program has offered anything since; else 0.
    uint64 offer = 0;
};

/// The desktop's clipboard, which lies above this layer.
struct ClipboardHooks
{
    /// Makes `text` what other programs get; returns the offer's number, never 0. Does not wait.
    uint64 (*offer)(ClipboardKind kind, std::string text) = nullptr;
    /// Asks for what is there. Waits for another program, but not for one that does not answer.
    ClipboardContent (*fetch)(ClipboardKind kind) = nullptr;
};

/// Registers the desktop; without it a program's clipboard is its own.
/// Thread: before main().
void SetClipboardHooks(const ClipboardHooks& hooks);
const ClipboardHooks& GetClipboardHooks();

} // namespace kits
