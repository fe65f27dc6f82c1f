#pragma once

class BMessenger;

namespace norvane {

/// Opens the help page, which lies beside the program's own file, by the program that the desktop
/// has for it, on a thread of its own. Nothing happens where it is missing; `window` is sent a
/// kNotOpened when it could not be opened.
void OpenHelpPage(const BMessenger& window);

} // namespace norvane
