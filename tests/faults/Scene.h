#pragma once

#include <map>
#include <string>
#include <sys/types.h>
#include <vector>

/// The home Trash, from the scene's root.
inline constexpr const char* kHomeTrash = "one/home/.local/share/Trash";
/// It and those of the volumes' own; the first volume's serves while the home Trash cannot be
/// found. The harness is root in a name space of its own, or it has no volumes.
inline constexpr const char* kTrashes[] = {kHomeTrash, "one/.Trash-0", "two/.Trash-0"};

/// What lies at one path.
struct SceneItem
{
    char kind = 'f';          // file, folder ('d'), link ('l')
    mode_t mode = 0;          // the nine bits
    std::string text;         // contents, or what the link says
    std::string note;         // its one attribute, where the file system keeps any
    long long modifiedNs = 0; // not compared: making something in a folder changes it
    unsigned long node = 0;   // not compared: its number on its volume

    bool operator==(const SceneItem& other) const
    {
        return kind == other.kind && mode == other.mode && text == other.text && note == other.note;
    }
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
///
/// In the Trash lies something older, which no operation may touch unless it empties the Trash.
class Scene
{
public:
    /// `root` is a folder with the folders "one" and "two".
    explicit Scene(std::string root);

    const std::string& Root() const { return fRoot; }
    std::string Path(const std::string& name) const { return fRoot + "/" + name; }

    /// Whether both volumes keep links, modes, attributes; what one does not keep is made on
    /// none, and all modes look the same then.
    bool HasLinks() const { return fHasLinks; }
    bool HasModes() const { return fHasModes; }
    bool HasAttributes() const { return fHasAttributes; }
    /// Whether both keep times to the nanosecond; else what is seen of them is cut to what all
    /// keep.
    bool HasFineTimes() const { return fHasFineTimes; }
    /// Whether on one of them names that differ only by case are one name.
    bool FoldsNames() const { return fFoldsNames; }

    /// Empties the folders and fills them with the foreign files and the home folder.
    void Clear() const;
    /// Makes the tree to work on at `name`.
    void MakeItem(const std::string& name) const;
    /// Makes what an operation finds in its way: some of the item's files, older ones and newer,
    /// with other contents, and a link.
    void MakeClashes(const std::string& target) const;
    /// Makes the tree `name` in the home Trash, with its record.
    void MakeTrashed(const std::string& name) const;
    /// The tree to work on, with a link in it that leads out of it from where it is.
    void MakeItemWithLinkOut(const std::string& name) const;
    /// A tree with two files whose names differ only by case; with one where those are one name.
    void MakeItemOfTwoCases(const std::string& name) const;
    /// A file of several blocks.
    void MakeLarge(const std::string& name) const;
    /// A file of `sizeBytes`, with contents made of its path.
    void MakeFile(const std::string& name, size_t sizeBytes, mode_t mode = 0644) const;
    /// A file, with the folders above it, that says `text`.
    void MakeText(const std::string& name, const std::string& text, mode_t mode) const;
    void MakeFolder(const std::string& name, mode_t mode = 0755) const;
    /// Gives a file a time of change between those of old and of new clashes.
    void Age(const std::string& name) const;

    Snapshot Look() const;

private:
    void MakeLink(const std::string& name, const std::string& text) const;
    void SetTime(const std::string& name, time_t modified) const;

    void Probe(const std::string& volume);

    std::string fRoot;
    bool fHasLinks = true;
    bool fHasModes = true;
    bool fHasAttributes = true;
    bool fHasFineTimes = true;
    bool fFoldsNames = false;
};

/// The part of a snapshot at and below `path`, by path from there ("" for itself).
Snapshot Below(const Snapshot& all, const std::string& path);
