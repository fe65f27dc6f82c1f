#include "Extract/Extractor.h"
#include "MakeArchive/ArchiveWriter.h"
#include "common/FreeName.h"
#include "common/Progress.h"

#include "ApplicationEnvironment.h"
#include "TempTree.h"

#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <sys/resource.h>
#include <sys/stat.h>
#include <thread>

namespace add_ons {

namespace {

namespace fs = std::filesystem;

/// Archives that are made of "in", and taken out again by others and by Extract.
class MakeArchiveTest : public ::testing::Test
{
protected:
    void SetUp() override { fTree.MakeFolder("in"); }

    bool Run(const std::string& command) const
    {
        return std::system(
                   ("cd '" + fTree.Path() + "' && (" + command + ") >/dev/null 2>&1").c_str()) == 0;
    }

    static const ArchiveFormat& Format(const std::string& ending)
    {
        for (const ArchiveFormat& format : ArchiveFormats()) {
            if (format.ending == ending) {
                return format;
            }
        }
        std::abort();
    }

    entry_ref Ref(const std::string& name) const
    {
        entry_ref ref;
        EXPECT_EQ(get_ref_for_path(fTree.Path(name).c_str(), &ref), B_OK);
        return ref;
    }

    status_t Make(const std::string& ending, const std::vector<std::string>& entries = {"in"},
                  const std::string& name = "in")
    {
        Progress progress("test");
        ArchiveWriter writer(BDirectory(fTree.Path().c_str()), Format(ending), &progress);
        status_t status = writer.Open();
        for (size_t entry = 0; entry < entries.size() && status == B_OK; entry++) {
            status = writer.Add(Ref(entries[entry]));
        }
        fMade = name;
        if (status == B_OK) {
            status = writer.Finish(&fMade);
        }
        fProblems = writer.GetProblems().Text();
        return status;
    }

    TempTree fTree;
    std::string fMade;
    std::string fProblems;
};

class EveryFormatTest : public MakeArchiveTest, public ::testing::WithParamInterface<const char*>
{
};

TEST_P(EveryFormatTest, ComesOutAsItWas)
{
    fTree.Write("in/a", "1");
    fTree.Write("in/empty", "");
    fTree.Write("in/deep/b \xc3\xbc\n", std::string(700'000, 'b'));
    fTree.MakeFolder("in/nothing in it");
    fTree.Link("in/deep/l", "../a");
    fs::permissions(fTree.Path("in/a"), fs::perms(0640));
    ASSERT_EQ(Make(GetParam()), B_OK);
    EXPECT_EQ(fMade, std::string("in") + GetParam());
    EXPECT_EQ(fProblems, "");
    EXPECT_EQ(fTree.List(), "in\n" + fMade + "\n") << "nothing hidden is left";

    fTree.MakeFolder("out");
    BFile file(fTree.Path(fMade).c_str(), B_READ_ONLY);
    SafeTree tree(fTree.Path("out"));
    Progress progress("test");
    Extractor extractor(file, "in", tree, &progress);
    EXPECT_EQ(extractor.Run(), Extractor::End::kWhole);
    EXPECT_EQ(extractor.GetProblems().Text(), "");
    EXPECT_TRUE(Run("diff -r --no-dereference in out/in"));
    struct stat st = {};
    stat(fTree.Path("out/in/a").c_str(), &st);
    EXPECT_EQ(st.st_mode & 0777, 0640u);
}

INSTANTIATE_TEST_SUITE_P(All, EveryFormatTest,
                         ::testing::Values(".tar.gz", ".zip", ".tar.xz", ".tar.zst", ".tar"),
                         [](const auto& instance) {
                             std::string name = "In";
                             for (const char* letter = instance.param; *letter != '\0'; letter++) {
                                 name += *letter == '.' ? "" : std::string(1, *letter);
                             }
                             return name;
                         });

TEST_F(MakeArchiveTest, OthersReadIt)
{
    fTree.Write("in/a", "1");
    fTree.Write("in/\xff\xfe", "bytes");
    fTree.Link("in/l", "a");
    ASSERT_EQ(Make(".tar.gz"), B_OK);
    fTree.MakeFolder("out");
    EXPECT_TRUE(Run("tar xzf in.tar.gz -C out && diff -r --no-dereference in out/in"));
    fTree.Remove("in/\xff\xfe");
    ASSERT_EQ(Make(".zip"), B_OK);
    EXPECT_TRUE(Run("python3 -c \"import zipfile;z=zipfile.ZipFile('in.zip');"
                    "assert z.testzip() is None; assert z.read('in/a')==b'1'\""));
}

TEST_F(MakeArchiveTest, NothingThatIsThereIsReplaced)
{
    fTree.Write("in.tar", "mine");
    fTree.Link("in 2.tar", "nowhere");
    ASSERT_EQ(Make(".tar"), B_OK);
    EXPECT_EQ(fMade, "in 3.tar");
    EXPECT_EQ(fTree.Read("in.tar"), "mine");
    EXPECT_EQ(fTree.ReadLink("in 2.tar"), "nowhere");
}

TEST_F(MakeArchiveTest, ManyAtOnceGetNamesOfTheirOwn)
{
    fTree.Write("in/a", "1");
    std::vector<std::thread> makers;
    for (int maker = 0; maker < 8; maker++) {
        makers.emplace_back([this] {
            Progress progress("test");
            ArchiveWriter writer(BDirectory(fTree.Path().c_str()), Format(".tar"), &progress);
            std::string name = "in";
            EXPECT_EQ(writer.Open(), B_OK);
            EXPECT_EQ(writer.Add(Ref("in")), B_OK);
            EXPECT_EQ(writer.Finish(&name), B_OK);
        });
    }
    for (std::thread& maker : makers) {
        maker.join();
    }
    EXPECT_EQ(fTree.List(), "in\nin 2.tar\nin 3.tar\nin 4.tar\nin 5.tar\nin 6.tar\nin 7.tar\n"
                            "in 8.tar\nin.tar\n");
}

TEST_F(MakeArchiveTest, WhatIsNoFileIsLeftOutAndTold)
{
    fTree.Write("in/a", "1");
    ASSERT_EQ(::mkfifo(fTree.Path("in/pipe").c_str(), 0600), 0);
    ASSERT_EQ(Make(".tar"), B_OK); // nor waits for it
    EXPECT_EQ(fProblems, "\n\tin/pipe: it is a pipe");
    EXPECT_TRUE(Run("[ \"$(tar tf in.tar | sort | tr '\\n' ' ')\" = 'in/ in/a ' ]"));
}

TEST_F(MakeArchiveTest, OneThatGoesMeanwhileIsTold)
{
    fTree.Write("in/a", "1");
    const entry_ref gone = Ref("in/a");
    fTree.Remove("in/a");
    Progress progress("test");
    ArchiveWriter writer(BDirectory(fTree.Path().c_str()), Format(".tar"), &progress);
    std::string name = "in";
    EXPECT_EQ(writer.Open(), B_OK);
    EXPECT_EQ(writer.Add(gone), B_OK);
    EXPECT_EQ(writer.Finish(&name), B_OK);
    EXPECT_EQ(writer.GetProblems().Text(), "\n\ta: it is not there any more");
}

TEST_F(MakeArchiveTest, ASecondNameIsOneInATar)
{
    fTree.Write("in/a", std::string(100'000, 'a'));
    fs::create_hard_link(fTree.Path("in/a"), fTree.Path("in/b"));
    ASSERT_EQ(Make(".tar"), B_OK);
    EXPECT_LT(fs::file_size(fTree.Path("in.tar")), 150'000u);
    fTree.MakeFolder("out");
    EXPECT_TRUE(Run("tar xf in.tar -C out && [ out/in/a -ef out/in/b ]"));
}

TEST_F(MakeArchiveTest, TheArchiveIsNotPutIntoItself)
{
    fTree.Write("a", "1");
    Progress progress("test");
    ArchiveWriter writer(BDirectory(fTree.Path().c_str()), Format(".tar"), &progress);
    std::string name = "all";
    EXPECT_EQ(writer.Open(), B_OK);
    EXPECT_EQ(writer.Add(Ref("")), B_OK); // the folder that it is made in
    EXPECT_EQ(writer.Finish(&name), B_OK);
    EXPECT_TRUE(Run("tar tf all.tar | grep -q /a && ! tar tf all.tar | grep -q norvane-archive"));
}

/// A volume without room, as far as a program can tell.
TEST_F(MakeArchiveTest, WithoutRoomNothingIsLeft)
{
    fTree.Write("in/a", std::string(3'000'000, 'a'));
    ::signal(SIGXFSZ, SIG_IGN);
    rlimit before = {};
    ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &before), 0);
    const rlimit small{1'000'000, before.rlim_max};
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &small), 0);
    const status_t status = Make(".tar");
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &before), 0);
    ::signal(SIGXFSZ, SIG_DFL);
    EXPECT_LT(status, B_OK);
    EXPECT_EQ(fTree.List(), "in\n");
}

TEST_F(MakeArchiveTest, AFileThatShrinksMeanwhileLeavesTheRestReadable)
{
    fTree.Write("in/a", "");
    fs::resize_file(fTree.Path("in/a"), uintmax_t{40} << 20);
    fTree.Write("in/b", "2");
    std::thread other([this] {
        // At some moment of it.
        for (int round = 0; round < 2000; round++) {
            fs::resize_file(fTree.Path("in/a"), round % 2 == 0 ? 1000 : uintmax_t{40} << 20);
        }
    });
    EXPECT_EQ(Make(".tar"), B_OK);
    other.join();
    fTree.MakeFolder("out");
    EXPECT_TRUE(Run("tar xf in.tar -C out && cmp in/b out/in/b"));
}

TEST_F(MakeArchiveTest, StoppedAtTheBeginningOfAFileNothingIsLeft)
{
    fTree.Write("in/a", "1");
    {
        Progress progress("test");
        ArchiveWriter writer(BDirectory(fTree.Path().c_str()), Format(".tar.gz"), &progress);
        EXPECT_EQ(writer.Open(), B_OK);
        EXPECT_EQ(writer.Add(Ref("in")), B_OK);
    } // without an end
    EXPECT_EQ(fTree.List(), "in\n");
}

TEST_F(MakeArchiveTest, AnEndlessNameIsCutBeforeItsEnding)
{
    const std::string name(255, 'n');
    ASSERT_EQ(Make(".tar", {"in"}, name), B_OK);
    EXPECT_EQ(fMade, std::string(251, 'n') + ".tar");
    EXPECT_TRUE(fTree.Exists(fMade));
}

TEST(FreeNameTest, LettersAreNotCutInTwo)
{
    std::string name(254, 'n');
    name += "\xc3\xbc";
    const std::string found = FindFreeName(name, "", [](const std::string&) { return true; });
    EXPECT_EQ(found, std::string(254, 'n'));
    EXPECT_EQ(
        FindFreeName("a", ".x", [](const std::string& candidate) { return candidate == "a 12.x"; }),
        "a 12.x");
    EXPECT_EQ(FindFreeName("a", ".x", [](const std::string&) { return false; }), "");
}

} // namespace

} // namespace add_ons
