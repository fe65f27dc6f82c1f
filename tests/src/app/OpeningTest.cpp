#include "AlertText.h"
#include "AppFixture.h"
#include "DesktopPrograms.h"
#include "MessageCodes.h"

#include <CheckBox.h>
#include <InterfaceDefs.h>
#include <ListView.h>
#include <Mime.h>

#include <filesystem>

namespace norvane {

/// What the main window has other programs open.
class OpeningTest : public AppFixture
{
protected:
    void SetUp() override
    {
        fPrograms.Clear();
        AppFixture::SetUp();
        WritePanes({"one", "two"});
    }

    /// What the one program that was started was given.
    std::string Given()
    {
        std::string given;
        for (const StartRecord& start : fPrograms.Await()) {
            for (size_t word = 1; word < start.arguments.size(); word++) {
                given += start.arguments[word] + "\n";
            }
        }
        return given;
    }

    DesktopPrograms& fPrograms = DesktopPrograms::Get();
};

TEST_F(OpeningTest, OpenIsWhatEnterDoes)
{
    fTree.Write("two/a.txt", "1");
    Open();
    Focus(1);
    Select(1, "a.txt");
    Send(kOpen);
    EXPECT_EQ(Given(), "text\n" + fTree.Path("two/a.txt") + "\n");
}

TEST_F(OpeningTest, OpenTrackerShowsTheFocusedPanesFolder)
{
    Open();
    Focus(1);
    Send(kOpenTracker);
    EXPECT_EQ(Given(), "folders\n" + fTree.Path("two") + "\n");
}

TEST_F(OpeningTest, SaysWhyAFileIsNotOpened)
{
    fTree.Write("one/a\nsong.mp3", "1");
    Open();
    Focus(0);
    Select(0, "a\nsong.mp3");
    fWindow->PostMessage(kOpen); // the alert may come before anything else is handled
    EXPECT_EQ(AlertText("Err"),
              "info: Could not open a\u20390A\u203Asong.mp3: its program, or what that needs, "
              "is not installed [OK]*");
    EXPECT_TRUE(kits::testing::AnswerAlert("OK"));
}

// A file whose kind has no program

class OpenWithTest : public OpeningTest
{
protected:
    void SetUp() override
    {
        OpeningTest::SetUp();
        fTree.Write("one/a\nb.xyz", std::string("\x01\x02\xff", 3));
    }

    /// Has the file opened, and gives the window that lists programs.
    BWindow* Ask()
    {
        Open();
        Focus(0);
        Select(0, "a\nb.xyz");
        fWindow->PostMessage(kOpen);
        return kits::testing::WaitForWindow("Open With");
    }

    static BListView* List(BWindow* window)
    {
        return dynamic_cast<BListView*>(window->FindView("programs"));
    }

    static void Choose(BWindow* window, const std::string& name)
    {
        const BAutolock lock(window);
        BListView* list = List(window);
        for (int32 row = 0; row < list->CountItems(); row++) {
            if (dynamic_cast<BStringItem*>(list->ItemAt(row))->Text() == name) {
                list->Select(row);
                return;
            }
        }
        FAIL() << name;
    }
};

TEST_F(OpenWithTest, TheProgramThatIsChosenOpensIt)
{
    BWindow* window = Ask();
    ASSERT_NE(window, nullptr);
    Choose(window, "odd name");
    window->PostMessage(kProgramChosen);
    EXPECT_EQ(Given(), "odd\n" + fTree.Path("one/a\nb.xyz") + "\n");
    EXPECT_TRUE(kits::testing::WaitFor([] { return kits::testing::CountShown("Open With") == 0; }));
    // Nothing was set.
    fPrograms.Clear();
    Send(kOpen);
    window = kits::testing::WaitForWindow("Open With");
    ASSERT_NE(window, nullptr);
    window->PostMessage(B_QUIT_REQUESTED);
}

TEST_F(OpenWithTest, TheListHasEveryProgramThatOpensFilesAndTheFirstIsSelected)
{
    BWindow* window = Ask();
    ASSERT_NE(window, nullptr);
    std::string rows;
    {
        const BAutolock lock(window);
        const BListView* list = List(window);
        for (int32 row = 0; row < list->CountItems(); row++) {
            rows += dynamic_cast<BStringItem*>(list->ItemAt(row))->Text() + std::string("\n");
        }
        EXPECT_EQ(list->CurrentSelection(), 0);
    }
    EXPECT_EQ(rows, "address\nbroken\nfolders\nodd name\ntext\n");
    window->PostMessage(B_QUIT_REQUESTED);
    EXPECT_TRUE(kits::testing::WaitFor([] { return kits::testing::CountShown("Open With") == 0; }));
    EXPECT_EQ(fPrograms.Count(), 0u);
}

TEST_F(OpenWithTest, TheChoiceIsKeptWhenAskedTo)
{
    fTree.Write("one/a.norvane-kept", "");
    BWindow* window = Ask();
    ASSERT_NE(window, nullptr);
    Choose(window, "odd name");
    {
        const BAutolock lock(window);
        dynamic_cast<BCheckBox*>(window->FindView("always"))->SetValue(B_CONTROL_ON);
    }
    window->PostMessage(kProgramChosen);
    EXPECT_EQ(Given(), "odd\n" + fTree.Path("one/a\nb.xyz") + "\n");
    const auto isSet = [] {
        char signature[B_MIME_TYPE_LENGTH];
        return BMimeType("application/octet-stream").GetPreferredApp(signature) == B_OK;
    };
    EXPECT_TRUE(kits::testing::WaitFor(isSet));
    fPrograms.Clear();
    Send(kOpen);
    EXPECT_EQ(Given(), "odd\n" + fTree.Path("one/a\nb.xyz") + "\n");
}

TEST_F(OpenWithTest, AFileThatWentMeanwhileIsTold)
{
    BWindow* window = Ask();
    ASSERT_NE(window, nullptr);
    std::filesystem::remove_all(fTree.Path("one"));
    Choose(window, "odd name");
    window->PostMessage(kProgramChosen);
    EXPECT_EQ(AlertText("Err").find("info: Could not open a\u20390A\u203Ab.xyz: "), 0u);
    EXPECT_TRUE(kits::testing::AnswerAlert("OK"));
    EXPECT_EQ(fPrograms.Count(), 0u);
}

// Help and terminal

TEST_F(OpeningTest, TheHelpPageBesideTheProgramIsOpened)
{
    Open();
    Send(kHelp);
    const std::string given = Given();
    EXPECT_EQ(given.substr(0, 8), "address\n");
    EXPECT_TRUE(given.ends_with("/Help.html\n")) << given;
}

TEST_F(OpeningTest, F1OpensIt)
{
    Open();
    kits::testing::TypeFunctionKey(B_F1_KEY);
    EXPECT_TRUE(Given().ends_with("/Help.html\n"));
}

TEST_F(OpeningTest, TheTerminalOpensInTheFocusedPanesFolder)
{
    DesktopPrograms::CopyRecorder(fTree.Path("terminal"));
    const Variable chosen("TERMINAL", fTree.Path("terminal").c_str());
    Open();
    Focus(1);
    Send(kOpenTerminal);
    const std::vector<StartRecord> started = fPrograms.Await();
    ASSERT_EQ(started.size(), 1u);
    EXPECT_EQ(started[0].facts.at("folder"), fTree.Path("two"));
}

TEST_F(OpeningTest, LoginShellsLearnWhereToBegin)
{
    fTree.MakeFolder("home");
    const Variable home("HOME", fTree.Path("home").c_str());
    Open();
    EXPECT_TRUE(kits::testing::WaitFor(
        [&] { return fTree.Read("home/.profile").starts_with("if [ \"$FOLDER_PATH\""); }));
}

TEST_F(OpeningTest, SaysThatALinkLeadsNowhere)
{
    fTree.Link("one/broken", "nowhere");
    Open();
    Focus(0);
    Select(0, "broken");
    fWindow->PostMessage(kOpen); // the alert may come before anything else is handled
    EXPECT_EQ(AlertText("Err"), "info: Could not open broken: the link leads nowhere [OK]*");
    EXPECT_TRUE(kits::testing::AnswerAlert("OK"));
}

} // namespace norvane
