#pragma once

#include <StorageDefs.h>

#include <string>

class BDirectory;
class BEntry;
struct entry_ref;

/// An absolute path name, normalised by text.
///
/// A relative path is taken against the working directory. "", "." and doubled and trailing slashes
/// go; ".." takes its parent away by text, without looking at links, so the path need not exist.
/// Paths of any length are whole.
class BPath
{
public:
    /// Names nothing.
    BPath() = default;
    /// `path` and, below it, `leaf` (relative, may be null). `normalize` is kept for the callers of
    /// the platform: what needs it is normalised in any case.
    explicit BPath(const char* path, const char* leaf = nullptr, bool normalize = false);
    /// The path of a folder with `leaf` below it, of an entry, or of a ref.
    explicit BPath(const BDirectory* directory, const char* leaf = nullptr, bool normalize = false);
    explicit BPath(const BEntry* entry);
    explicit BPath(const entry_ref* ref);

    /// Errors: B_NO_INIT before a path was set; what the last SetTo() said.
    status_t InitCheck() const { return fStatus; }
    /// Takes a path. Errors: B_BAD_VALUE for null, an empty path or a `leaf` that is absolute;
    /// those of finding a folder's path. The path is unset then.
    status_t SetTo(const char* path, const char* leaf = nullptr, bool normalize = false);
    status_t SetTo(const BDirectory* directory, const char* leaf = nullptr, bool normalize = false);
    status_t SetTo(const BEntry* entry);
    status_t SetTo(const entry_ref* ref);
    /// Names nothing from now on.
    void Unset();
    /// Adds `path`, which is relative, at the end. Errors: B_BAD_VALUE; the path is unset then.
    status_t Append(const char* path, bool normalize = false);

    /// The path, or null when none is set. Ownership: lent until the path changes.
    const char* Path() const { return fStatus == B_OK ? fPath.c_str() : nullptr; }
    /// What follows the last slash ("" for "/"), or null when no path is set.
    const char* Leaf() const;
    /// The path without its leaf. Errors: B_NO_INIT; B_ENTRY_NOT_FOUND for "/".
    status_t GetParent(BPath* path) const;

    /// Equal texts; two unset paths are equal.
    bool operator==(const BPath& other) const;
    bool operator==(const char* path) const;

private:
    friend class BEntry;

    status_t Fail(status_t status);

    std::string fPath;
    status_t fStatus = B_NO_INIT;
};
