#include "panes/RowMenu.h"

#include "MessageCodes.h"

#include <InterfaceDefs.h>
#include <MenuItem.h>
#include <Message.h>
#include <PopUpMenu.h>

namespace norvane {

namespace {

/// Adds the items of one menu.
class MenuMaker
{
public:
    MenuMaker(const BMessenger& target, int32 number)
        : fMenu(std::make_unique<BPopUpMenu>("row", false, false)), fTarget(target), fNumber(number)
    {
    }

    BMenuItem* Add(const char* label, RowCommand command, bool isEnabled)
    {
        auto* message = new BMessage(kRowMenuChosen);
        message->AddInt32("command", static_cast<int32>(command));
        message->AddInt32("menu", fNumber);
        auto* item = new BMenuItem(label, message); // adopts it
        item->SetTarget(fTarget);
        item->SetEnabled(isEnabled);
        fMenu->AddItem(item); // adopted
        return item;
    }
    /// `key` works in the list, not in the menu.
    void AddWithKey(const char* label, RowCommand command, bool isEnabled, const char* key)
    {
        Add(label, command, isEnabled)->SetKeyText(key);
    }
    void AddLine() { fMenu->AddSeparatorItem(); }
    std::unique_ptr<BPopUpMenu> Take() { return std::move(fMenu); }

private:
    std::unique_ptr<BPopUpMenu> fMenu;
    const BMessenger fTarget;
    const int32 fNumber;
};

void AddTrash(MenuMaker& menu, const RowMenuFacts& facts, bool canChange)
{
    if (facts.isInTrash) {
        menu.Add("Restore", RowCommand::kRestore, canChange);
    }
    menu.AddWithKey(facts.isDeletedForGood ? "Delete" : "Move to Trash", RowCommand::kTrash,
                    canChange, "Delete");
}

} // namespace

std::unique_ptr<BPopUpMenu> MakeRowMenu(const RowMenuFacts& facts, const BMessenger& target,
                                        int32 number)
{
    MenuMaker menu(target, number);
    const bool isEntry = !facts.isParent;
    const bool isLocal = isEntry && facts.isLocal;
    menu.AddWithKey("Open", RowCommand::kOpen, facts.canOpen, "Enter");
    menu.Add("Open With", RowCommand::kOpenWith, isEntry && facts.isFile);
    menu.AddWithKey("View", RowCommand::kView, isEntry && facts.canView, "F3");
    menu.AddWithKey("Edit", RowCommand::kEdit, isEntry && facts.isFile, "F4");
    menu.AddLine();
    menu.AddWithKey("Cut", RowCommand::kCut, isLocal, "Ctrl+X");
    menu.AddWithKey("Copy", RowCommand::kCopy, isLocal, "Ctrl+C");
    menu.AddWithKey("Paste", RowCommand::kPaste, isEntry && facts.canPaste, "Ctrl+V");
    menu.Add("Copy Path", RowCommand::kCopyPath, isLocal);
    menu.AddWithKey("Copy to Next Pane", RowCommand::kCopyToNext, isEntry && facts.hasNextPane,
                    "F5");
    menu.AddWithKey("Move to Next Pane", RowCommand::kMoveToNext, isLocal && facts.hasNextPane,
                    "F6");
    menu.AddLine();
    menu.AddWithKey(facts.isMarked ? "Unmark" : "Mark", RowCommand::kMark, isEntry, "Insert");
    menu.AddWithKey("Rename", RowCommand::kRename, isEntry && facts.canRename, "Shift+F6");
    AddTrash(menu, facts, isEntry && facts.canRename);
    menu.AddLine();
    menu.Add("Properties", RowCommand::kProperties, isLocal);
    return menu.Take();
}

std::unique_ptr<BPopUpMenu> MakePlaceMenu(const RowMenuFacts& facts, const BMessenger& target,
                                          int32 number)
{
    MenuMaker menu(target, number);
    menu.AddWithKey("New Folder", RowCommand::kNewFolder, facts.canRename, "F7");
    menu.AddWithKey("Paste", RowCommand::kPaste, facts.canPaste, "Ctrl+V");
    menu.AddLine();
    menu.AddWithKey("Refresh", RowCommand::kRefresh, true, "F2");
    menu.AddWithKey("Open Terminal", RowCommand::kTerminal, facts.isLocal, "Ctrl+Shift+T");
    return menu.Take();
}

} // namespace norvane
