#pragma once

#include "TempTree.h"

#include <cstdio>
#include <string>

/// What sha256sum prints in a folder of the tree when it is called with these arguments, as a shell
/// reads them.
inline std::string SumTool(const TempTree& tree, const std::string& folder,
                           const std::string& arguments)
{
    const std::string command =
        "cd '" + tree.Path(folder) + "' && sha256sum " + arguments + " 2>&1";
    std::string output;
    FILE* pipe = popen(command.c_str(), "r");
    char buffer[4096];
    for (size_t count = 0;
         pipe != nullptr && (count = fread(buffer, 1, sizeof(buffer), pipe)) > 0;) {
        output.append(buffer, count);
    }
    if (pipe != nullptr) {
        pclose(pipe);
    }
    return output;
}
