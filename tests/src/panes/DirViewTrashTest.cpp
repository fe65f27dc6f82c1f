#include "PaneWindowFixture.h"

#include <Alert.h>
#include <InterfaceDefs.h>

namespace norvane {

using kits::testing::AnswerAlert;
using kits::testing::TypeFunctionKey;
using kits::testing::WaitFor;
using kits::testing::WaitForNoWindow;
using kits::testing::WaitForWindow;

/// The delete command: its questions and what follows from the answers.
class DirViewTrashTest : public PaneWindowFixture
{
protected:
    void TearDown() override
    {
        EXPECT_TRUE(WaitForNoWindow("Delete"));
        PaneWindowFixture::TearDown();
    }

    std::string Trashed() { return fTree.List("data/Trash/files"); }
};

TEST_F(DirViewTrashTest, TheSelectedEntryGoesIntoTheTrash)
{
    fTree.Write("shown/a", "1");
    fTree.Write("shown/b", "2");
    Open();
    Click(1);
    TypeFunctionKey(B_F8_KEY);
    ASSERT_NE(WaitForWindow("Sir?"), nullptr);
    std::string text;
    ASSERT_TRUE(AnswerAlert("Delete", &text));
    EXPECT_EQ(text, "Do you really want to delete the following files/folders:\n\ta");
    EXPECT_TRUE(WaitFor([this] { return Trashed() == "a\n"; }));
    EXPECT_TRUE(Becomes([this] { return Names(); }, ".. b "));
}

TEST_F(DirViewTrashTest, MarkedEntriesGoBeforeTheSelectedOne)
{
    for (const char* name : {"shown/a", "shown/b", "shown/c"}) {
        fTree.Write(name, "1");
    }
    Open();
    Locked([this] {
        fList->ToggleMark(3);
        fList->ToggleMark(2);
        fList->Select(1);
    });
    kits::testing::TypeKey(B_DELETE);
    std::string text;
    ASSERT_TRUE(AnswerAlert("Delete", &text));
    EXPECT_EQ(text, "Do you really want to delete the following files/folders:\n\tc\n\tb");
    EXPECT_TRUE(WaitFor([this] { return Trashed() == "b\nc\n"; }));
    EXPECT_TRUE(Becomes([this] { return Names(); }, ".. a "));
    EXPECT_EQ(Marked(), "");
}

TEST_F(DirViewTrashTest, CancelKeepsEntriesAndMarks)
{
    fTree.Write("shown/a", "1");
    Open();
    Locked([this] { fList->ToggleMark(1); });
    TypeFunctionKey(B_F8_KEY);
    ASSERT_TRUE(AnswerAlert("Cancel"));
    ASSERT_TRUE(kits::testing::Sync(fWindow));
    EXPECT_EQ(fTree.List("shown"), "a\n");
    EXPECT_EQ(Marked(), "a ");
    EXPECT_EQ(Trashed(), "");
}

TEST_F(DirViewTrashTest, InTheTrashItIsForGood)
{
    fTree.Write("data/Trash/files/tree/a", "1");
    fTree.Write("data/Trash/info/tree.trashinfo", "[Trash Info]\n");
    Open("data/Trash/files");
    Click(1);
    TypeFunctionKey(B_F8_KEY);
    std::string text;
    ASSERT_TRUE(AnswerAlert("Delete", &text));
    EXPECT_EQ(text, "Do you really want permanently delete the following files/folders:\n\ttree");
    EXPECT_TRUE(WaitFor([this] { return Trashed().empty(); }));
    EXPECT_TRUE(WaitFor([this] { return fTree.List("data/Trash/info").empty(); }));
}

TEST_F(DirViewTrashTest, TheParentRowIsNeverDeleted)
{
    fTree.Write("shown/a", "1");
    Open();
    Click(0);
    Locked([this] { fList->Trash(); }); // would wait for an answer if it asked
    EXPECT_EQ(kits::testing::CountShown("Sir?"), 0);
}

TEST_F(DirViewTrashTest, ARepeatedKeyAsksNothing)
{
    fTree.Write("shown/a", "1");
    Open();
    Click(1);
    const auto press = [this](int32 repeat) {
        BMessage key(B_KEY_DOWN);
        const char bytes[] = {B_DELETE, 0};
        key.AddString("bytes", bytes);
        key.AddInt32("be:key_repeat", repeat);
        fWindow->PostMessage(&key);
    };
    press(1);
    ASSERT_TRUE(kits::testing::Sync(fWindow)); // a question would keep it waiting
    press(0);
    EXPECT_TRUE(AnswerAlert("Cancel"));
}

TEST_F(DirViewTrashTest, AQueryPaneAsksAndDoesNothing)
{
    fTree.Write("shown/a", "1");
    fTree.Write("other/b", "1");
    Open();
    Locked([this] {
        BMessage results('quer');
        entry_ref ref;
        get_ref_for_path(fTree.Path("other/b").c_str(), &ref);
        results.AddRef("refs", &ref);
        results.AddString("QueryString", "name=b");
        fList->Populate(&results);
        fList->Select(0);
    });
    TypeFunctionKey(B_F8_KEY);
    ASSERT_TRUE(AnswerAlert("Delete"));
    ASSERT_TRUE(kits::testing::Sync(fWindow));
    kits::testing::SyncServer(); // an operation would be shown by now, and run to its end
    ASSERT_TRUE(WaitForNoWindow("Delete"));
    EXPECT_TRUE(fTree.Exists("other/b"));
}

// Other keys of operations

TEST_F(DirViewTrashTest, F6PostsAMove)
{
    fTree.Write("shown/a", "1");
    Open();
    Click(1);
    TypeFunctionKey(B_F6_KEY);
    ASSERT_TRUE(WaitFor([this] { return fWindow->Received().size() == 1; }));
    const BMessage message = fWindow->Received()[0];
    EXPECT_EQ(message.what, uint32(kLocalEntries));
    EXPECT_STREQ(message.GetString("TypeOfCopy", ""), "Move");
    EXPECT_STREQ(message.GetString("Dragging", ""), "false");
    EXPECT_STREQ(message.GetString("Direction", ""), "Right");
    EXPECT_EQ(message.GetString("From", ""), fTree.Path("shown"));
}

TEST_F(DirViewTrashTest, F6OnTheParentRowPostsNothing)
{
    Open();
    Click(0);
    TypeFunctionKey(B_F6_KEY);
    TypeFunctionKey(B_F1_KEY); // comes after it
    ASSERT_TRUE(WaitFor([this] { return fWindow->Received().size() == 1; }));
    EXPECT_EQ(fWindow->Received()[0].what, 140u);
}

TEST_F(DirViewTrashTest, F7AsksForAFolderOrAQuery)
{
    Open();
    TypeFunctionKey(B_F7_KEY);
    ASSERT_TRUE(WaitFor([this] { return fWindow->Received().size() == 1; }));
    TypeFunctionKey(B_F7_KEY, B_COMMAND_KEY);
    ASSERT_TRUE(WaitFor([this] { return fWindow->Received().size() == 2; }));
    EXPECT_EQ(fWindow->Received()[0].what, 106u);
    EXPECT_EQ(fWindow->Received()[1].what, 123u);
}

} // namespace norvane
