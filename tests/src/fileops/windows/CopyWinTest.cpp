#include "fileops/windows/CopyWin.h"

#include "OperationFixture.h"

#include <fcntl.h>
#include <sys/stat.h>

namespace norvane {

using kits::testing::WaitFor;
using kits::testing::WaitForNoWindow;
using kits::testing::WaitForWindow;

class CopyWinTest : public OperationFixture
{
};

TEST_F(CopyWinTest, CopiesTellsAndGoes)
{
    fTree.Write("from/tree/a", "1");
    fTree.Write("from/b", "2");
    Start(Request({"from/tree", "from/b"}));
    EXPECT_TRUE(HasEnded());
    EXPECT_EQ(fTree.Read("to/tree/a"), "1");
    EXPECT_EQ(fTree.Read("to/b"), "2");
    EXPECT_TRUE(WaitForNoWindow("Copy"));
}

TEST_F(CopyWinTest, OneItemHidesTheOverallBar)
{
    fTree.Write("from/a", "new");
    fTree.Write("from/b", "new");
    fTree.Write("to/a", "old");
    fTree.Write("to/b", "old");
    // A question keeps each window alive while it is looked at.
    CopyWin* one = Start(Request({"from/a"}));
    ASSERT_NE(WaitForWindow("Item Exists"), nullptr);
    EXPECT_EQ(one->Frame(), BRect(350, 302, 650, 366));
    Answer("Cancel");
    ASSERT_TRUE(HasEnded());
    fListener->ended = 0;
    CopyWin* two = Start(Request({"from/a", "from/b"}));
    ASSERT_NE(WaitForWindow("Item Exists"), nullptr);
    EXPECT_EQ(two->Frame(), BRect(350, 302, 650, 398));
    Answer("Cancel");
    EXPECT_TRUE(HasEnded());
}

TEST_F(CopyWinTest, CancelStopsAfterTheItem)
{
    std::vector<std::string> names;
    for (const char* name : {"a", "b", "c", "d", "e"}) {
        names.push_back(std::string("from/") + name);
        fTree.Write(names.back(), "new");
    }
    fTree.Write("to/b", "old");
    Start(Request(names));
    Answer("Cancel");
    EXPECT_TRUE(HasEnded());
    EXPECT_EQ(fTree.List("to"), "a\nb\n");
    EXPECT_EQ(fTree.Read("to/b"), "old");
}

TEST_F(CopyWinTest, StaysHiddenAfterASkip)
{
    for (const char* name : {"a", "b"}) {
        fTree.Write(std::string("from/") + name, "new");
        fTree.Write(std::string("to/") + name, "old");
    }
    Start(Request({"from/a", "from/b"}));
    Answer("Skip");
    // The second question asks about the second file.
    ASSERT_TRUE(WaitFor([] { return QuestionLine().find("from/b") != std::string::npos; }));
    EXPECT_EQ(kits::testing::CountShown("Copy"), 0);
    Answer("Overwrite");
    EXPECT_TRUE(HasEnded());
    EXPECT_EQ(fTree.Read("to/a"), "old");
    EXPECT_EQ(fTree.Read("to/b"), "new");
}

TEST_F(CopyWinTest, OverwriteAllHoldsForTheWholeOperation)
{
    std::vector<std::string> names;
    for (const char* name : {"a", "b", "c"}) {
        names.push_back(std::string("from/") + name);
        fTree.Write(names.back(), "new");
        fTree.Write(std::string("to/") + name, "old");
    }
    Start(Request(names));
    Answer("OverwriteAll");
    EXPECT_TRUE(HasEnded());
    EXPECT_EQ(fTree.Read("to/c"), "new");
}

TEST_F(CopyWinTest, OverwriteAllOlderAsksOnceAndComparesTheRest)
{
    std::vector<std::string> names;
    for (const char* name : {"a", "b", "c"}) {
        names.push_back(std::string("from/") + name);
        fTree.Write(names.back(), "new");
        fTree.Write(std::string("to/") + name, "old");
    }
    const auto setTime = [this](const char* name, time_t seconds) {
        const timespec times[] = {{seconds, 0}, {seconds, 0}};
        EXPECT_EQ(utimensat(AT_FDCWD, fTree.Path(name).c_str(), times, 0), 0);
    };
    setTime("to/a", 1'000'000);
    setTime("to/b", 1'000'000);
    setTime("from/c", 2'000'000);
    setTime("to/c", 2'000'000); // as old as the source, so not older
    Start(Request(names));
    Answer("OverwriteOlder");
    EXPECT_TRUE(HasEnded());
    EXPECT_EQ(fTree.Read("to/a"), "new");
    EXPECT_EQ(fTree.Read("to/b"), "new");
    EXPECT_EQ(fTree.Read("to/c"), "old");
}

TEST_F(CopyWinTest, OtherRequestsDoNothingButTellTheirEnd)
{
    fTree.Write("from/a", "1");
    BMessage other = Request({"from/a"});
    other.what = 604;
    Start(other);
    EXPECT_TRUE(HasEnded());
    fListener->ended = 0;
    Start(BMessage(B_SIMPLE_DATA));
    EXPECT_TRUE(HasEnded());
    EXPECT_EQ(fTree.List("to"), "");
}

TEST_F(CopyWinTest, TellsOnceWhatWasNotCopiedWhole)
{
    fTree.Write("from/tree/file", "1");
    ASSERT_EQ(mkfifo(fTree.Path("from/tree/fifo").c_str(), 0600), 0);
    Start(Request({"from/tree"}));
    std::string text;
    ASSERT_TRUE(kits::testing::AnswerAlert("OK", &text));
    EXPECT_EQ(text.rfind("Some items could not be handled whole:\n\tfifo: ", 0), 0u);
    EXPECT_TRUE(HasEnded());
}

TEST_F(CopyWinTest, QuittingAnswersItsQuestionAndLetsItEnd)
{
    fTree.Write("from/a", "new");
    fTree.Write("from/b", "2");
    fTree.Write("to/a", "old");
    Start(Request({"from/a", "from/b"}));
    ASSERT_NE(WaitForWindow("Item Exists"), nullptr);
    Operations::BeginQuit();
    EXPECT_TRUE(HasEnded());
    EXPECT_EQ(fTree.List("to"), "a\n");
    EXPECT_EQ(fTree.Read("to/a"), "old");
    EXPECT_TRUE(WaitFor([] { return Operations::Count() == 0; }));
}

TEST_F(CopyWinTest, AHandlerThatIsGoneIsNotMissed)
{
    fTree.Write("from/a", "new");
    fTree.Write("to/a", "old");
    Start(Request({"from/a"}));
    ASSERT_NE(WaitForWindow("Item Exists"), nullptr);
    ASSERT_TRUE(fListener->Lock());
    fListener->Quit();
    fListener = nullptr;
    Answer("Overwrite");
    EXPECT_TRUE(WaitFor([this] { return fTree.Read("to/a") == "new"; }));
    EXPECT_TRUE(WaitForNoWindow("Copy"));
}

TEST_F(CopyWinTest, SeveralOperationsRunAtTheSameTime)
{
    for (const char* name : {"a", "b", "c"}) {
        fTree.Write(std::string("from/") + name, name);
    }
    fTree.Write("to/a", "old");
    Start(Request({"from/a"}));
    ASSERT_NE(WaitForWindow("Item Exists"), nullptr);
    Start(Request({"from/b"}));
    Start(Request({"from/c"}));
    EXPECT_TRUE(WaitFor([this] { return fListener->ended == 2; }));
    EXPECT_EQ(fTree.Read("to/b"), "b");
    EXPECT_EQ(fTree.Read("to/c"), "c");
    Answer("Overwrite");
    EXPECT_TRUE(WaitFor([this] { return fListener->ended == 3; }));
}

} // namespace norvane
