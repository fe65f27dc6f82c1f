#pragma once

#include <functional>
#include <string>

/// Runs `work` where a scene can be made: in a folder with the folders "one" and "two".
///
/// With an empty `given` they are two new file systems in memory, or plain folders where the system
/// allows no mounts of our own; then `hasVolumes` is false, and it says so. Otherwise they are what
/// is mounted at those names in the folder `given`.
///
/// Returns what `work` does. It runs in a process of its own, to which the mounts belong.
int OnStage(const std::string& given,
            const std::function<int(const std::string& root, bool hasVolumes)>& work);

/// Part of a whole that several processes share: "1/2" is the first of two.
struct Share
{
    size_t number = 0; // from 0
    size_t count = 1;

    bool Read(const std::string& word);
};
