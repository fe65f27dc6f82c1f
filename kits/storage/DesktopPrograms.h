#pragma once

#include <OS.h>
#include <SupportDefs.h>

#include <string>
#include <vector>

namespace kits {

/// Starts the programs that the desktop has for types of files.
///
/// What is started goes on by itself: it has a session of its own, the signals and the limit of
/// descriptors that this program was started with, none of its descriptors but those for output,
/// and nobody has to wait for its end. No shell reads any name. Calls take as long as desktop files
/// and the session's bus do, half a minute at worst. `team` (may be null) is the program's process,
/// 0 when the session's bus started it. Thread: any.

/// Opens files or folders by the program that is set for a type, or for what that type derives
/// from. Errors: B_LAUNCH_FAILED_NO_PREFERRED_APP when none is set that is installed,
/// B_LAUNCH_FAILED_APP_NOT_FOUND, B_PERMISSION_DENIED, B_TIMED_OUT, B_BAD_VALUE for a path that is
/// not absolute, B_LAUNCH_FAILED ...
[[nodiscard]] status_t OpenByType(const std::string& type, const std::vector<std::string>& paths,
                                  team_id* team);

/// Opens files by the program of that desktop file ("org.example.Editor.desktop"). Errors: as
/// above, B_LAUNCH_FAILED_APP_NOT_FOUND when there is no such program.
[[nodiscard]] status_t OpenByProgram(const std::string& id, const std::vector<std::string>& paths,
                                     team_id* team);

/// Opens files by the program for plain text, else by $VISUAL or $EDITOR in a terminal.
[[nodiscard]] status_t OpenInTextEditor(const std::vector<std::string>& paths, team_id* team);

/// Opens folders by the desktop's file manager, which is never this program.
[[nodiscard]] status_t OpenInFileManager(const std::vector<std::string>& paths, team_id* team);

} // namespace kits
