#include "PaneWindowFixture.h"
#include "panes/FilterField.h"

#include <InterfaceDefs.h>
#include <TextView.h>
#include <ViewDescription.h>

#include <cstdio>

namespace {

using namespace norvane;

/// A pane with a filter, worked by keys.
class PaneFilterTest : public PaneWindowFixture
{
protected:
    void SetUp() override
    {
        PaneWindowFixture::SetUp();
        for (const char* name : {"apple", "banana", "bean", "cherry"}) {
            fTree.Write(std::string("shown/") + name, "text");
        }
        fTree.MakeFolder("shown/box");
        fTree.Write("shown/box/inside", "");
        Open();
    }

    bool HasField()
    {
        return Locked([this] { return fPane->Filter() != nullptr; });
    }

    bool FieldHasFocus()
    {
        return Locked([this] { return fPane->Filter() != nullptr && fPane->Filter()->HasFocus(); });
    }

    bool ListHasFocus()
    {
        return Locked([this] { return fList->IsFocus(); });
    }
};

TEST_F(PaneFilterTest, NarrowsAsItIsTyped)
{
    Type('/');
    EXPECT_TRUE(FieldHasFocus());
    EXPECT_EQ(Names(), ".. box apple banana bean cherry ");
    Type('b');
    EXPECT_EQ(Names(), ".. box banana bean ");
    EXPECT_EQ(Selected(), "box");
    Type('a');
    EXPECT_EQ(Names(), ".. banana ");
    EXPECT_EQ(Selected(), "banana");
    Type(B_BACKSPACE);
    EXPECT_EQ(Names(), ".. box banana bean ");
    EXPECT_TRUE(FieldHasFocus());
    EXPECT_TRUE(Locked([this] { return fPane->Header()->IsSelected(); }));
}

TEST_F(PaneFilterTest, ArrowsMoveInTheListMeanwhile)
{
    Type('/');
    Type('b');
    Type(B_DOWN_ARROW);
    EXPECT_EQ(Selected(), "banana");
    Type(B_DOWN_ARROW, B_SHIFT_KEY);
    EXPECT_EQ(Marked(), "banana bean ");
    Type(B_UP_ARROW);
    EXPECT_TRUE(FieldHasFocus());
    Type('n');
    EXPECT_EQ(Names(), ".. ");
}

TEST_F(PaneFilterTest, InsertMarksMeanwhileAndWithShiftPastes)
{
    Type('/');
    Type('b');
    Type(B_INSERT);
    Type(B_INSERT);
    EXPECT_EQ(Marked(), "box banana ");
    Type(B_INSERT, B_SHIFT_KEY); // whatever is on the clipboard, it goes to the text
    EXPECT_EQ(Marked(), "box banana ");
}

TEST_F(PaneFilterTest, AFunctionKeyIsForTheList)
{
    Type('/');
    Type('r');
    kits::testing::TypeFunctionKey(B_F6_KEY, B_SHIFT_KEY);
    EXPECT_TRUE(kits::testing::WaitFor([this] {
        return Locked([this] { return fList->FindView("renamecontainer") != nullptr; });
    }));
}

TEST_F(PaneFilterTest, TheFieldIsNamed)
{
    Type('/');
    const BViewDescription said = Locked([this] {
        BViewDescription description;
        fPane->Filter()->TextView()->Describe(&description);
        return description;
    });
    EXPECT_EQ(said.role, BViewDescription::Role::kTextField);
    EXPECT_EQ(said.name, "Filter");
}

TEST_F(PaneFilterTest, ReturnLeavesTheFieldAndKeepsTheFilter)
{
    Type('/');
    Type('b');
    Type(B_ENTER);
    EXPECT_TRUE(ListHasFocus());
    EXPECT_TRUE(HasField());
    Type('+');
    EXPECT_EQ(Marked(), "box banana bean ");
}

TEST_F(PaneFilterTest, EscapeEndsItAndKeepsTheRow)
{
    Type('/');
    Type('r');
    EXPECT_EQ(Selected(), "cherry");
    Type(B_ESCAPE);
    EXPECT_FALSE(HasField());
    EXPECT_TRUE(ListHasFocus());
    EXPECT_EQ(Names(), ".. box apple banana bean cherry ");
    EXPECT_EQ(Selected(), "cherry");
}

TEST_F(PaneFilterTest, EscapeInTheListEndsItToo)
{
    Type('/');
    Type('r');
    Type(B_ENTER);
    Type(B_ESCAPE);
    EXPECT_FALSE(HasField());
    EXPECT_EQ(Names(), ".. box apple banana bean cherry ");
}

TEST_F(PaneFilterTest, AnEmptyFieldGoesWithReturn)
{
    Type('/');
    Type(B_ENTER);
    EXPECT_FALSE(HasField());
    EXPECT_TRUE(ListHasFocus());
}

TEST_F(PaneFilterTest, AnotherFolderEndsIt)
{
    Type('/');
    Type('x');
    Type(B_ENTER);
    Type(B_ENTER);
    ASSERT_TRUE(Becomes([this] { return Names(); }, ".. inside "));
    EXPECT_FALSE(HasField());
}

TEST_F(PaneFilterTest, ReadingAgainKeepsIt)
{
    Type('/');
    Type('r');
    Type(B_ENTER);
    fTree.Write("shown/drum", "");
    Locked([this] {
        fList->Refresh();
        return 0;
    });
    EXPECT_TRUE(Becomes([this] { return Names(); }, ".. cherry drum "));
    EXPECT_TRUE(HasField());
}

TEST_F(PaneFilterTest, FollowsTheFolder)
{
    Type('/');
    Type('r');
    fTree.Write("shown/drum", "");
    fTree.Write("shown/flute", "");
    EXPECT_TRUE(Becomes([this] { return Names(); }, ".. cherry drum "));
    fTree.Remove("shown/cherry");
    EXPECT_TRUE(Becomes([this] { return Names(); }, ".. drum "));
}

TEST_F(PaneFilterTest, MarksOutOfSightAreToldAndLeftAlone)
{
    Type('+');
    Type('/');
    Type('r');
    EXPECT_TRUE(Becomes([this] { return Locked([this] { return fPane->Footer()->Marks(); }); },
                        "1 marked, 4 Bytes; 4 marked out of sight"));
    const std::unique_ptr<BMessage> message(Locked([this] { return fList->GetRefMsg(-1); }));
    entry_ref ref;
    ASSERT_EQ(message->FindRef("refs", 0, &ref), B_OK);
    EXPECT_STREQ(ref.name, "cherry");
    EXPECT_NE(message->FindRef("refs", 1, &ref), B_OK);
}

TEST_F(PaneFilterTest, TheFieldCoversNoRow)
{
    const float before = Locked([this] { return fList->Frame().Height(); });
    Type('/');
    Locked([this, before] {
        EXPECT_LT(fList->Frame().Height(), before);
        const BRect field = fPane->Filter()->Frame();
        EXPECT_GT(field.top, fList->Parent()->Frame().bottom);
        EXPECT_LT(field.bottom, fPane->Footer()->Frame().top);
        return 0;
    });
    Type(B_ESCAPE);
    EXPECT_EQ(Locked([this] { return fList->Frame().Height(); }), before);
}

TEST_F(PaneFilterTest, ARowThatIsRenamedGoesWithItsField)
{
    Type('/');
    Type('r');
    Type(B_ENTER);
    Locked([this] {
        fList->DoRename();
        return 0;
    });
    ASSERT_FALSE(ListHasFocus());
    fTree.Write("shown/drum", "");
    ASSERT_TRUE(Becomes([this] { return Names(); }, ".. cherry drum "));
    ASSERT_EQ(rename(fTree.Path("shown/cherry").c_str(), fTree.Path("shown/apricot").c_str()), 0);
    ASSERT_EQ(rename(fTree.Path("shown/apricot").c_str(), fTree.Path("shown/lemon").c_str()), 0);
    EXPECT_TRUE(Becomes([this] { return Names(); }, ".. drum "));
    EXPECT_EQ(Locked([this] { return fList->FindView("renamecontainer"); }), nullptr);
    EXPECT_TRUE(kits::testing::WaitFor([this] { return ListHasFocus(); }));
}

TEST_F(PaneFilterTest, ANewFolderIsSeen)
{
    Type('/');
    Type('y');
    Type(B_ENTER);
    Locked([this] {
        fList->DoNewFolder();
        return 0;
    });
    EXPECT_TRUE(Becomes([this] { return Selected(); }, "New Folder"));
    EXPECT_FALSE(HasField());
}

} // namespace
