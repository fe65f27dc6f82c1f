#include "properties/ModeWork.h"

#include "PrivateMounts.h"
#include "TempTree.h"

#include <Errors.h>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

namespace {

using namespace norvane;

mode_t ModeAt(const std::string& path)
{
    struct stat record = {};
    EXPECT_EQ(lstat(path.c_str(), &record), 0) << path;
    return record.st_mode & 07777;
}

class ModeWorkTest : public testing::Test
{
protected:
    void Write(const char* name, mode_t mode)
    {
        fTree.Write(name, "x");
        SetMode(name, mode);
    }
    void MakeFolder(const char* name, mode_t mode)
    {
        fTree.MakeFolder(name);
        SetMode(name, mode);
    }
    void SetMode(const char* name, mode_t mode)
    {
        ASSERT_EQ(chmod(fTree.Path(name).c_str(), mode), 0);
    }
    mode_t Mode(const std::string& name) const { return ModeAt(fTree.Path(name)); }

    /// What a person sees: these entries as they are now.
    std::shared_ptr<std::vector<Subject>> Shown(const std::vector<std::string>& names) const
    {
        auto subjects = std::make_shared<std::vector<Subject>>();
        for (const std::string& name : names) {
            entry_ref ref;
            Subject subject;
            struct stat record = {};
            EXPECT_EQ(get_ref_for_path(fTree.Path(name).c_str(), &ref), B_OK);
            EXPECT_EQ(LookAt(ref, &subject, &record), B_OK);
            subjects->push_back(subject);
        }
        return subjects;
    }
    ModeProgress Change(std::shared_ptr<const std::vector<Subject>> subjects, ModeChange change,
                        bool goesInside = false)
    {
        ModeWork work({std::move(subjects), change, goesInside}, BMessenger());
        work.Run();
        return work.Look();
    }

    TempTree fTree;
};

TEST_F(ModeWorkTest, ChangesTheBitsTouchedOfEachEntry)
{
    Write("a", 0600);
    Write("b", 0755);

    const ModeProgress progress = Change(Shown({"a", "b"}), {0040, 0001});

    EXPECT_EQ(Mode("a"), 0640u);
    EXPECT_EQ(Mode("b"), 0754u);
    EXPECT_EQ(progress.changed, 2);
    EXPECT_TRUE(progress.isOver);
    EXPECT_FALSE(progress.wasStopped);
    EXPECT_TRUE(progress.problems.IsEmpty());
}

TEST_F(ModeWorkTest, WhatHasThemAlreadyIsNotTouched)
{
    Write("a", 0640);
    struct stat before;
    ASSERT_EQ(lstat(fTree.Path("a").c_str(), &before), 0);

    EXPECT_EQ(Change(Shown({"a"}), {0040, 0001}).changed, 0);

    struct stat after;
    ASSERT_EQ(lstat(fTree.Path("a").c_str(), &after), 0);
    EXPECT_EQ(after.st_ctim.tv_nsec, before.st_ctim.tv_nsec);
}

TEST_F(ModeWorkTest, AnotherEntryUnderTheNameStaysAndIsTold)
{
    Write("a", 0600);
    Write("b", 0600);
    const auto subjects = Shown({"a", "b"});
    Write("new", 0600);
    ASSERT_EQ(rename(fTree.Path("new").c_str(), fTree.Path("a").c_str()), 0);

    const ModeProgress progress = Change(subjects, {0040, 0});

    EXPECT_EQ(Mode("a"), 0600u);
    EXPECT_EQ(Mode("b"), 0640u);
    EXPECT_EQ(progress.problems.Text(), "Some items could not be handled whole:\n\ta: another "
                                        "entry took its place meanwhile");
}

TEST_F(ModeWorkTest, ALinkInItsPlaceIsNotFollowed)
{
    Write("a", 0600);
    Write("target", 0600);
    const auto subjects = Shown({"a"});
    fTree.Remove("a");
    fTree.Link("a", "target");

    EXPECT_EQ(Change(subjects, {0040, 0}).problems.Count(), 1);
    EXPECT_EQ(Mode("target"), 0600u);
}

TEST_F(ModeWorkTest, GoesOnAfterOneThatIsGone)
{
    Write("a", 0600);
    Write("b", 0600);
    const auto subjects = Shown({"a", "b"});
    fTree.Remove("a");

    const ModeProgress progress = Change(subjects, {0040, 0});

    EXPECT_EQ(Mode("b"), 0640u);
    EXPECT_EQ(progress.problems.Count(), 1);
    EXPECT_EQ(progress.changed, 1);
}

TEST_F(ModeWorkTest, GoesThroughFoldersWhenAsked)
{
    Write("top/sub/plain", 0600);
    Write("top/sub/program", 0700);
    Write("outside", 0600);
    fTree.Link("top/link", "../outside");
    SetMode("top/sub", 0700);
    SetMode("top", 0700);

    EXPECT_EQ(Change(Shown({"top"}), {0055, 0}).changed, 1);
    EXPECT_EQ(Mode("top/sub"), 0700u);
    const ModeProgress progress = Change(Shown({"top"}), {0055, 0}, true);

    EXPECT_EQ(Mode("top"), 0755u);
    EXPECT_EQ(Mode("top/sub"), 0755u);
    EXPECT_EQ(Mode("top/sub/plain"), 0644u);
    EXPECT_EQ(Mode("top/sub/program"), 0755u);
    EXPECT_EQ(Mode("outside"), 0600u);
    EXPECT_EQ(progress.changed, 3);
}

TEST_F(ModeWorkTest, GivesFoldersFirstAndTakesFromThemLast)
{
    Write("top/sub/file", 0600);
    SetMode("top/sub", 0);
    SetMode("top", 0700);
    const WithoutFileRights person;

    const ModeProgress given = Change(Shown({"top"}), {0700, 0}, true);
    EXPECT_EQ(given.problems.Text(), ProblemList().Text());
    EXPECT_EQ(Mode("top/sub"), 0700u);

    const ModeProgress taken = Change(Shown({"top"}), {0040, 0700}, true);
    EXPECT_EQ(taken.problems.Text(), ProblemList().Text());
    EXPECT_EQ(Mode("top"), 0040u);
    EXPECT_EQ(taken.changed, 3); // each once, though a folder has two steps
    SetMode("top", 0700);
    EXPECT_EQ(Mode("top/sub"), 0040u);
    SetMode("top/sub", 0700);
    EXPECT_EQ(Mode("top/sub/file"), 0040u);
}

TEST_F(ModeWorkTest, AFolderThatCannotBeReadIsChangedAndTold)
{
    Write("top/closed/file", 0600);
    SetMode("top/closed", 0);
    SetMode("top", 0700);
    const WithoutFileRights person;

    const ModeProgress progress = Change(Shown({"top"}), {0070, 0}, true);

    EXPECT_EQ(Mode("top/closed"), 0070u);
    EXPECT_EQ(progress.problems.Count(), 1);
    EXPECT_NE(progress.problems.Text().find("top/closed: "), std::string::npos);
    SetMode("top/closed", 0700);
    EXPECT_EQ(Mode("top/closed/file"), 0600u);
}

TEST_F(ModeWorkTest, NothingMountedIsEntered)
{
    ExpectPassed(RunWithPrivateMounts([this] {
        Write("top/mounted/hidden", 0600);
        Write("elsewhere/file", 0600);
        MakeFolder("top/bound", 0700);
        SetMode("elsewhere", 0700);
        if (!MountMemory(fTree.Path("top/mounted"), 1 << 20) ||
            !MountAlsoAt(fTree.Path("elsewhere"), fTree.Path("top/bound"))) {
            return false;
        }
        Write("top/mounted/file", 0600);
        SetMode("top/mounted", 0700);
        Change(Shown({"top"}), {0040, 0}, true);
        return Check(Mode("top/mounted/file") == 0600, "another volume is left alone") &&
               Check(Mode("top/mounted") == 0700, "and its top") &&
               Check(Mode("elsewhere/file") == 0600, "so is a part of the same volume") &&
               Check(Mode("elsewhere") == 0700, "and its top") &&
               Check((Mode("top") & 0040) != 0, "all else is changed");
    }));
}

TEST_F(ModeWorkTest, TreesDeeperThanAnyPathAreWalked)
{
    constexpr int kDepth = 60;
    const std::string step(200, 'd');
    fTree.MakeFolder("top");
    int folder = open(fTree.Path("top").c_str(), O_RDONLY);
    for (int i = 0; i < kDepth; i++) { // 12000 bytes of path
        ASSERT_EQ(mkdirat(folder, step.c_str(), 0700), 0);
        const int next = openat(folder, step.c_str(), O_RDONLY);
        ASSERT_GE(next, 0);
        close(folder);
        folder = next;
    }
    const int file = openat(folder, "file", O_CREAT | O_WRONLY, 0600);
    ASSERT_GE(file, 0);

    const ModeProgress progress = Change(Shown({"top"}), {0004, 0}, true);

    struct stat record;
    ASSERT_EQ(fstat(file, &record), 0);
    EXPECT_EQ(record.st_mode & 07777, 0604u);
    EXPECT_EQ(progress.problems.Text(), ProblemList().Text());
    EXPECT_EQ(progress.changed, kDepth + 1); // top may be read by others already
    close(file);
    close(folder);
}

TEST_F(ModeWorkTest, StopsWhenTold)
{
    Write("a", 0600);
    ModeWork work({Shown({"a"}), {0040, 0}, false}, BMessenger());
    work.Stop();
    work.Run();

    EXPECT_TRUE(work.Look().wasStopped);
    EXPECT_TRUE(work.Look().isOver);
    EXPECT_EQ(Mode("a"), 0600u);
}

TEST_F(ModeWorkTest, NamesOfAnyBytesAreChangedAndToldOnOneLine)
{
    for (const std::string& name : {std::string("line\nbreak"), std::string("\xff\xfe"),
                                    std::string("\xe2\x80\xae.txt"), std::string(255, 'n')}) {
        Write(name.c_str(), 0600);
        const auto subjects = Shown({name});

        EXPECT_EQ(Change(subjects, {0040, 0}).changed, 1);
        EXPECT_EQ(Mode(name), 0640u);
        fTree.Remove(name);
        const std::string text = Change(subjects, {0004, 0}).problems.Text();
        EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 1) << text;
    }
}

} // namespace
