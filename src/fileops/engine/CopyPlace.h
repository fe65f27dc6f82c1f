#pragma once

#include <string>

class BDirectory;

namespace norvane {

class MoveLedger;

/// An open folder of a copy, with the path it is shown by.
struct CopyPlace
{
    BDirectory& folder;
    std::string path;

    std::string PathOf(const char* name) const { return (path == "/" ? "" : path) + "/" + name; }
};

/// One entry on its way: where it is, and where it goes.
struct CopyStep
{
    const CopyPlace& source;
    const char* name;
    const CopyPlace& target;
    const char* targetName;

    std::string SourcePath() const { return source.PathOf(name); }
    std::string TargetPath() const { return target.PathOf(targetName); }
};

/// What a copy is made for.
struct CopyPurpose
{
    /// Null for a plain copy. Otherwise the sources will be deleted: they are written down here,
    /// and their attributes, owners, modes and times are taken along.
    MoveLedger* ledger = nullptr;
    /// Nothing that is there already is touched or asked about: a name that is taken is a failure.
    bool isAllNew = false;

    bool IsMove() const { return ledger != nullptr; }
};

/// How the copy of a file or a tree ended.
struct CopyResult
{
    bool isDone = false;   // what the person is told
    bool isWhole = false;  // every byte arrived
    bool isItself = false; // the target is the source, or lies in it
    bool isMade = false;   // something was made where nothing was
};

} // namespace norvane
