#include "fileops/windows/WindowUI.h"

#include "AlertText.h"
#include "OperationFixture.h"
#include "fileops/engine/Operations.h"
#include "fileops/windows/MessageBox.h"

#include <Application.h>

#include <sys/stat.h>
#include <unistd.h>

#include <future>

namespace norvane {

using kits::testing::AnswerAlert;

/// What operations say and ask, to the letter: kind, text, buttons, which one is the default.
class OperationAlertsTest : public OperationFixture
{
};

TEST_F(OperationAlertsTest, TellsOfABrokenLink)
{
    fTree.Link("from/link", "nowhere");
    Start(Request({"from/link"}));
    EXPECT_EQ(AlertText("foo"), "info: You appear to be trying to copy a link that is broken.  "
                                "This is not supported in this version. [OK]*");
    EXPECT_TRUE(AnswerAlert("OK"));
    EXPECT_TRUE(HasEnded());
}

TEST_F(OperationAlertsTest, TellsGraveThingsWithAStopSign)
{
    const std::future<void> told = std::async(std::launch::async, [] {
        WindowUI(nullptr, nullptr).Tell("file", ItemAlert::kVolumeFull);
    });
    EXPECT_EQ(AlertText("foo"), "stop: Out of space on the target volume. [OK]*");
    EXPECT_TRUE(AnswerAlert("OK"));
}

TEST_F(OperationAlertsTest, TellsOnceWhatWasNotHandledWhole)
{
    for (int number = 10; number < 32; number++) {
        const std::string name = "from/tree/pipe" + std::to_string(number);
        fTree.MakeFolder("from/tree");
        ASSERT_EQ(mkfifo(fTree.Path(name).c_str(), 0600), 0);
    }
    Start(Request({"from/tree"}));
    std::string expected = "info: Some items could not be handled whole:";
    for (int number = 10; number < 30; number++) {
        expected +=
            "\n\tpipe" + std::to_string(number) + ": it is neither a file nor a folder nor a link";
    }
    EXPECT_EQ(AlertText("Err"), expected + "\n\tand 2 more [OK]*");
    EXPECT_TRUE(AnswerAlert("OK"));
    EXPECT_TRUE(HasEnded());
}

TEST_F(OperationAlertsTest, AsksBeforeItStops)
{
    fTree.Write("from/a", "new");
    fTree.Write("to/a", "old");
    fTree.Write("from/large", "");
    ASSERT_EQ(truncate(fTree.Path("from/large").c_str(), 200 << 20), 0);
    CopyWin* window = Start(Request({"from/a", "from/large"}));
    ASSERT_NE(kits::testing::WaitForWindow("Item Exists"), nullptr);
    BMessage key(B_KEY_DOWN);
    const char escape[] = {B_ESCAPE, 0};
    key.AddString("bytes", escape);
    window->PostMessage(&key);
    Answer("Overwrite");
    EXPECT_EQ(AlertText("Sir?"), "warning: Stop this operation? [Stop] [Continue]*");
    EXPECT_TRUE(AnswerAlert("Stop"));
    EXPECT_TRUE(HasEnded());
}

/// A copy that waits at a question, with a large file to come.
class StopFromOutsideTest : public OperationAlertsTest
{
protected:
    void SetUp() override
    {
        OperationAlertsTest::SetUp();
        fTree.Write("from/a", "new");
        fTree.Write("to/a", "old");
        fTree.Write("from/large", std::string(40 << 20, 'x'));
        Start(Request({"from/a", "from/large"}));
        ASSERT_NE(kits::testing::WaitForWindow("Item Exists"), nullptr);
    }
};

TEST_F(StopFromOutsideTest, WhoStartedItCanHaveItAsk)
{
    Operations::AskToStop(BMessenger()); // what started it here is no window
    Answer("Overwrite");
    EXPECT_EQ(AlertText("Sir?"), "warning: Stop this operation? [Stop] [Continue]*");
    EXPECT_TRUE(AnswerAlert("Stop"));
    EXPECT_TRUE(HasEnded());
    EXPECT_FALSE(fTree.Exists("to/large"));
}

TEST_F(StopFromOutsideTest, NobodyElseCan)
{
    Operations::AskToStop(BMessenger(nullptr, be_app));
    Answer("Overwrite");
    EXPECT_TRUE(HasEnded());
    EXPECT_TRUE(fTree.Exists("to/large"));
}

TEST_F(OperationAlertsTest, AMessageBoxIsForInformation)
{
    const std::future<int32> answer = std::async(
        std::launch::async, [] { return MessageBox("Which?", "A title", "One", "Two", "Three"); });
    EXPECT_EQ(AlertText("A title"), "info: Which? [One] [Two] [Three]*");
    EXPECT_TRUE(AnswerAlert("Two"));
}

} // namespace norvane
