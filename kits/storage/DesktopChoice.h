#pragma once

#include <SupportDefs.h>

#include <string>
#include <vector>

namespace kits {

/// Which of the desktop's programs opens what. Programs are known by the names of their desktop
/// files ("org.example.Editor.desktop"). Thread: any; the calls read desktop files.

/// The programs that say that they open such files, the one that is set for them first. This
/// program is never among the lists.
std::vector<std::string> ProgramsFor(const std::string& type);
/// All that open files of some kind, by their names as people read them.
std::vector<std::string> AllPrograms();
/// The one that is set for a type, or for what it derives from; empty when there is none.
std::string ProgramSetFor(const std::string& type);
/// Sets the program for a type, as the person's own choice. Errors: B_ENTRY_NOT_FOUND when there is
/// no such program, B_ERROR when the choice cannot be kept.
[[nodiscard]] status_t SetProgramFor(const std::string& type, const std::string& id);

/// The name for people, in their language; empty when there is no such program.
std::string NameOfProgram(const std::string& id);
/// The path of its desktop file.
std::string FileOfProgram(const std::string& id);

/// What stands for a program where the platform asks for a signature, and back; empty for a
/// signature that stands for none.
std::string SignatureOf(const std::string& id);
std::string ProgramOf(const std::string& signature);
/// The file of the program that a signature stands for, the terminal's included; empty when none is
/// installed.
std::string FileOfSignature(const std::string& signature);

} // namespace kits
