#pragma once

#include <Messenger.h>
#include <Node.h>

#include <memory>
#include <string>

namespace norvane {

/// A part of a file, as it was when it was read.
struct FilePart
{
    bool isRead = false; // false: nothing came since one last asked
    int64 start = 0;
    std::string bytes;
    node_ref node;       // of the file
    int64 fileSize = -1; // negative: the file is not there, or nobody may read it

    /// Whether it tells what lies there, up to the file's end.
    bool Covers(int64 from, int64 to) const;
};

/// Reads parts of a file as they are looked at, on threads of their own that wait for the disk,
/// nothing else of it. What is no regular file is not opened.
///
/// Thread: the functions are the asker's.
class FilePartReading
{
public:
    /// `asker` is sent a kFilePartRead whenever Take() has something.
    FilePartReading(const std::string& path, const BMessenger& asker);
    /// Lets go. Waits for nothing.
    ~FilePartReading();
    FilePartReading(const FilePartReading&) = delete;
    FilePartReading& operator=(const FilePartReading&) = delete;

    /// Asks for a part, in place of what was asked for and not yet begun.
    void Ask(int64 start, size_t length);
    FilePart Take();

private:
    class Work;

    const std::shared_ptr<Work> fWork;
};

} // namespace norvane
