#pragma once

#include <SupportDefs.h>

#include <string>

class BMessage;

namespace kits {

/// How a menu shows a shortcut: "Ctrl+Shift+P", "Ctrl+Up". The Command key is the keyboard's Ctrl.
std::string ShortcutText(char shortcut, uint32 modifiers);

/// How well a key message fits a shortcut: the place of the fitting candidate in "kits:shortcut", 0
/// the best, or -1 when it does not fit. Command must be held; Shift and Option exactly as the
/// shortcut says.
int32 MatchShortcut(const BMessage& key, char shortcut, uint32 modifiers);

} // namespace kits
