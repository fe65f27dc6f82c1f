#pragma once

#include <string>

namespace norvane {

/// What login shells read to begin in the folder that "FOLDER_PATH" names: appended once to the
/// home folder's ".profile".
extern const char* const kProfileSnippet;

/// Appends the snippet to the file at `path`, which is made when missing, unless it is in there. It
/// begins on a line of its own. A file that cannot be read or written stays as it is, also when the
/// medium is full half-way; one that another program of ours holds is left to that one.
///
/// Thread: any; it waits for the disk.
void AddProfileSnippet(const std::string& path);

} // namespace norvane
