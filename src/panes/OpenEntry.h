#pragma once

#include <Entry.h>
#include <Messenger.h>

#include <string>
#include <vector>

class BMessage;

namespace norvane {

/// Other programs, started on a thread of their own: disks and the desktop may keep them waiting.
/// `window` is sent a kNotOpened for each that could not be started, which TellNotOpened() shows.
///
/// Thread: any.

/// Opens an entry, or what it leads to, by the program that the desktop has for it; runs a program.
/// Nothing happens to a FIFO, socket or device, nor to an entry that is still being opened: who
/// presses a key twice wants one window.
void OpenEntry(const entry_ref& entry, const BMessenger& window);

/// Opens each of the entries in the text editor.
void OpenInEditor(std::vector<entry_ref> entries, const BMessenger& window);

/// Finds the programs for an entry, or for what it leads to, and tells `window` of them by a
/// kNotOpened, so that one can be chosen.
void OfferPrograms(const entry_ref& entry, const BMessenger& window);

/// Opens a folder in the desktop's file manager.
void OpenInTracker(const std::string& folder, const BMessenger& window);

/// Opens an entry by the program of a signature; one that is given a type is set for that type from
/// now on.
void OpenByProgram(const entry_ref& entry, const std::string& signature,
                   const std::string& typeToKeep, const BMessenger& window);

/// Shows what a kNotOpened says, and waits until it is read.
void TellNotOpened(const BMessage& message);

} // namespace norvane
