#include "Extract/ArchiveName.h"
#include "Extract/Extractor.h"
#include "common/Progress.h"

#include "ApplicationEnvironment.h"
#include "TarText.h"
#include "TempTree.h"

#include <NodeAccess.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <random>
#include <sys/stat.h>

namespace add_ons {

namespace {

namespace fs = std::filesystem;
using End = Extractor::End;

/// Archives of all kinds, taken apart into "home/out"; what lies beside it must stay as it is.
class ExtractTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        fTree.Write("home/secret", "secret");
        fTree.Write("home/folder/inner", "inner");
        fTree.Link("home/link", "secret");
        fTree.Write("outside", "outside");
        fTree.MakeFolder("home/out");
        fBefore = Surroundings();
        EXPECT_EQ(CountDescriptors(), 0u);
    }

    void TearDown() override
    {
        EXPECT_EQ(Surroundings(), fBefore);
        EXPECT_EQ(CountDescriptors(), 0u);
    }

    /// Everything but what is in "home/out" and the archives.
    std::string Surroundings() const
    {
        std::string all;
        for (auto it = fs::recursive_directory_iterator(fTree.Path());
             it != fs::recursive_directory_iterator(); ++it) {
            const fs::path path = it->path();
            if (path == fTree.Path("home/out")) {
                it.disable_recursion_pending();
            } else if (path.extension() != ".archive") {
                struct stat st;
                lstat(path.c_str(), &st);
                all += path.string() + " " + std::to_string(st.st_mode) + " " +
                       std::to_string(st.st_size) + " " + std::to_string(st.st_nlink) + "\n";
            }
        }
        return all + fTree.Read("home/secret") + fTree.Read("outside");
    }

    /// Of the test's own folder: others may open what they like meanwhile.
    size_t CountDescriptors() const
    {
        size_t count = 0;
        for (const auto& entry : fs::directory_iterator("/proc/self/fd")) {
            std::error_code gone;
            const std::string path = fs::read_symlink(entry.path(), gone).string();
            count += path.starts_with(fTree.Path()) ? 1 : 0;
        }
        return count;
    }

    End Extract(const std::string& bytes)
    {
        fTree.Write("a.archive", bytes);
        return ExtractFile("a.archive");
    }

    End Extract(const TarText& tar) { return Extract(tar.Text()); }

    End ExtractFile(const std::string& name)
    {
        BFile file(fTree.Path(name).c_str(), B_READ_ONLY);
        SafeTree tree(fTree.Path("home/out"));
        Progress progress("test");
        Extractor extractor(file, "a", tree, &progress);
        if (fFreeBytes) {
            extractor.SetFreeBytes(fFreeBytes);
        }
        const End end = extractor.Run();
        fProblems = extractor.GetProblems().Text();
        fOnly = extractor.OnlyFolder();
        if (fTakesBack) {
            extractor.TakeBack();
        }
        return end;
    }

    /// What is in the new folder: "path=contents", "path/", "path->link", in order.
    std::string Out() const
    {
        std::string all;
        std::vector<fs::path> paths;
        for (const auto& entry : fs::recursive_directory_iterator(fTree.Path("home/out"))) {
            paths.push_back(entry.path());
        }
        std::sort(paths.begin(), paths.end());
        for (const fs::path& path : paths) {
            const std::string name = path.lexically_relative(fTree.Path("home/out")).string();
            if (fs::is_symlink(path)) {
                all += name + "->" + fs::read_symlink(path).string() + " ";
            } else if (fs::is_directory(path)) {
                all += name + "/ ";
            } else {
                all += name + "=" + fTree.Read("home/out/" + name) + " ";
            }
        }
        return all;
    }

    bool Run(const std::string& command) const
    {
        return std::system(
                   ("cd '" + fTree.Path() + "' && (" + command + ") >/dev/null 2>&1").c_str()) == 0;
    }

    mode_t ModeOf(const std::string& name) const
    {
        struct stat st = {};
        lstat(fTree.Path("home/out/" + name).c_str(), &st);
        return st.st_mode & 07777;
    }

    TempTree fTree;
    std::string fBefore;
    std::string fProblems;
    std::string fOnly;
    std::function<int64()> fFreeBytes;
    bool fTakesBack = false;
};

// Whole ones

TEST_F(ExtractTest, TakesOutFilesFoldersAndLinks)
{
    EXPECT_EQ(Extract(TarText()
                          .Folder("d", 0750)
                          .File("d/a", "1", 0640)
                          .File("b", "22", 0755)
                          .Link("d/l", "../b")
                          .SecondName("c", "b")),
              End::kWhole);
    EXPECT_EQ(Out(), "b=22 c=22 d/ d/a=1 d/l->../b ");
    EXPECT_EQ(fProblems, "");
    EXPECT_EQ(ModeOf("d"), 0750u);
    EXPECT_EQ(ModeOf("d/a"), 0640u);
    EXPECT_EQ(ModeOf("b"), 0755u);
    struct stat st = {};
    stat(fTree.Path("home/out/d").c_str(), &st);
    EXPECT_EQ(st.st_mtime, 1'000'000'000);
    stat(fTree.Path("home/out/b").c_str(), &st);
    EXPECT_EQ(st.st_mtime, 1'000'000'000);
    EXPECT_EQ(st.st_nlink, 2u);
}

TEST_F(ExtractTest, MakesFoldersThatNoEntrySpeaksOf)
{
    EXPECT_EQ(Extract(TarText().File("a/b/c", "1")), End::kWhole);
    EXPECT_EQ(Out(), "a/ a/b/ a/b/c=1 ");
}

TEST_F(ExtractTest, TellsOfAnOnlyFolder)
{
    EXPECT_EQ(Extract(TarText().Folder("x").File("x/a", "1")), End::kWhole);
    EXPECT_EQ(fOnly, "x");
}

TEST_F(ExtractTest, OfSeveralEntriesNoneIsTheOnlyFolder)
{
    EXPECT_EQ(Extract(TarText().Folder("x").File("y", "1")), End::kWhole);
    EXPECT_EQ(fOnly, "");
}

TEST_F(ExtractTest, AFolderWithoutRightsIsFilledAllTheSame)
{
    EXPECT_EQ(Extract(TarText().Folder("d", 0500).File("d/a", "1", 0).Folder("d/e", 0)),
              End::kWhole);
    EXPECT_EQ(Out(), "d/ d/a=1 d/e/ ");
    EXPECT_EQ(ModeOf("d"), 0700u);
}

TEST_F(ExtractTest, NamesOfAnyBytesComeOutAsTheyAre)
{
    EXPECT_EQ(Extract(TarText().File("a\xff\n b", "1").File(std::string(255, 'n'), "2")),
              End::kWhole);
    EXPECT_EQ(fTree.Read("home/out/a\xff\n b"), "1");
    EXPECT_EQ(fTree.Read("home/out/" + std::string(255, 'n')), "2");
}

// Ways out of the folder

struct Hostile
{
    const char* name;
    TarText tar;
    const char* out; // what is in the folder afterwards
};

class HostileTest : public ExtractTest, public ::testing::WithParamInterface<Hostile>
{
};

TEST_P(HostileTest, StaysInTheFolderAndSaysSo)
{
    EXPECT_EQ(Extract(GetParam().tar), End::kWhole);
    EXPECT_EQ(Out(), GetParam().out);
    EXPECT_NE(fProblems, "");
}

INSTANTIATE_TEST_SUITE_P(
    Tar, HostileTest,
    ::testing::Values(
        Hostile{"Upwards", TarText().File("../evil", "1").File("good", "2"), "good=2 "},
        Hostile{"UpwardsInside", TarText().File("a/../../evil", "1"), ""},
        Hostile{"UpwardsAtTheEnd", TarText().Folder("a/..").File("good", "2"), "good=2 "},
        Hostile{"UpwardsThoughInside", TarText().Folder("a").File("a/../b", "1"), "a/ "},
        Hostile{"Absolute", TarText().File("/tmp/norvane-evil", "1").File("good", "2"), "good=2 "},
        Hostile{"AbsoluteFolder", TarText().Folder("/tmp/norvane-evil-folder"), ""},
        Hostile{"LinkUpwards", TarText().Link("l", "../secret"), ""},
        Hostile{"LinkAbsolute", TarText().Link("l", "/etc/passwd"), ""},
        Hostile{"LinkToTheFolderAbove", TarText().Link("l", "..").File("good", "1"), "good=1 "},
        Hostile{"WrittenThroughALink", TarText().Link("l", "..").File("l/evil", "1"),
                "l/ l/evil=1 "},
        Hostile{"WrittenThroughALinkToAFile", TarText().Link("l", "../secret").File("l", "1"),
                "l=1 "},
        Hostile{"WrittenThroughALinkInside", TarText().Folder("d").Link("l", "d").File("l/x", "1"),
                "d/ l/ l/x=1 "},
        Hostile{"LinkReplacesAFolder", TarText().Folder("d").Link("d", "..").File("d/evil", "1"),
                "d/ d/evil=1 "},
        Hostile{"LinksThatLeadOutTogether",
                TarText().Folder("p").Folder("p/q").Link("p/q/up", "..").Link("x", "p/q/up/../.."),
                "p/ p/q/ p/q/up->.. "},
        Hostile{"LinkThroughALinkThatIsRefused",
                TarText().Link("a", "..").Link("b", "a/secret").File("good", "1"), "good=1 "},
        Hostile{"LinksInACircle", TarText().Link("a", "b").Link("b", "a").File("good", "1"),
                "good=1 "},
        Hostile{"LinkToItself", TarText().Link("a", "a"), ""},
        Hostile{"LinkWithoutText", TarText().Link("a", "").File("good", "1"), "good=1 "},
        Hostile{"LinkAsTheFolderItself", TarText().Link(".", "/etc").File("good", "1"), "good=1 "},
        Hostile{"SecondNameOutside", TarText().SecondName("s", "../secret"), ""},
        Hostile{"SecondNameAbsolute", TarText().SecondName("s", "/etc/passwd"), ""},
        Hostile{"SecondNameOfNothing", TarText().SecondName("s", "missing"), ""},
        Hostile{"SecondNameOfAFolder", TarText().Folder("d").SecondName("s", "d"), "d/ "},
        Hostile{"SecondNameThroughALink",
                TarText().Link("l", "..").SecondName("s", "l/secret").File("good", "1"), "good=1 "},
        Hostile{"Pipe", TarText().Add("p", '6').File("good", "1"), "good=1 "},
        Hostile{"CharacterDevice", TarText().Add("c", '3'), ""},
        Hostile{"BlockDevice", TarText().Add("b", '4'), ""},
        Hostile{"Twice", TarText().File("a", "first").File("a", "second"), "a=first "},
        Hostile{"FileThenFolder", TarText().File("a", "1").File("a/b", "2"), "a=1 "},
        Hostile{"FolderThenFile", TarText().Folder("a").File("a", "2"), "a/ "},
        Hostile{"NameTooLong", TarText().File(std::string(256, 'n'), "1").File("good", "2"),
                "good=2 "},
        Hostile{"NothingButDots", TarText().File(".", "1").File("./.", "2").File("good", "3"),
                "good=3 "}),
    [](const auto& instance) { return instance.param.name; });

TEST_F(ExtractTest, NobodyGetsTheRightsOfAnother)
{
    EXPECT_EQ(Extract(TarText().File("a", "1", 06755).Folder("d", 07777)), End::kWhole);
    EXPECT_EQ(ModeOf("a"), 0755u & ~current_umask());
    EXPECT_EQ(ModeOf("d"), 0777u & ~current_umask());
}

TEST_F(ExtractTest, ATreeThatIsTooDeepIsLeftOut)
{
    std::string path = "d";
    for (int depth = 0; depth < 5000; depth++) {
        path += "/d";
    }
    EXPECT_EQ(Extract(TarText().File(path, "1").File("good", "2")), End::kWhole);
    EXPECT_EQ(Out(), "good=2 ");
}

TEST_F(ExtractTest, ADeepTreeComesOutWhole)
{
    std::string path = "d";
    for (int depth = 0; depth < 900; depth++) {
        path += "/d";
    }
    EXPECT_EQ(Extract(TarText().File(path + "/a", "1")), End::kWhole);
    EXPECT_EQ(fProblems, "");
    EXPECT_EQ(fTree.Read("home/out/" + path + "/a"), "1");
}

// Sizes

TEST_F(ExtractTest, ASizeThatIsNotThereIsDamage)
{
    EXPECT_EQ(Extract(TarText().File("a", "1").Announce("b", 1'000'000).TextWithoutEnd()),
              End::kDamaged);
    EXPECT_EQ(fTree.Read("home/out/a"), "1");
}

TEST_F(ExtractTest, AHugeSizeTakesNoRoom)
{
    EXPECT_EQ(Extract(TarText().Announce("b", uint64_t{8} << 30).TextWithoutEnd()), End::kDamaged);
    EXPECT_LT(fs::file_size(fTree.Path("home/out/b")), 4096u);
}

TEST_F(ExtractTest, ABombEndsBeforeTheVolumeIsFull)
{
    int64 left = int64{200} << 20;
    fFreeBytes = [&left] {
        left -= int64{8} << 20; // as much as was written since
        return left;
    };
    ASSERT_TRUE(Run("yes | head -c 400000000 | gzip -1 > bomb.archive"));
    EXPECT_EQ(ExtractFile("bomb.archive"), End::kVolumeFull);
    EXPECT_LT(fs::file_size(fTree.Path("home/out/a")), uintmax_t{200} << 20);
    EXPECT_GT(left, int64{60} << 20);
}

TEST_F(ExtractTest, ABombInAZipEndsBeforeTheVolumeIsFull)
{
    fFreeBytes = [] {
        return int64{1} << 20;
    };
    ASSERT_TRUE(Run("python3 -c \"import zipfile;z=zipfile.ZipFile('z.archive','w',8);"
                    "z.writestr('zeros',b'0'*100000000)\""));
    EXPECT_EQ(ExtractFile("z.archive"), End::kVolumeFull);
    EXPECT_LT(fs::file_size(fTree.Path("home/out/zeros")), uintmax_t{20} << 20);
}

// Damage

TEST_F(ExtractTest, WhatIsNoArchiveMakesNothing)
{
    EXPECT_EQ(Extract(std::string("a text, not an archive\n")), End::kNoArchive);
    EXPECT_EQ(Extract(std::string()), End::kNoArchive);
    EXPECT_EQ(Extract(std::string(100'000, 'x')), End::kNoArchive);
    EXPECT_EQ(Out(), "");
}

TEST_F(ExtractTest, OneThatEndsAnywhereIsHarmless)
{
    const std::string whole = TarText()
                                  .Folder("d")
                                  .File("d/a", std::string(3000, 'a'))
                                  .Link("l", "d/a")
                                  .File("b", "2")
                                  .Text();
    for (size_t length = 0; length < whole.size(); length += 97) {
        fTakesBack = true;
        const End end = Extract(whole.substr(0, length));
        EXPECT_TRUE(end == End::kWhole || end == End::kDamaged || end == End::kNoArchive) << length;
        EXPECT_EQ(Out(), "") << length;
    }
}

class PackedDamageTest : public ExtractTest, public ::testing::WithParamInterface<const char*>
{
};

/// Bytes turned anywhere: neither a crash nor anything outside.
TEST_P(PackedDamageTest, TurnedBytesAreHarmless)
{
    fTree.Write("src/one", std::string(20'000, 'a'));
    fTree.Write("src/two", "2");
    fTree.Link("src/l", "one");
    fBefore = Surroundings();
    ASSERT_TRUE(Run(GetParam()));
    const std::string whole = fTree.Read("p.archive");
    std::mt19937 random(7);
    for (int round = 0; round < 300; round++) {
        std::string turned = whole;
        for (int change = 0; change < 1 + round % 8; change++) {
            turned[random() % turned.size()] = static_cast<char>(random());
        }
        fTakesBack = true;
        Extract(turned);
        ASSERT_EQ(Out(), "") << round;
    }
}

INSTANTIATE_TEST_SUITE_P(
    All, PackedDamageTest,
    ::testing::Values("tar czf p.archive src", "tar cf p.archive src",
                      "python3 -c \"import zipfile;z=zipfile.ZipFile('p.archive','w',8);"
                      "z.write('src/one');z.write('src/two')\"",
                      "tar cJf p.archive src"),
    [](const auto& instance) { return std::string(1, static_cast<char>('A' + instance.index)); });

TEST_F(ExtractTest, AnEncryptedFileIsTold)
{
    // The one bit that says so.
    ASSERT_TRUE(Run("python3 -c \"import zipfile;z=zipfile.ZipFile('e.archive','w',0);"
                    "z.writestr('hidden',b'0'*100)\""));
    std::string bytes = fTree.Read("e.archive");
    bytes[6] = static_cast<char>(bytes[6] | 1);
    const size_t central = bytes.find("PK\x01\x02");
    bytes[central + 8] = static_cast<char>(bytes[central + 8] | 1);
    EXPECT_EQ(Extract(bytes), End::kWhole);
    EXPECT_EQ(Out(), "");
    EXPECT_EQ(fProblems, "\n\thidden: it is encrypted");
}

// Taking back

TEST_F(ExtractTest, WhatWasMadeGoesAgainAndNothingElse)
{
    fTree.Write("home/out/mine", "mine");
    fTakesBack = true;
    EXPECT_EQ(
        Extract(
            TarText().File("a/b/c", "1").Folder("d", 0500).Link("d/l", "../a").File("mine", "2")),
        End::kWhole);
    EXPECT_EQ(Out(), "mine=mine ");
}

// Others between

TEST_F(ExtractTest, ALinkThatOthersPutThereIsNotFollowed)
{
    fTree.Link("home/out/d", "..");
    EXPECT_EQ(Extract(TarText().File("d/evil", "1").Folder("d").File("good", "2")), End::kWhole);
    EXPECT_EQ(Out(), "d->.. good=2 ");
}

// Other archivers' work

TEST_F(ExtractTest, TakesOutWhatTarAndZipMake)
{
    fTree.Write("src/one", std::string(300'000, 'a'));
    fTree.Write("src/deep/two", "2");
    fBefore = Surroundings();
    for (const char* command :
         {"tar czf p.archive src", "tar cJf p.archive src", "tar cf p.archive src",
          "python3 -c \"import shutil;shutil.make_archive('p','zip','.','src')\" && "
          "mv p.zip p.archive"}) {
        ASSERT_TRUE(Run(command)) << command;
        EXPECT_EQ(ExtractFile("p.archive"), End::kWhole) << command;
        EXPECT_EQ(fProblems, "") << command;
        EXPECT_TRUE(Run("diff -r src home/out/src")) << command;
        ASSERT_TRUE(Run("rm -rf home/out/*"));
    }
}

TEST_F(ExtractTest, OnePackedFileIsUnpacked)
{
    ASSERT_TRUE(Run("seq 1000 | gzip > p.archive"));
    EXPECT_EQ(ExtractFile("p.archive"), End::kWhole);
    EXPECT_EQ(fTree.Read("home/out/a").size(), 3893u);
}

TEST(ArchiveNameTest, EndingsGo)
{
    EXPECT_EQ(NameWithoutEnding("a.tar.gz"), "a");
    EXPECT_EQ(NameWithoutEnding("a.b.TGZ"), "a.b");
    EXPECT_EQ(NameWithoutEnding("a.zip"), "a");
    EXPECT_EQ(NameWithoutEnding("notes.txt.xz"), "notes.txt");
    EXPECT_EQ(NameWithoutEnding(".zip"), ".zip");
    EXPECT_EQ(NameWithoutEnding("plain"), "plain");
}

} // namespace

} // namespace add_ons
