#pragma once

#include "viewer/FilePart.h"

#include <Messenger.h>

#include <string>

class BMessage;

namespace norvane {

/// Watches a file, and reads what comes to it.
///
/// Thread: the functions are the asker's.
class FileFollowing
{
public:
    /// `asker` is sent node monitor messages of the file's folder, and a kFilePartRead for each
    /// part.
    FileFollowing(const std::string& path, const BMessenger& asker);
    ~FileFollowing();
    FileFollowing(const FileFollowing&) = delete;
    FileFollowing& operator=(const FileFollowing&) = delete;

    /// Whether a node monitor message may be about the file.
    bool IsAbout(const BMessage& change, const node_ref& node) const;
    void Ask(int64 from);
    FilePart Take() { return fReading.Take(); }

private:
    const BMessenger fAsker;
    const std::string fName;
    FilePartReading fReading;
};

} // namespace norvane
