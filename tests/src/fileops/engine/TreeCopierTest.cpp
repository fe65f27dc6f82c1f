#include "fileops/engine/TreeCopier.h"

#include "CopyFixture.h"

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace norvane {

constexpr char kBrokenLink[] =
    "You appear to be trying to copy a link that is broken.  This is not supported in this "
    "version.";

/// Copies of folders with all that can be in them.
class TreeCopierTest : public CopyFixture
{
};

TEST_F(TreeCopierTest, CopiesATree)
{
    fTree.Write("from/tree/a", "1");
    fTree.Write("from/tree/deep/deeper/b", "2");
    fTree.MakeFolder("from/tree/empty");
    fTree.MakeFolder("to");
    EXPECT_TRUE(Copy("from/tree", "to"));
    EXPECT_TRUE(fIsWhole);
    EXPECT_EQ(fTree.Read("to/tree/a"), "1");
    EXPECT_EQ(fTree.Read("to/tree/deep/deeper/b"), "2");
    EXPECT_TRUE(fTree.IsFolder("to/tree/empty"));
}

TEST_F(TreeCopierTest, MergesIntoAFolderThatExists)
{
    fTree.Write("from/tree/sub/new", "new");
    fTree.Write("to/tree/sub/kept", "kept");
    EXPECT_TRUE(Copy("from/tree", "to"));
    EXPECT_TRUE(fIsWhole);
    EXPECT_EQ(fTree.Read("to/tree/sub/new"), "new");
    EXPECT_EQ(fTree.Read("to/tree/sub/kept"), "kept");
}

TEST_F(TreeCopierTest, AMergedFolderKeepsItsMode)
{
    fTree.Write("from/tree/new", "new");
    fTree.MakeFolder("to/tree");
    SetMode("from/tree", 0700);
    SetMode("to/tree", 0755);
    Copy("from/tree", "to");
    EXPECT_EQ(Mode("to/tree"), 0755u);
}

TEST_F(TreeCopierTest, CopiesFilesThenLinksThenFolders)
{
    fTree.Write("from/tree/a-folder/x", "");
    fTree.Link("from/tree/b-link", "gone");
    fTree.Write("from/tree/c-file", "");
    fTree.MakeFolder("to");
    std::vector<std::string> order;
    fUI.onFile = [&](const std::string& path) {
        order.push_back(path.substr(path.rfind('/') + 1) + " after " +
                        std::to_string(fUI.notices.size()));
    };
    Copy("from/tree", "to");
    EXPECT_EQ(order, (std::vector<std::string>{"c-file after 0", "x after 1"}));
}

TEST_F(TreeCopierTest, AFolderCopiedIntoItselfEnds)
{
    fTree.Write("a/file", "1");
    fTree.Write("a/sub/file", "2");
    EXPECT_TRUE(Copy("a", "a"));
    EXPECT_FALSE(fIsWhole);
    EXPECT_EQ(fTree.Read("a/a/file"), "1");
    EXPECT_EQ(fTree.Read("a/a/sub/file"), "2");
    EXPECT_FALSE(fTree.Exists("a/a/a"));
}

TEST_F(TreeCopierTest, AFolderCopiedTwoLevelsBelowItselfEnds)
{
    fTree.Write("a/file", "1");
    fTree.MakeFolder("a/b/c");
    EXPECT_TRUE(Copy("a", "a/b/c"));
    EXPECT_EQ(fTree.Read("a/b/c/a/file"), "1");
    EXPECT_TRUE(fTree.IsFolder("a/b/c/a/b/c"));
    EXPECT_FALSE(fTree.Exists("a/b/c/a/b/c/a"));
}

TEST_F(TreeCopierTest, AChildOfTheFoldersOwnNameIsCopied)
{
    fTree.Write("from/project/project/file", "1");
    fTree.MakeFolder("to");
    EXPECT_TRUE(Copy("from/project", "to"));
    EXPECT_TRUE(fIsWhole);
    EXPECT_EQ(fTree.Read("to/project/project/file"), "1");
}

TEST_F(TreeCopierTest, TheSameFolderByAnotherWayIsLeftAlone)
{
    fTree.Write("from/tree/a", "1");
    fTree.Link("same", fTree.Path("from"));
    fUI.answers = {kAnswerOverwrite};
    EXPECT_FALSE(Copy("from/tree", "same"));
    EXPECT_FALSE(fIsWhole);
    EXPECT_TRUE(fUI.questions.empty());
    EXPECT_EQ(fTree.Read("from/tree/a"), "1");
}

TEST_F(TreeCopierTest, AFileThatIsItsOwnTargetMakesTheFolderNotWhole)
{
    fTree.Write("from/tree/a", "1");
    fTree.MakeFolder("to/tree");
    ASSERT_EQ(link(fTree.Path("from/tree/a").c_str(), fTree.Path("to/tree/a").c_str()), 0);
    EXPECT_TRUE(Copy("from/tree", "to"));
    EXPECT_FALSE(fIsWhole);
    EXPECT_TRUE(fUI.questions.empty());
}

// Links

TEST_F(TreeCopierTest, ARelativeLinkBecomesAbsolute)
{
    fTree.Write("x", "1");
    fTree.Link("from/link", "../x");
    fTree.MakeFolder("to");
    EXPECT_TRUE(Copy("from/link", "to"));
    EXPECT_TRUE(fIsWhole);
    EXPECT_EQ(fTree.ReadLink("to/link"), fTree.Path("x"));
}

TEST_F(TreeCopierTest, ALinkToAFolderStaysALink)
{
    fTree.Write("folder/inside", "1");
    fTree.Link("from/tree/link", fTree.Path("folder"));
    fTree.MakeFolder("to");
    EXPECT_TRUE(Copy("from/tree", "to"));
    EXPECT_EQ(fTree.ReadLink("to/tree/link"), fTree.Path("folder"));
}

TEST_F(TreeCopierTest, ABrokenLinkIsToldAndLeavesNothing)
{
    fTree.Link("from/link", "gone");
    fTree.MakeFolder("to");
    EXPECT_TRUE(Copy("from/link", "to"));
    EXPECT_FALSE(fIsWhole);
    EXPECT_EQ(fUI.notices, std::vector<std::string>{kBrokenLink});
    EXPECT_FALSE(fTree.Exists("to/link"));
}

TEST_F(TreeCopierTest, ALinkToItselfIsToldAndEnds)
{
    fTree.Link("from/loop", "loop");
    fTree.MakeFolder("to");
    EXPECT_TRUE(Copy("from/loop", "to"));
    EXPECT_EQ(fUI.notices, std::vector<std::string>{kBrokenLink});
}

// Other kinds

TEST_F(TreeCopierTest, OtherKindsAreLeftOutAndReported)
{
    fTree.Write("from/tree/file", "1");
    ASSERT_EQ(mkfifo(fTree.Path("from/tree/fifo").c_str(), 0600), 0);
    fTree.MakeFolder("to");
    EXPECT_TRUE(Copy("from/tree", "to"));
    EXPECT_FALSE(fIsWhole);
    EXPECT_FALSE(fTree.Exists("to/tree/fifo"));
    EXPECT_EQ(fTree.Read("to/tree/file"), "1");
    ASSERT_EQ(fUI.problems.size(), 1u);
    EXPECT_EQ(fUI.problems[0].first, "fifo");
}

TEST_F(TreeCopierTest, AFifoThatIsAskedForByItselfBlocksNobody)
{
    fTree.MakeFolder("to");
    ASSERT_EQ(mkfifo(fTree.Path("fifo").c_str(), 0600), 0);
    Copy("fifo", "to");
    EXPECT_FALSE(fIsWhole);
    EXPECT_EQ(fTree.List("to"), "");
}

TEST_F(TreeCopierTest, AFileReplacedByAFifoMeanwhileBlocksNobody)
{
    fTree.Write("from/tree/a", "1");
    fTree.Write("from/tree/b", "2");
    fTree.MakeFolder("to");
    fUI.onFile = [this](const std::string&) {
        fUI.onFile = nullptr;
        fTree.Remove("from/tree/b");
        ASSERT_EQ(mkfifo(fTree.Path("from/tree/b").c_str(), 0600), 0);
    };
    Copy("from/tree", "to");
    EXPECT_FALSE(fIsWhole);
    EXPECT_EQ(fTree.List("to/tree"), "a\n");
    EXPECT_EQ(fUI.notices, std::vector<std::string>{"Couldn't open the file for reading."});
}

TEST_F(TreeCopierTest, TheKernelsFileSystemsAreNotEntered)
{
    fTree.MakeFolder("to");
    fUI.onFile = [](const std::string& path) {
        FAIL() << "copied " << path;
    };
    entry_ref ref;
    ASSERT_EQ(get_ref_for_path("/proc", &ref), B_OK);
    NorvaneEntry entry(&ref);
    entry.CopyTo(fTree.Path("to").c_str(), fUI);
    EXPECT_FALSE(entry.IsWhole());
    EXPECT_EQ(fTree.List("to"), "");
}

// Stopping

TEST_F(TreeCopierTest, StoppingEndsAtOnceAndLeavesNoHalfFile)
{
    fTree.Write("from/tree/a", std::string(100'000, 'x'));
    fTree.Write("from/tree/b", "2");
    fTree.Write("from/tree/sub/c", "3");
    fTree.MakeFolder("to");
    fUI.onBytes = [this](int64) {
        fUI.isStopped = true;
    };
    Copy("from/tree", "to");
    EXPECT_FALSE(fIsWhole);
    EXPECT_EQ(fTree.List("to/tree"), "");
    EXPECT_EQ(fUI.chunks, 1);
}

} // namespace norvane
