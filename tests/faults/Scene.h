#pragma once

#include <map>
#include <string>
#include <sys/types.h>
#include <vector>

/// What lies at one path.
struct SceneItem
{
    char kind = 'f';  // file, folder ('d'), link ('l')
    mode_t mode = 0;  // the nine bits
    std::string text; // contents, or what the link says
    bool operator==(const SceneItem&) const = default;
};

/// All below a folder, by path from there.
using Snapshot = std::map<std::string, SceneItem>;

/// The files that an operation works on, made anew for each point.
///
/// Every file has contents that no other has, so that wherever they turn up they are known again:
///
///     one/source/item   what is copied, moved, deleted
///     one/target        where to, on the same volume
///     two/target, two/source/item  the same on the other volume, where there is one
///     one/foreign       nobody's business
///     one/home          the home folder, with its Trash
class Scene
{
public:
    /// `root` is an empty folder.
    explicit Scene(std::string root) : fRoot(std::move(root)) {}

    const std::string& Root() const { return fRoot; }
    std::string Path(const std::string& name) const { return fRoot + "/" + name; }

    /// Empties the folders and fills them with the foreign files and the home folder.
    void Clear() const;
    /// Makes the tree to work on at `name`.
    void MakeItem(const std::string& name) const;
    /// Makes what an operation finds in its way: some of the item's files, older ones and newer,
    /// with other contents.
    void MakeClashes(const std::string& target) const;
    /// A file of `sizeBytes`, with contents made of its path.
    void MakeFile(const std::string& name, size_t sizeBytes, mode_t mode = 0644) const;

    Snapshot Look() const;

private:
    void MakeFolder(const std::string& name) const;
    void MakeLink(const std::string& name, const std::string& text) const;
    void SetTime(const std::string& name, time_t modified) const;

    std::string fRoot;
};

/// The part of a snapshot at and below `path`, by path from there ("" for itself).
Snapshot Below(const Snapshot& all, const std::string& path);
