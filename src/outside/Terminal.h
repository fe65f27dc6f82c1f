#pragma once

#include <string>
#include <vector>

namespace norvane {

/// How many words start the terminal.
constexpr int kTerminalWords = 3;

/// The words that start the terminal with a login shell, the first its path. False, after an alert
/// to the person, when none is found.
/// Thread: any but a window's; it looks at the disk, and waits for the alert.
bool configure_argv(std::string argv[kTerminalWords]);

/// Finds the program that is registered for a signature, and is of it. 0 when `path` was filled in,
/// else a negative status.
int get_app_from_sig(const char* signature, std::string* path);

/// Whether a path opens as a file for reading.
bool valid_file(const char* path);

/// Starts the terminal by its words with "FOLDER_PATH" in its environment. 1, or -1 after an alert
/// that tells the reason. Thread: as configure_argv().
int LaunchTerminal(int argc, const char** argv, const char* folder);

/// All entries of an environment (null ends it), then `entry`.
std::vector<std::string> my_putenv(const char* const* environment, const char* entry);

/// Opens the terminal in a folder, on a thread of its own; tells the person what keeps it from
/// that.
void OpenTerminal(const std::string& folder);

} // namespace norvane
