#include "AlertText.h"
#include "AppFixture.h"
#include "DesktopPrograms.h"
#include "MessageCodes.h"

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
    fTree.Write("one/a\nfilm.mp4", "1");
    Open();
    Focus(0);
    Select(0, "a\nfilm.mp4");
    fWindow->PostMessage(kOpen); // the alert may come before anything else is handled
    EXPECT_EQ(AlertText("Err"), "info: Could not open a film.mp4: no installed program is set for "
                                "files of this kind [OK]*");
    EXPECT_TRUE(kits::testing::AnswerAlert("OK"));
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
