#pragma once

#include "Model.h"

/// Where the things are that somebody else reaches for while an operation works on them; paths from
/// the scene's root.
struct Places
{
    explicit Places(const Task& task, bool isLarge);

    std::string item; // the source
    std::string itemFolder;
    std::string target; // what becomes of it; "" where nothing does
    std::string targetFolder;
    bool isFolder = true; // the item

    bool HasTarget() const { return !target.empty(); }
    /// An entry inside the item, or the item where it is a file.
    std::string InItem(const std::string& name) const
    {
        return isFolder ? item + "/" + name : item;
    }
    std::string InTarget(const std::string& name) const
    {
        return isFolder ? target + "/" + name : target;
    }

    /// Whether the path is one of the source, also where somebody moved it.
    bool IsOfSource(const std::string& path) const;
    /// Whether it is one of what becomes of it, also where somebody moved that.
    bool IsOfTarget(const std::string& path) const;
    /// The path before somebody moved what is above it, as if no name had been taken in a Trash.
    std::string Before(const std::string& path) const;
};

/// What somebody else appends to a name that is moved out of the way.
inline constexpr const char* kAside = "-aside";
/// How what is written beside the file that it will replace is called.
inline constexpr const char* kBeside = ".norvane-";

std::string LeafOf(const std::string& path);
/// Whether it, or a folder above it, has such a name.
bool IsHidden(const std::string& path);
bool IsAtOrBelow(const std::string& path, const std::string& folder);
