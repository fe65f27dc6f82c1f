#pragma once

#include "viewer/FileLoading.h"

#include <string>
#include <vector>

namespace norvane {

struct FileKind
{
    ViewedKind kind = ViewedKind::kNone;
    std::vector<const char*> complaints; // to be told, in their order
    bool isFile = false;                 // a regular one, or a link to one
};

/// What a file is to be shown as, by its type; through links. Texts are also what is none by its
/// name but of a kind of text: scripts, program data. Nothing but regular files is opened.
///
/// Thread: any; it waits for the disk.
FileKind FindFileKind(const std::string& path);

} // namespace norvane
