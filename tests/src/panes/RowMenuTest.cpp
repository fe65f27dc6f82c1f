#include "panes/RowMenu.h"

#include "ApplicationEnvironment.h"
#include "MessageCodes.h"

#include <MenuItem.h>
#include <Message.h>
#include <PopUpMenu.h>

#include <gtest/gtest.h>

#include <string>

namespace {

using namespace norvane;

/// What a menu offers: the labels that can be chosen, each followed by a bar.
std::string Enabled(const BPopUpMenu& menu)
{
    std::string labels;
    for (int32 i = 0; i < menu.CountItems(); i++) {
        if (menu.ItemAt(i)->IsEnabled()) {
            labels += menu.ItemAt(i)->Label() + std::string("|");
        }
    }
    return labels;
}

RowMenuFacts File()
{
    RowMenuFacts facts;
    facts.isFile = true;
    facts.canView = true;
    return facts;
}

TEST(RowMenuTest, AFileHasAllOfIt)
{
    EXPECT_EQ(Enabled(*MakeRowMenu(File(), BMessenger(), 1)),
              "Open|Open With|View|Edit|Cut|Copy|Paste|Copy Path|Copy to Next Pane|"
              "Move to Next Pane|Mark|Rename|Move to Trash|Properties|");
}

TEST(RowMenuTest, TheParentRowIsOpenedAndNothingElse)
{
    RowMenuFacts facts = File();
    facts.isParent = true;
    facts.isInTrash = true;
    EXPECT_EQ(Enabled(*MakeRowMenu(facts, BMessenger(), 1)), "Open|");
}

TEST(RowMenuTest, AFolderIsNoFile)
{
    EXPECT_EQ(Enabled(*MakeRowMenu(RowMenuFacts(), BMessenger(), 1)).substr(0, 9), "Open|Cut|");
}

TEST(RowMenuTest, AServersEntryIsCopiedRenamedAndDeleted)
{
    RowMenuFacts facts;
    facts.isLocal = false;
    facts.isDeletedForGood = true;
    EXPECT_EQ(Enabled(*MakeRowMenu(facts, BMessenger(), 1)),
              "Open|Paste|Copy to Next Pane|Mark|Rename|Delete|");
}

TEST(RowMenuTest, WithoutEntriesOnTheClipboardNothingIsPasted)
{
    RowMenuFacts facts = File();
    facts.canPaste = false;
    EXPECT_EQ(Enabled(*MakeRowMenu(facts, BMessenger(), 1)).find("Paste"), std::string::npos);
    EXPECT_EQ(Enabled(*MakePlaceMenu(facts, BMessenger(), 1)), "New Folder|Refresh|Open Terminal|");
}

TEST(RowMenuTest, AloneThereIsNoNextPane)
{
    RowMenuFacts facts = File();
    facts.hasNextPane = false;
    EXPECT_EQ(Enabled(*MakeRowMenu(facts, BMessenger(), 1)).find("Next"), std::string::npos);
}

TEST(RowMenuTest, InATrashEntriesGoBackOrAreDeleted)
{
    RowMenuFacts facts = File();
    facts.isInTrash = true;
    facts.isDeletedForGood = true;
    facts.isMarked = true;
    EXPECT_NE(Enabled(*MakeRowMenu(facts, BMessenger(), 1)).find("|Unmark|Rename|Restore|Delete|"),
              std::string::npos);
}

TEST(RowMenuTest, ItemsSayWhichMenuTheyAreOf)
{
    const auto menu = MakeRowMenu(File(), BMessenger(), 7);

    const BMessage& message = *menu->FindItem("Rename")->Message();

    EXPECT_EQ(message.what, kRowMenuChosen);
    EXPECT_EQ(message.GetInt32("command", -1), static_cast<int32>(RowCommand::kRename));
    EXPECT_EQ(message.GetInt32("menu", -1), 7);
}

} // namespace
