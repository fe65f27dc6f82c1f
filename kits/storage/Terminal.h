#pragma once

#include <optional>
#include <string>
#include <vector>

namespace kits {

/// The path of a program that is looked for as a shell does: in the folders of $PATH unless its
/// name has a slash. Empty when there is none that may be run.
std::string FindProgram(const std::string& name);

/// The words of a command line, with its quotes and backslashes read; none when it is not one.
std::vector<std::string> WordsOf(const std::string& command);

/// The signature of the platform's terminal, which the program below stands for here.
constexpr const char* kTerminalSignature = "application/x-vnd.be-shel";

/// A program that shows a shell.
struct Terminal
{
    std::string path;
    std::vector<std::string> options; // what it is given before the command that it is to run
};

/// The terminal of $TERMINAL, else the system's `x-terminal-emulator`, else the first one known
/// that is installed. Thread: any; it looks at the disk.
std::optional<Terminal> FindTerminal();

/// The person's own shell, to be started as a login shell.
std::vector<std::string> LoginShell();

} // namespace kits
