#pragma once

#include "fileops/engine/OperationUI.h"

#include <NodeRef.h>
#include <SupportDefs.h>

#include <memory>
#include <string>
#include <string_view>

class BDirectory;

namespace norvane {

class MoveLedger;

/// An open folder of a copy, with the path it is shown by.
struct CopyPlace
{
    BDirectory& folder;
    std::string path; // to be read; says nothing about which folder it is
    node_ref node = {};
    bool isNew = false;                          // of a target: made by this operation
    bool hasStableNodes = true;                  // of its volume
    std::shared_ptr<BDirectory> owner = nullptr; // keeps it open; null: it is lent

    std::string PathOf(const char* name) const { return ShownPath(path, name); }
};

/// Where an entry stands below the folder that its item lies in, as a number: that of the folder it
/// is in, with its name.
uint64 PlaceBelow(uint64 folder, std::string_view name);

/// The two folders of files that are copied; held by whoever may look at them later.
struct CopyWay
{
    CopyPlace source;
    CopyPlace target;
};

/// One entry on its way: where it is, and where it goes.
struct CopyStep
{
    const CopyPlace& source;
    const char* name;
    const CopyPlace& target;
    const char* targetName;
    uint64 place = 0; // PlaceBelow() of the source

    std::string SourcePath() const { return source.PathOf(name); }
    std::string TargetPath() const { return target.PathOf(targetName); }
};

/// What a copy is made for.
struct CopyPurpose
{
    /// Null for a plain copy. Otherwise the sources will be deleted: they are written down here,
    /// and their attributes, owners, modes and times are taken along.
    MoveLedger* ledger = nullptr;
    /// Of a plain copy: attributes, owners, modes and times are taken along all the same, as far as
    /// that goes, and links stay as they are.
    bool keepsAll = false;
    /// Of a move: what lies where a folder is merged into gets its place there, where that can be.
    bool isByRenaming = false;
    /// Nothing that is there already is touched or asked about: a name that is taken is a failure.
    bool isAllNew = false;
    /// When it was measured: then it is opened without a look before.
    bool wasFile = false;
    /// Of the journal.
    size_t item = 0;

    bool IsMove() const { return ledger != nullptr; }
    bool TakesAllAlong() const { return IsMove() || keepsAll; }
};

/// How the copy of a file or a tree ended.
struct CopyResult
{
    bool isDone = false;           // what the person is told
    bool isWhole = false;          // every byte arrived
    bool isItself = false;         // the target is the source, or lies in it
    bool isMade = false;           // something was made where nothing was
    bool hasFailedReading = false; // the source, or something in it; also: it changed meanwhile
    bool isLeft = false;           // the person wants it to stay where it is
    node_ref target = {};          // what the source became, or was merged into

    /// Takes over how a part of this ended.
    void TakePart(const CopyResult& part)
    {
        isWhole = isWhole && part.isWhole;
        hasFailedReading = hasFailedReading || part.hasFailedReading;
        isLeft = isLeft || part.isLeft;
    }
};

/// One item's copy, of which small files may still be under way.
struct ItemCopy
{
    CopyResult result;
    int32 queued = 0; // how many, and how many folders that wait for them; the result is known when
                      // there are none
    bool isFile = false; // itself, and small

    /// Takes over how a small file ended.
    void EndQueued(const CopyResult& part)
    {
        if (isFile) {
            result = part;
        } else {
            result.TakePart(part);
        }
        queued--;
    }
};

} // namespace norvane
