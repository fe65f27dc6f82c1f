#pragma once

#include <Node.h>

class BPath;

/// A symbolic link, itself.
class BSymLink : public BNode
{
public:
    /// Holds no link, or opens one as BNode::SetTo() does. What is no link is opened all the same:
    /// ReadLink() tells.
    BSymLink();
    explicit BSymLink(const entry_ref* ref);
    explicit BSymLink(const BEntry* entry);
    explicit BSymLink(const char* path);
    /// Opens the link at `path` from `directory`.
    BSymLink(const BDirectory* directory, const char* path);

    /// Copies the link's text, ended by a zero, at most `length` bytes with it.
    /// Returns the length of the whole text, or a status: B_BAD_VALUE when this is no link,
    /// B_NAME_TOO_LONG when `buffer` is too small (nothing is cut).
    ssize_t ReadLink(char* buffer, size_t length) const;
    /// The path that the link's text means from the folder at `directoryPath`, normalised by text;
    /// it need not exist. Returns its length, or a status.
    ssize_t MakeLinkedPath(const char* directoryPath, BPath* path) const;
    ssize_t MakeLinkedPath(const BDirectory* directory, BPath* path) const;
    /// Whether its text begins with a slash; false also when it cannot be read.
    bool IsAbsolute() const;
};
