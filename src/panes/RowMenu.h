#pragma once

#include <Messenger.h>
#include <SupportDefs.h>

#include <memory>

class BPopUpMenu;

namespace norvane {

/// What can be chosen in the menu of a row, or in that of the place below the rows.
enum class RowCommand : int32 {
    kOpen,
    kOpenWith,
    kView,
    kEdit,
    kCut,
    kCopy,
    kPaste,
    kCopyPath,
    kCopyToNext,
    kMoveToNext,
    kMark,
    kRename,
    kTrash,
    kRestore,
    kProperties,
    kNewFolder,
    kRefresh,
    kTerminal,
};

/// What is known of a row and its place when its menu is opened.
struct RowMenuFacts
{
    bool isParent = false;         // "..", which is opened and nothing else
    bool canOpen = true;           // it leads somewhere, or a program may open it
    bool isFile = false;           // a local entry that programs open
    bool canView = false;          // a local entry whose contents can be seen
    bool isLocal = true;           // what it acts on are local entries
    bool canRename = true;         // and do what changes the entries
    bool canPaste = true;          // there are entries on the clipboard, as far as is known
    bool hasNextPane = true;       // one that entries can go to
    bool isMarked = false;         // the item says that it takes the mark away
    bool isInTrash = false;        // entries can go back to where they were
    bool isDeletedForGood = false; // what is deleted does not go into a Trash
};

/// The menu of a row. Its items send `target` a kRowMenuChosen with the int32s "command" and
/// "menu": `number`. What cannot be done is there and disabled. Returned to the caller.
std::unique_ptr<BPopUpMenu> MakeRowMenu(const RowMenuFacts& facts, const BMessenger& target,
                                        int32 number);

/// The same for the place that the rows are in: below them.
std::unique_ptr<BPopUpMenu> MakePlaceMenu(const RowMenuFacts& facts, const BMessenger& target,
                                          int32 number);

} // namespace norvane
