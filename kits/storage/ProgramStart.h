#pragma once

#include <OS.h>
#include <SupportDefs.h>

#include <string>
#include <vector>

namespace kits {

/// In a child between fork and exec: gives it a session of its own, and signals and limits as this
/// program was started with. `folder` becomes its working directory, unless it is null. Takes no
/// lock and no memory.
void PrepareChild(const char* folder);

/// What a child gets as its environment, as "NAME=VALUE": this program's own, but for what speaks
/// of its own start.
std::vector<std::string> EnvironmentOfChildren();
/// The variables that it leaves out; null ends them.
extern const char* const kVariablesOfOwnStart[];
/// Whether a "NAME=VALUE" is of one of them.
bool SpeaksOfOwnStart(const char* variable);

/// A program and what it is started with.
struct ProgramOrder
{
    std::string path;
    std::vector<std::string> arguments; // its own name not among them
    std::vector<std::string> environment = EnvironmentOfChildren();
    std::string folder; // its working directory; empty: this program's
};

/// Runs a program. It reads nothing and writes where this program does; its end is nobody's
/// business. Thread: any.
/// Errors: B_LAUNCH_FAILED_APP_NOT_FOUND when it is not there, B_LAUNCH_FAILED_EXECUTABLE when the
/// system cannot run it, B_PERMISSION_DENIED, B_NO_MORE_TEAMS, B_NO_MORE_FDS ...; `team` (may be
/// null) is unchanged then.
[[nodiscard]] status_t StartProgram(const ProgramOrder& order, team_id* team);

} // namespace kits
