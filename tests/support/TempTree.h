#pragma once

#include <string>
#include <string_view>

/// A folder of its own for one test, removed with all that is in it at the end.
///
/// Names are relative to the folder; the folders above a name are made when they are missing. A failure ends the test
/// program with a message: nothing that follows would mean anything.
class TempTree
{
public:
    TempTree();
    ~TempTree();
    TempTree(const TempTree&) = delete;
    TempTree& operator=(const TempTree&) = delete;

    /// The absolute path of `name`; of the folder itself for "".
    std::string Path(std::string_view name = "") const;

    void Write(std::string_view name, std::string_view contents);
    void MakeFolder(std::string_view name);
    /// A symbolic link `name` whose text is `target`.
    void Link(std::string_view name, std::string_view target);
    void Remove(std::string_view name);

    /// The contents of a file; "(missing)" when it cannot be read.
    std::string Read(std::string_view name) const;
    /// The text of a link; "(no link)" when it is none.
    std::string ReadLink(std::string_view name) const;
    /// Whether there is an entry of that name, a broken link included.
    bool Exists(std::string_view name) const;
    bool IsFolder(std::string_view name) const;
    /// The names in a folder in byte order, each followed by a line break.
    std::string List(std::string_view name = "") const;

private:
    void MakeParent(const std::string& path) const;

    std::string fRoot;
};
