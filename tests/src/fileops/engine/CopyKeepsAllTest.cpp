#include "ItemFixture.h"

#include <unistd.h>

namespace norvane {

/// Copies that keep times, modes and links.
class CopyKeepsAllTest : public ItemFixture
{
protected:
    void Keep(const std::vector<std::string>& names, const std::string& toFolder = "to")
    {
        norvane::Copy(Refs(names), fTree.Path(toFolder).c_str(), fUI, true).Run();
    }
};

TEST_F(CopyKeepsAllTest, ModesAndTimesOfFilesFoldersAndLinks)
{
    fTree.Write("from/tree/sub/a", "1");
    fTree.Link("from/tree/link", "sub/a");
    SetMode("from/tree/sub/a", 0757);
    SetMode("from/tree/sub", 0555);
    SetTimes("from/tree/sub/a", 1'000'000'000, 123);
    SetTimes("from/tree/link", 1'000'000'003, 5);
    SetTimes("from/tree/sub", 1'000'000'001, 456);
    SetTimes("from/tree", 1'000'000'002, 789);
    const mode_t mask = umask(077);

    Keep({"from/tree"});

    umask(mask);
    EXPECT_EQ(fTree.Read("to/tree/sub/a"), "1");
    EXPECT_EQ(Mode("to/tree/sub/a"), 0757u);
    EXPECT_EQ(Mode("to/tree/sub"), 0555u);
    EXPECT_EQ(Record("to/tree/sub/a").st_mtim.tv_nsec, 123);
    EXPECT_EQ(Record("to/tree/link").st_mtim.tv_sec, 1'000'000'003);
    EXPECT_EQ(Record("to/tree/sub").st_mtim.tv_nsec, 456);
    EXPECT_EQ(Record("to/tree").st_mtim.tv_nsec, 789);
    EXPECT_EQ(fTree.Read("from/tree/sub/a"), "1");
    EXPECT_TRUE(fUI.problems.empty());
}

TEST_F(CopyKeepsAllTest, LargeFilesKeepThemToo)
{
    fTree.Write("from/a", std::string(200'000, 'x'));
    SetMode("from/a", 0705);
    SetTimes("from/a", 1'000'000'000, 123);
    Keep({"from/a"});
    EXPECT_EQ(Mode("to/a"), 0705u);
    EXPECT_EQ(Record("to/a").st_mtim.tv_nsec, 123);
    EXPECT_EQ(Record("to/a").st_size, 200'000);
}

TEST_F(CopyKeepsAllTest, LinksHaveTheirOwnTexts)
{
    fTree.Link("from/inside", "../from/x");
    fTree.Link("from/broken", "nothing/at all");
    fTree.Link("from/absolute", "/");
    Keep({"from/inside", "from/broken", "from/absolute"});
    EXPECT_EQ(fTree.ReadLink("to/inside"), "../from/x");
    EXPECT_EQ(fTree.ReadLink("to/broken"), "nothing/at all");
    EXPECT_EQ(fTree.ReadLink("to/absolute"), "/");
    EXPECT_TRUE(fUI.notices.empty());
}

TEST_F(CopyKeepsAllTest, AReplacedFileGetsTheSourcesModeAndTime)
{
    fTree.Write("from/a", "new");
    fTree.Write("to/a", "old");
    SetMode("from/a", 0640);
    SetMode("to/a", 0666);
    SetTimes("from/a", 1'000'000'000, 9);
    fUI.answers = {kAnswerOverwrite};
    Keep({"from/a"});
    EXPECT_EQ(fTree.Read("to/a"), "new");
    EXPECT_EQ(Mode("to/a"), 0640u);
    EXPECT_EQ(Record("to/a").st_mtim.tv_nsec, 9);
}

TEST_F(CopyKeepsAllTest, AFolderThatIsMergedIntoStaysAsItIs)
{
    fTree.Write("from/tree/new", "1");
    fTree.Write("to/tree/old", "2");
    SetMode("from/tree", 0700);
    SetMode("to/tree", 0755);
    Keep({"from/tree"});
    EXPECT_EQ(Mode("to/tree"), 0755u);
}

TEST_F(CopyKeepsAllTest, AttributesComeAlong)
{
    fTree.Write("from/tree/a", "1");
    if (!SetAttribute("from/tree/a", "of the file")) {
        GTEST_SKIP() << "this file system has no attributes";
    }
    SetAttribute("from/tree", "of the folder");
    Keep({"from/tree"});
    EXPECT_EQ(Attribute("to/tree/a"), "of the file");
    EXPECT_EQ(Attribute("to/tree"), "of the folder");
}

TEST_F(CopyKeepsAllTest, AttributesThatCannotBeKeptAreTold)
{
    fTree.Write("from/tree/a", "1");
    if (!SetAttribute("from/tree/a", "of the file")) {
        GTEST_SKIP() << "this file system has no attributes";
    }
    SetAttribute("from/tree", "of the folder");
    Privately([this] {
        if (!MountWithoutAttributes(fTree.Path("to"))) {
            return false;
        }
        Keep({"from/tree"});
        return Check(fTree.Read("to/tree/a") == "1", "it is copied") &&
               Check(fUI.attributesQuestions == 0, "nobody is asked") &&
               Check(ProblemNames() == "tree a ", "and both are told");
    });
}

TEST_F(CopyKeepsAllTest, APlainCopyKeepsNoneOfIt)
{
    fTree.Write("from/a", "1");
    SetMode("from/a", 0705);
    SetTimes("from/a", 1'000'000'000, 9);
    CopyAll({"from/a"});
    EXPECT_NE(Record("to/a").st_mtim.tv_sec, 1'000'000'000);
    EXPECT_NE(Mode("to/a"), 0705u);
}

} // namespace norvane
