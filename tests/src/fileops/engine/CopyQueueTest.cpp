#include "CopyFixture.h"
#include "NoThreads.h"
#include "PrivateMounts.h"

#include <string>
#include <vector>

namespace norvane {

namespace {

constexpr char kNoSpace[] = "Out of space on the target volume.";

/// Small files are filled on two threads: nobody may notice.
class CopyQueueTest : public CopyFixture
{
protected:
    /// More in each folder than wait at once.
    void MakeTree(int folders, int files)
    {
        for (int folder = 0; folder < folders; ++folder) {
            for (int file = 0; file < files; ++file) {
                const std::string name = Name(folder, file);
                fTree.Write("from/tree/" + name, Contents(name));
                fNames.push_back(name);
            }
        }
        fTree.MakeFolder("to");
    }
    static std::string Name(int folder, int file)
    {
        return "folder" + std::to_string(100 + folder) + "/file" + std::to_string(100 + file);
    }
    static std::string Contents(const std::string& name)
    {
        std::string contents;
        while (contents.size() < name.back() * 100u) {
            contents += name;
        }
        return contents;
    }

    std::vector<std::string> fNames; // in the order of their copying
};

TEST_F(CopyQueueTest, EveryFileArrivesWholeAndIsToldInTurn)
{
    MakeTree(40, 50);

    EXPECT_TRUE(Copy("from/tree", "to"));

    EXPECT_TRUE(fIsWhole);
    ASSERT_EQ(fUI.files.size(), fNames.size());
    int64 bytes = 0;
    for (size_t i = 0; i < fNames.size(); ++i) {
        const std::string contents = Contents(fNames[i]);
        ASSERT_EQ(fUI.files[i].source, fTree.Path("from/tree/" + fNames[i]));
        ASSERT_EQ(fUI.files[i].target, fTree.Path("to/tree/" + fNames[i]));
        ASSERT_EQ(fTree.Read("to/tree/" + fNames[i]), contents) << fNames[i];
        bytes += static_cast<int64>(contents.size());
    }
    EXPECT_EQ(fUI.bytes, bytes);
    EXPECT_TRUE(fUI.notices.empty() && fUI.problems.empty());
}

TEST_F(CopyQueueTest, OneThatDoesNotFitMakesTheTreeNotWhole)
{
    MakeTree(2, 40);
    ExpectPassed(RunWithPrivateMounts([this] {
        // Two or three pages for each file: not all fit.
        if (!MountMemory(fTree.Path("to"), 300 << 10)) {
            return false;
        }
        Copy("from/tree", "to");
        size_t missing = 0;
        for (const std::string& name : fNames) {
            missing += fTree.Read("to/tree/" + name) == Contents(name) ? 0 : 1;
        }
        return Check(missing > 0 && missing < fNames.size(), "some fit") &&
               Check(!fIsWhole, "not whole") &&
               Check(fUI.notices == std::vector<std::string>(missing, kNoSpace), "each is told");
    }));
}

TEST_F(CopyQueueTest, AQuestionComesAfterWhatIsSaidOfTheFilesBefore)
{
    MakeTree(1, 12);
    ExpectPassed(RunWithPrivateMounts([this] {
        if (!MountMemory(fTree.Path("to"), 8 << 10)) {
            return false;
        }
        fTree.Write("to/tree/" + fNames.back(), "");
        size_t toldBefore = 0;
        fUI.onQuestion = [&](const OverwriteQuestion&) {
            toldBefore = fUI.notices.size();
        };
        fUI.answers = {kAnswerSkip};
        Copy("from/tree", "to");
        return Check(fUI.questions.size() == 1, "asked") &&
               Check(toldBefore > 0 && toldBefore == fUI.notices.size(), "all was told before");
    }));
}

TEST_F(CopyQueueTest, WithoutASecondThreadAllIsCopiedTheSame)
{
    MakeTree(3, 50);
    {
        const NoThreads none;
        EXPECT_TRUE(Copy("from/tree", "to"));
    }

    EXPECT_GT(NoThreads::CountRefused(), 0);
    EXPECT_TRUE(fIsWhole);
    for (const std::string& name : fNames) {
        ASSERT_EQ(fTree.Read("to/tree/" + name), Contents(name)) << name;
    }
}

TEST_F(CopyQueueTest, AStopBetweenFoldersLeavesNoHalfFile)
{
    MakeTree(40, 20);
    fUI.onFile = [this](const std::string& path) {
        fUI.isStopped = fUI.isStopped || path.find("folder120/") != std::string::npos;
    };

    Copy("from/tree", "to");

    EXPECT_FALSE(fIsWhole);
    size_t copied = 0;
    for (const std::string& name : fNames) {
        if (fTree.Exists("to/tree/" + name)) {
            EXPECT_EQ(fTree.Read("to/tree/" + name), Contents(name)) << "none is left half";
            copied++;
        }
    }
    EXPECT_EQ(copied, fUI.files.size()) << "what was made was told";
    EXPECT_GE(copied, 400u);
    EXPECT_LE(copied, 440u);
}

TEST_F(CopyQueueTest, LargeFilesAmongSmallOnesArriveInTurn)
{
    MakeTree(10, 20);
    for (size_t i = 0; i < fNames.size(); i += 7) {
        fTree.Write("from/tree/" + fNames[i], std::string(100'000 + i, 'x'));
    }

    EXPECT_TRUE(Copy("from/tree", "to"));

    EXPECT_TRUE(fIsWhole);
    ASSERT_EQ(fUI.files.size(), fNames.size());
    for (size_t i = 0; i < fNames.size(); ++i) {
        ASSERT_EQ(fUI.files[i].source, fTree.Path("from/tree/" + fNames[i]));
        ASSERT_EQ(fTree.Read("to/tree/" + fNames[i]), fTree.Read("from/tree/" + fNames[i]));
    }
}

TEST_F(CopyQueueTest, StoppedItEndsSoon)
{
    MakeTree(1, 200);
    fUI.onBytes = [this](int64) {
        fUI.isStopped = true;
    };

    Copy("from/tree", "to");

    EXPECT_FALSE(fIsWhole);
    EXPECT_LT(fUI.files.size(), 50u);
    for (const ScriptedUI::StartedFile& file : fUI.files) {
        const std::string name = file.source.substr(fTree.Path("from/tree/").size());
        EXPECT_EQ(fTree.Read("to/tree/" + name), Contents(name)) << "none is left half";
    }
}

} // namespace

} // namespace norvane
