#include "SessionsFixture.h"

#include <Button.h>
#include <InterfaceDefs.h>
#include <StringView.h>

#include <sys/stat.h>

namespace norvane {

namespace {

using kits::testing::CountShown;
using kits::testing::TypeKey;
using kits::testing::WaitForNoWindow;
using kits::testing::WaitForWindow;

class ConWinTest : public SessionsFixture
{
protected:
    ConWinTest() { fTree.MakeFolder("config"); }
};

TEST_F(ConWinTest, HasItsViewsAndButtons)
{
    BWindow* window = OpenSessions("");

    for (const char* name : {"FtpConContainer", "lvConnections", "ScrollContainer"}) {
        EXPECT_NE(kits::testing::FindView(window, name), nullptr) << name;
    }
    struct
    {
        const char* name;
        const char* label;
        uint32 what;
    } const kButtons[] = {{"bConnect", "Connect", 203},
                          {"bNew", "New Connection", 205},
                          {"bEdit", "Edit", 206},
                          {"bDelete", "Delete", 207},
                          {"bCancel", "Cancel", 204}};
    for (const auto& [name, label, what] : kButtons) {
        const auto* button = dynamic_cast<BButton*>(kits::testing::FindView(window, name));
        ASSERT_NE(button, nullptr) << name;
        EXPECT_STREQ(button->Label(), label);
        EXPECT_EQ(button->Message()->what, what);
    }
    const auto* label = dynamic_cast<BStringView*>(kits::testing::FindView(window, "Label1"));
    ASSERT_NE(label, nullptr);
    EXPECT_STREQ(label->Text(), "Connect To:");
}

TEST_F(ConWinTest, ListsSessionsByName)
{
    for (const char* name : {"work.ftp", "a.b.ftp", "Norvane.pref", "x.FTP", "home.ftp.old"}) {
        WriteSession(name);
    }

    BWindow* window = OpenSessions("a.b|work|");

    EXPECT_TRUE(Locked(window, [=] { return ListOf(window)->IsFocus(); }));
    EXPECT_STREQ(Locked(window, [=] { return window->DefaultButton()->Name(); }), "bConnect");
}

TEST_F(ConWinTest, FirstStartMakesTheFolderAndSaysNothing)
{
    BWindow* window = OpenSessions("");

    ASSERT_TRUE(kits::testing::WaitFor([this] { return fTree.IsFolder("config/Norvane"); }));
    WriteSession("new.ftp");
    EXPECT_TRUE(Lists(window, "new|"));
    EXPECT_EQ(CountShown("Err"), 0);
}

TEST_F(ConWinTest, ConnectTellsTheOwnerAndCloses)
{
    WriteSession("a.b.ftp");
    WriteSession("home.ftp");
    BWindow* window = OpenSessions("a.b|home|");
    SelectRow(window, 0);

    Press(window, "bConnect");

    ASSERT_TRUE(WaitForNoWindow("Ftp Sessions"));
    EXPECT_EQ(fOwner->Chosen(), std::vector<std::string>{"a.b.ftp"});
}

TEST_F(ConWinTest, EnterInTheListConnects)
{
    WriteSession("a.ftp");
    WriteSession("b.ftp");
    OpenSessions("a|b|");

    TypeKey(B_DOWN_ARROW);
    TypeKey(B_DOWN_ARROW);
    TypeKey(B_ENTER);

    ASSERT_TRUE(WaitForNoWindow("Ftp Sessions"));
    EXPECT_EQ(fOwner->Chosen(), std::vector<std::string>{"b.ftp"});
}

TEST_F(ConWinTest, DoubleClickConnects)
{
    WriteSession("a.ftp");
    BWindow* window = OpenSessions("a|");

    kits::testing::Click(ListOf(window), BPoint(10, 5), B_PRIMARY_MOUSE_BUTTON, 2);

    ASSERT_TRUE(WaitForNoWindow("Ftp Sessions"));
    EXPECT_EQ(fOwner->Chosen(), std::vector<std::string>{"a.ftp"});
}

TEST_F(ConWinTest, NeedsASelection)
{
    WriteSession("a.ftp");
    BWindow* window = OpenSessions("a|");

    for (const char* button : {"bConnect", "bEdit", "bDelete"}) {
        Press(window, button);
        EXPECT_EQ(AlertText("Hey"), "info: Please select a session first. [OK]*") << button;
        ASSERT_TRUE(Answer("Hey", "OK"));
    }

    EXPECT_EQ(CountShown("Ftp Sessions"), 1);
    EXPECT_EQ(CountShown("Ftp Connection"), 0);
    EXPECT_TRUE(fOwner->Chosen().empty());
    EXPECT_TRUE(HasSession("a.ftp"));
}

TEST_F(ConWinTest, CancelCloses)
{
    WriteSession("a.ftp");
    BWindow* window = OpenSessions("a|");
    SelectRow(window, 0);

    Press(window, "bCancel");

    ASSERT_TRUE(WaitForNoWindow("Ftp Sessions"));
    EXPECT_TRUE(fOwner->Chosen().empty());
}

TEST_F(ConWinTest, EscapeCloses)
{
    OpenSessions("");

    TypeKey(B_ESCAPE);

    EXPECT_TRUE(WaitForNoWindow("Ftp Sessions"));
}

TEST_F(ConWinTest, NewOpensAnEmptyEditor)
{
    WriteSession("a.ftp");
    BWindow* window = OpenSessions("a|");
    SelectRow(window, 0);

    Press(window, "bNew");

    BWindow* editor = WaitForWindow("Ftp Connection");
    ASSERT_NE(editor, nullptr);
    EXPECT_EQ(TextIn(editor, "text1"), "");
    EXPECT_EQ(TextIn(editor, "text3"), "21");
}

TEST_F(ConWinTest, EditOpensTheSession)
{
    WriteSession("a.b.ftp", "Host=here\n");
    BWindow* window = OpenSessions("a.b|");
    SelectRow(window, 0);

    Press(window, "bEdit");

    BWindow* editor = WaitForWindow("Ftp Connection");
    ASSERT_NE(editor, nullptr);
    EXPECT_TRUE(Shows(editor, "text2", "here"));
    EXPECT_EQ(TextIn(editor, "text1"), "a.b");
    EXPECT_EQ(CountShown("Ftp Sessions"), 1);
}

TEST_F(ConWinTest, DeleteAsksFirst)
{
    WriteSession("a.b.ftp");
    BWindow* window = OpenSessions("a.b|");
    SelectRow(window, 0);

    Press(window, "bDelete");
    EXPECT_EQ(AlertText("Hey"), "warning: Are you sure you want to delete the session: a.b? "
                                "[Cancel] [Delete]*");
    ASSERT_TRUE(Answer("Hey", "Cancel"));

    ASSERT_TRUE(kits::testing::Sync(window));
    EXPECT_TRUE(HasSession("a.b.ftp"));
    EXPECT_EQ(Rows(window), "*a.b|");
}

TEST_F(ConWinTest, DeleteRemovesTheFile)
{
    WriteSession("a.ftp");
    WriteSession("b.ftp");
    BWindow* window = OpenSessions("a|b|");
    SelectRow(window, 1);

    Press(window, "bDelete");
    ASSERT_TRUE(Answer("Hey", "Delete"));

    EXPECT_TRUE(Lists(window, "a|"));
    EXPECT_FALSE(HasSession("b.ftp"));
    EXPECT_TRUE(HasSession("a.ftp"));
}

TEST_F(ConWinTest, DeletingWhatIsGoneSaysNothing)
{
    WriteSession("a.ftp");
    BWindow* window = OpenSessions("a|");
    SelectRow(window, 0);
    Press(window, "bDelete");
    ASSERT_NE(WaitForWindow("Hey"), nullptr);
    fTree.Remove(File("a.ftp"));

    ASSERT_TRUE(Answer("Hey", "Delete"));

    EXPECT_TRUE(Lists(window, ""));
    EXPECT_EQ(CountShown("Err"), 0);
}

TEST_F(ConWinTest, TellsWhatCannotBeDeleted)
{
    fTree.Write(File("folder.ftp/inside"), "kept");
    BWindow* window = OpenSessions("folder|");
    SelectRow(window, 0);

    Press(window, "bDelete");
    ASSERT_TRUE(Answer("Hey", "Delete"));

    const std::string text = AlertText("Err");
    EXPECT_EQ(text.substr(0, 45), "info: Could not delete the session folder: th") << text;
    EXPECT_TRUE(Answer("Err", "OK"));
    EXPECT_TRUE(fTree.Exists(File("folder.ftp/inside")));
}

TEST_F(ConWinTest, FollowsTheFolder)
{
    WriteSession("b.ftp");
    BWindow* window = OpenSessions("b|");
    SelectRow(window, 0);

    WriteSession("a.ftp");
    EXPECT_TRUE(Lists(window, "a|*b|"));
    WriteSession("other.pref");
    WriteSession("c.ftp");
    EXPECT_TRUE(Lists(window, "a|*b|c|"));
    fTree.Remove(File("a.ftp"));
    EXPECT_TRUE(Lists(window, "*b|c|"));
    fTree.Remove(File("b.ftp"));
    EXPECT_TRUE(Lists(window, "c|"));
}

TEST_F(ConWinTest, FollowsTheFolderThroughItsRemoval)
{
    WriteSession("a.ftp");
    BWindow* window = OpenSessions("a|");

    fTree.Remove("config/Norvane");
    EXPECT_TRUE(Lists(window, ""));
    ASSERT_TRUE(kits::testing::WaitFor([this] { return fTree.IsFolder("config/Norvane"); }));
    WriteSession("b.ftp");

    EXPECT_TRUE(Lists(window, "b|"));
}

TEST_F(ConWinTest, SavingInTheEditorAddsARow)
{
    BWindow* window = OpenSessions("");
    Press(window, "bNew");
    BWindow* editor = WaitForWindow("Ftp Connection");
    ASSERT_NE(editor, nullptr);
    Enter(editor, "text1", "new");
    Enter(editor, "text2", "host");
    Enter(editor, "text4", "me");

    Press(editor, "bOK");

    EXPECT_TRUE(Lists(window, "new|"));
    EXPECT_TRUE(WaitForNoWindow("Ftp Connection"));
}

TEST_F(ConWinTest, TellsOnceThatNothingIsWatched)
{
    fTree.Write("config/Norvane", "a file");

    BWindow* window = new ConWin(fOwner->Frame(), fOwner);
    window->Show();

    EXPECT_EQ(AlertText("Err"), "info: Out of memory. Node Monitoring disabled. [Oh Well]*");
    ASSERT_TRUE(Answer("Err", "Oh Well"));
    window->PostMessage('NDMN');
    ASSERT_TRUE(kits::testing::Sync(window));
    // With an alert it would not come as far as this.
    fTree.Remove("config/Norvane");
    WriteSession("b.ftp");
    window->PostMessage('NDMN');
    EXPECT_TRUE(Lists(window, "b|"));
    EXPECT_EQ(CountShown("Err"), 0);
}

TEST_F(ConWinTest, EditorsAreIndependent)
{
    WriteSession("a.ftp");
    BWindow* window = OpenSessions("a|");
    Press(window, "bNew");
    ASSERT_TRUE(kits::testing::WaitFor([] { return CountShown("Ftp Connection") == 1; }));
    Press(window, "bNew");
    ASSERT_TRUE(kits::testing::WaitFor([] { return CountShown("Ftp Connection") == 2; }));

    kits::testing::CloseWindow(window);

    ASSERT_TRUE(WaitForNoWindow("Ftp Sessions"));
    EXPECT_EQ(CountShown("Ftp Connection"), 2);
}

TEST_F(ConWinTest, EverythingHasItsPlaceInTheSmallestWindow)
{
    WriteSession("a.ftp");
    BWindow* window = OpenSessions("a|");

    kits::testing::ResizeWindow(window, 10, 10);
    ASSERT_TRUE(kits::testing::Sync(window));

    Locked(window, [=] {
        const BRect inside = window->Bounds();
        const BRect list = window->FindView("ScrollContainer")->Frame();
        EXPECT_GT(list.Width(), 80);
        float above = 0;
        for (const char* name : {"bConnect", "bNew", "bEdit", "bDelete", "bCancel"}) {
            const BRect button = window->FindView(name)->Frame();
            EXPECT_TRUE(inside.Contains(button)) << name;
            EXPECT_GT(button.top, above) << name;
            EXPECT_GT(button.left, list.right) << name;
            above = button.bottom;
        }
        return 0;
    });
}

} // namespace

} // namespace norvane
