#include "fileops/engine/Operation.h"

#include "ItemFixture.h"
#include "fileops/engine/OperationRequests.h"

#include <Message.h>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/xattr.h>
#include <unistd.h>

namespace norvane {

/// Operations as their requests order them, and what they tell.
class OperationTest : public ItemFixture
{
protected:
    void Carry(BMessage& request, const std::vector<std::string>& names, const std::string& path)
    {
        for (const entry_ref& ref : Refs(names)) {
            request.AddRef("refs", &ref);
        }
        const std::unique_ptr<Operation> operation =
            MakeOperation(request, fTree.Path(path).c_str(), fUI);
        ASSERT_NE(operation, nullptr);
        operation->Run();
    }

    bool SetNote(const std::string& name)
    {
        return setxattr(fTree.Path(name).c_str(), "user.note", "1", 1, 0) == 0;
    }

    std::string Summary() const { return fUI.summaries.empty() ? "" : fUI.summaries.front(); }
};

// What was agreed to

TEST_F(OperationTest, WhatIsAgreedToBeTrashedIsTrashedWhereverItLies)
{
    fTree.Write("data/Trash/files/a", "1");
    fTree.MakeFolder("data/Trash/info");
    BMessage request(kDeleteRequest);
    request.AddBool(kForGood, false);
    Carry(request, {"data/Trash/files/a"}, "data/Trash/files");
    EXPECT_EQ(fTree.List("data/Trash/files").empty(), false) << "nothing is lost";
}

TEST_F(OperationTest, WhatIsAgreedToBeDeletedIsDeletedWhereverItLies)
{
    fTree.Write("from/a", "1");
    BMessage request(kDeleteRequest);
    request.AddBool(kForGood, true);
    Carry(request, {"from/a"}, "from");
    EXPECT_FALSE(fTree.Exists("from/a"));
    EXPECT_EQ(Trashed(), "");
}

TEST_F(OperationTest, ARequestThatDoesNotSayIsDecidedByItsPath)
{
    fTree.Write("from/a", "1");
    BMessage request(kDeleteRequest);
    Carry(request, {"from/a"}, "from");
    EXPECT_EQ(Trashed(), "a\n");
    BMessage second(kDeleteRequest);
    Carry(second, {"data/Trash/files/a"}, "data/Trash/files");
    EXPECT_EQ(Trashed(), "");
}

TEST_F(OperationTest, WhatAsksForNothingIsNoOperation)
{
    BMessage other(12345);
    EXPECT_EQ(MakeOperation(other, "/", fUI), nullptr);
    BMessage nothing(B_SIMPLE_DATA);
    EXPECT_EQ(MakeOperation(nothing, "/", fUI), nullptr);
}

// What is told

TEST_F(OperationTest, AnAlertOfOneKindComesOnceAndTheRestInTheList)
{
    for (const char* name : {"from/a", "from/b", "from/c"}) {
        fTree.Write(name, "1");
        SetMode(name, 0);
    }
    {
        const WithoutFileRights rights;
        CopyAll({"from/a", "from/b", "from/c"});
    }
    EXPECT_EQ(fUI.notices, std::vector<std::string>{"Couldn't open the file for reading."});
    EXPECT_EQ(Summary(), "Some items could not be handled whole:"
                         "\n\ta: it cannot be opened for reading"
                         "\n\tb: it cannot be opened for reading"
                         "\n\tc: it cannot be opened for reading");
}

TEST_F(OperationTest, AnAlertThatComesOnceIsNotInTheList)
{
    fTree.Write("from/a", "1");
    SetMode("from/a", 0);
    {
        const WithoutFileRights rights;
        CopyAll({"from/a"});
    }
    EXPECT_EQ(fUI.notices.size(), 1u);
    EXPECT_EQ(Summary(), "");
}

TEST_F(OperationTest, AFullVolumeIsToldOnce)
{
    const std::string contents(1 << 20, 'x');
    for (const char* name : {"from/a", "from/b", "from/c"}) {
        fTree.Write(name, contents);
    }
    Privately([this] {
        if (!MountMemory(fTree.Path("to"), 1 << 19)) {
            return false;
        }
        CopyAll({"from/a", "from/b", "from/c"});
        return Check(fUI.notices.size() == 1, "one alert") &&
               Check(ProblemNames() == "a b c ", "all by name");
    });
}

TEST_F(OperationTest, KeepsAJournal)
{
    fTree.Write("from/tree/a", "1");
    fTree.Write("from/file", "2");
    fTree.Write("to/file", "old");
    fUI.answers = {kAnswerOverwrite};
    norvane::Copy copy(Refs({"from/tree", "from/file"}), fTree.Path("to").c_str(), fUI);
    copy.Run();
    const std::vector<ItemResult>& items = copy.Results().Items();
    ASSERT_EQ(items.size(), 2u);
    EXPECT_EQ(items[0].ending, ItemResult::Ending::kWhole);
    ASSERT_EQ(items[0].changes.size(), 1u) << "of a new folder only its top";
    EXPECT_EQ(items[0].changes[0].kind, Change::Kind::kMade);
    EXPECT_EQ(items[0].changes[0].name, "tree");
    ASSERT_EQ(items[1].changes.size(), 1u);
    EXPECT_EQ(items[1].changes[0].kind, Change::Kind::kReplaced);
    struct stat record = {};
    ASSERT_EQ(stat(fTree.Path("to/file").c_str(), &record), 0);
    EXPECT_EQ(items[1].changes[0].node, node_ref(record.st_dev, record.st_ino));
}

// Attributes that the target cannot hold

TEST_F(OperationTest, ItemsWithAttributesThatCannotBeKeptAreAskedAboutOnce)
{
    for (const char* name : {"from/a", "from/b", "from/plain"}) {
        fTree.Write(name, "1");
    }
    if (!SetNote("from/a") || !SetNote("from/b")) {
        GTEST_SKIP() << "the folder for temporary files keeps no attributes";
    }
    Privately([this] {
        if (!MountWithoutAttributes(fTree.Path("to")) || !SetNote("from/a") || !SetNote("from/b")) {
            return false;
        }
        MoveAll({"from/a", "from/b", "from/plain"});
        return Check(fUI.attributesQuestions == 1, "asked once") &&
               Check(fTree.List("from") == "a\nb\n", "these stay where they are") &&
               Check(fTree.List("to") == "plain\n", "the other was moved") &&
               Check(Trashed() == "", "nothing is in the Trash") &&
               Check(Summary() == "Left for the sake of their attributes: 2 items.", "counted");
    });
}

TEST_F(OperationTest, TheyCanBeMovedWithoutThem)
{
    fTree.Write("from/tree/a", "1");
    fTree.Write("from/tree/b", "2");
    if (!SetNote("from/tree") || !SetNote("from/tree/a")) {
        GTEST_SKIP() << "the folder for temporary files keeps no attributes";
    }
    fUI.attributesAnswer = AttributesAnswer::kMoveWithout;
    Privately([this] {
        if (!MountWithoutAttributes(fTree.Path("to"))) {
            return false;
        }
        MoveAll({"from/tree"});
        return Check(fUI.attributesQuestions == 1, "asked once") &&
               Check(fTree.List("from") == "", "moved") &&
               Check(fTree.Read("to/tree/a") == "1", "whole") &&
               Check(Summary() == "Moved without some of their attributes: 2 items.", "counted");
    });
}

TEST_F(OperationTest, TheQuestionAboutThemCanStopIt)
{
    fTree.Write("from/a", "1");
    fTree.Write("from/b", "2");
    if (!SetNote("from/a")) {
        GTEST_SKIP() << "the folder for temporary files keeps no attributes";
    }
    fUI.attributesAnswer = AttributesAnswer::kStop;
    Privately([this] {
        if (!MountWithoutAttributes(fTree.Path("to"))) {
            return false;
        }
        MoveAll({"from/a", "from/b"});
        return Check(fTree.List("from") == "a\nb\n", "all stays") &&
               Check(fTree.List("to") == "", "nothing was made");
    });
}

// More than are under way at once, so that folders are left before their files have ended.
TEST_F(OperationTest, FoldersWithManyFilesKeepTheirTimesAndModes)
{
    constexpr time_t kTime = 1'000'000'000;
    std::vector<std::string> folders = {"tree"};
    for (int folder = 0; folder < 40; folder++) {
        folders.push_back("tree/folder" + std::to_string(folder));
        for (int file = 0; file < 20; file++) {
            fTree.Write("from/" + folders.back() + "/file" + std::to_string(file),
                        std::string(static_cast<size_t>(file) * 1000, 'x'));
        }
    }
    for (const std::string& folder : folders) {
        SetMode("from/" + folder, 0555);
        SetTime("from/" + folder, kTime);
    }

    Move("from/tree");

    EXPECT_FALSE(fTree.Exists("from/tree"));
    EXPECT_EQ(fUI.problems.size(), 0u);
    EXPECT_EQ(fUI.files.size(), 800u);
    for (const std::string& folder : folders) {
        struct stat record = {};
        ASSERT_EQ(stat(fTree.Path("to/" + folder).c_str(), &record), 0);
        EXPECT_EQ(record.st_mtime, kTime) << folder;
        EXPECT_EQ(record.st_mode & 07777, 0555u) << folder;
    }
}

// Depth, and the top of all

TEST_F(OperationTest, ATreeDeeperThanDescriptorsAndPathsMoves)
{
    constexpr int kDepth = 1500;
    constexpr const char* kName = "a-folder-below";
    fTree.MakeFolder("from/tree");
    int folder = open(fTree.Path("from/tree").c_str(), O_RDONLY | O_DIRECTORY);
    for (int depth = 0; depth < kDepth; depth++) {
        ASSERT_EQ(mkdirat(folder, kName, 0755), 0);
        const int below = openat(folder, kName, O_RDONLY | O_DIRECTORY);
        close(folder);
        folder = below;
    }
    const int file = openat(folder, "leaf", O_CREAT | O_WRONLY, 0644);
    ASSERT_EQ(write(file, "deep", 4), 4);
    close(file);
    close(folder);
    const std::vector<entry_ref> refs = Refs({"from/tree"}); // whose making raises the limit
    struct rlimit before = {};
    getrlimit(RLIMIT_NOFILE, &before);
    const struct rlimit few = {200, before.rlim_max};
    setrlimit(RLIMIT_NOFILE, &few);

    norvane::Move(refs, fTree.Path("to").c_str(), fUI).Run();

    setrlimit(RLIMIT_NOFILE, &before);
    EXPECT_EQ(ProblemNames(), "");
    EXPECT_FALSE(fTree.Exists("from/tree"));
    folder = open(fTree.Path("to/tree").c_str(), O_RDONLY | O_DIRECTORY);
    for (int depth = 0; depth < kDepth && folder >= 0; depth++) {
        const int below = openat(folder, kName, O_RDONLY | O_DIRECTORY);
        close(folder);
        folder = below;
    }
    ASSERT_GE(folder, 0);
    struct stat leaf = {};
    EXPECT_EQ(fstatat(folder, "leaf", &leaf, 0), 0);
    EXPECT_EQ(leaf.st_size, 4);
    close(folder);
    entry_ref made;
    ASSERT_EQ(get_ref_for_path(fTree.Path("to/tree").c_str(), &made), B_OK);
    EXPECT_EQ(BEntry(&made).RemoveTree(), B_OK);
}

TEST_F(OperationTest, WhatLiesDirectlyInTheTopFolderMoves)
{
    fTree.Write("top/file", "1");
    fTree.Write("top/tree/a", "2");
    fTree.MakeFolder("top/to");
    fTree.MakeFolder("top/proc");
    Privately([this] {
        if (!MountAlsoAt("/proc", fTree.Path("top/proc")) ||
            chroot(fTree.Path("top").c_str()) != 0 || chdir("/") != 0) {
            return false;
        }
        std::vector<entry_ref> refs(2);
        if (get_ref_for_path("/file", &refs[0]) != B_OK ||
            get_ref_for_path("/tree", &refs[1]) != B_OK) {
            return false;
        }
        norvane::Move(refs, "/to", fUI).Run();
        return Check(access("/to/file", F_OK) == 0 && access("/to/tree/a", F_OK) == 0, "copied") &&
               Check(access("/file", F_OK) != 0 && access("/tree", F_OK) != 0, "and gone") &&
               Check(fUI.problems.empty(), "without a word");
    });
}

// Part of a copy in the Trash

TEST_F(OperationTest, WhatCouldBeReadOfADyingSourceStaysInTheTrash)
{
    fTree.MakeFolder("from");
    Privately([this] {
        if (!MountMemory(fTree.Path("from"), 1 << 20)) {
            return false;
        }
        fTree.Write("from/tree/good", "rescued");
        fTree.Write("from/tree/bad", "unreadable");
        SetMode("from/tree/bad", 0);
        {
            const WithoutFileRights rights;
            Trash("from/tree");
        }
        const std::string own = "from/.Trash-" + std::to_string(getuid()) + "/files";
        return Check(fTree.Read("data/Trash/files/tree/good") == "rescued", "the part stays") &&
               Check(Trashed() == "tree\n", "with its record") &&
               Check(fTree.Read(own + "/tree/bad") == "unreadable",
                     "the source in its own Trash") &&
               Check(ProblemNames().find("tree tree ") != std::string::npos, "both are told");
    });
}

} // namespace norvane
