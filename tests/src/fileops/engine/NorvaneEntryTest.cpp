#include "fileops/engine/NorvaneEntry.h"

#include "CopyFixture.h"

#include <unistd.h>

namespace norvane {

class NorvaneEntryTest : public CopyFixture
{
};

TEST_F(NorvaneEntryTest, CopiesAFile)
{
    fTree.Write("from/a", "contents");
    fTree.MakeFolder("to");
    EXPECT_TRUE(Copy("from/a", "to"));
    EXPECT_TRUE(fIsWhole);
    EXPECT_EQ(fTree.Read("to/a"), "contents");
    EXPECT_EQ(fTree.Read("from/a"), "contents");
    EXPECT_TRUE(fUI.problems.empty());
}

TEST_F(NorvaneEntryTest, CopiesAnEmptyFile)
{
    fTree.Write("from/empty", "");
    fTree.MakeFolder("to");
    EXPECT_TRUE(Copy("from/empty", "to"));
    EXPECT_TRUE(fIsWhole);
    EXPECT_EQ(fTree.Read("to/empty"), "");
    EXPECT_EQ(fUI.chunks, 1);
}

class ChunkSizeTest : public CopyFixture, public ::testing::WithParamInterface<size_t>
{
};

TEST_P(ChunkSizeTest, CopiesEveryByte)
{
    std::string contents(GetParam(), '\0');
    for (size_t index = 0; index < contents.size(); index++) {
        contents[index] = static_cast<char>(index * 7 + index / 4096);
    }
    fTree.Write("from/a", contents);
    fTree.MakeFolder("to");
    EXPECT_TRUE(Copy("from/a", "to"));
    EXPECT_TRUE(fIsWhole);
    EXPECT_EQ(fTree.Read("to/a"), contents);
    EXPECT_EQ(fUI.bytes, static_cast<int64>(contents.size()));
    EXPECT_GE(fUI.chunks, 1) << "also an empty file is told of";
    if (contents.size() <= 65536) {
        EXPECT_EQ(fUI.chunks, 1) << "a small file is copied in one piece";
    }
}

INSTANTIATE_TEST_SUITE_P(AroundChunksAndBlocks, ChunkSizeTest,
                         ::testing::Values(0, 1, 4095, 4096, 4097, 65'536, 65'537, 262'143, 262'144,
                                           262'145, 1'000'003),
                         [](const auto& tested) { return "Bytes" + std::to_string(tested.param); });

TEST_F(NorvaneEntryTest, TellsWhatItCopies)
{
    fTree.Write("from/a", std::string(5000, 'x'));
    fTree.MakeFolder("to");
    Copy("from/a", "to");
    ASSERT_EQ(fUI.files.size(), 1u);
    EXPECT_EQ(fUI.files[0].source, fTree.Path("from/a"));
    EXPECT_EQ(fUI.files[0].target, fTree.Path("to/a"));
    EXPECT_EQ(fUI.files[0].sizeBytes, 5000);
}

TEST_F(NorvaneEntryTest, DoesNothingInItsOwnFolder)
{
    fTree.Write("from/a", "contents");
    EXPECT_FALSE(Copy("from/a", "from"));
    EXPECT_FALSE(fIsWhole);
    EXPECT_TRUE(fUI.questions.empty());
    EXPECT_TRUE(fUI.files.empty());
    EXPECT_EQ(fTree.Read("from/a"), "contents");
}

TEST_F(NorvaneEntryTest, NeverWritesAFileOverItself)
{
    fTree.Write("from/a", "contents");
    fTree.Link("same", fTree.Path("from"));
    fTree.MakeFolder("to");
    ASSERT_EQ(link(fTree.Path("from/a").c_str(), fTree.Path("to/a").c_str()), 0);
    fUI.answers = {kAnswerOverwrite, kAnswerOverwrite};
    EXPECT_FALSE(Copy("from/a", "same"));
    EXPECT_FALSE(Copy("from/a", "to"));
    EXPECT_FALSE(fIsWhole);
    EXPECT_TRUE(fUI.questions.empty());
    EXPECT_EQ(fTree.Read("from/a"), "contents");
}

TEST_F(NorvaneEntryTest, CopiesNamesOfAnyBytes)
{
    const char* const names[] = {"with blank ", "-rf", "two\nlines", "bad-\xff\xfe",
                                 "\xe6\x97\xa5"};
    for (const char* name : names) {
        fTree.Write(std::string("from/tree/") + name, name);
    }
    fTree.Write("from/tree/" + std::string(255, 'n'), "long");
    fTree.MakeFolder("to");
    EXPECT_TRUE(Copy("from/tree", "to"));
    EXPECT_TRUE(fIsWhole);
    EXPECT_EQ(fTree.List("to/tree"), fTree.List("from/tree"));
    for (const char* name : names) {
        EXPECT_EQ(fTree.Read(std::string("to/tree/") + name), name);
    }
}

TEST_F(NorvaneEntryTest, MeasuresAsADouble)
{
    fTree.Write("from/a/b", "12345");
    entry_ref ref;
    ASSERT_EQ(get_ref_for_path(fTree.Path("from").c_str(), &ref), B_OK);
    EXPECT_EQ(NorvaneEntry(&ref).CopySize(), 5.0);
}

// Permissions

TEST_F(NorvaneEntryTest, OpensNothingWider)
{
    fTree.Write("from/tree/secret", "contents");
    fTree.Write("from/tree/program", "contents");
    SetMode("from/tree/secret", 0600);
    SetMode("from/tree/program", 0755);
    SetMode("from/tree", 0700);
    fTree.MakeFolder("to");
    fUI.onFile = [this](const std::string&) {
        EXPECT_EQ(Mode("to/tree"), 0700u) << "while it is being filled";
    };
    const mode_t umaskBefore = umask(0);
    Copy("from/tree", "to");
    umask(umaskBefore);
    EXPECT_EQ(fUI.files.size(), 2u);
    EXPECT_EQ(Mode("to/tree"), 0700u);
    EXPECT_EQ(Mode("to/tree/secret"), 0600u);
    EXPECT_EQ(Mode("to/tree/program"), 0644u);
}

TEST_F(NorvaneEntryTest, HonoursTheUmask)
{
    fTree.Write("from/tree/a", "contents");
    SetMode("from/tree/a", 0666);
    SetMode("from/tree", 0777);
    fTree.MakeFolder("to");
    const mode_t umaskBefore = umask(027);
    Copy("from/tree", "to");
    umask(umaskBefore);
    EXPECT_EQ(Mode("to/tree"), 0750u);
    EXPECT_EQ(Mode("to/tree/a"), 0640u);
}

TEST_F(NorvaneEntryTest, FillsAFolderThatIsNotWritable)
{
    fTree.Write("from/tree/a", "contents");
    SetMode("from/tree", 0555);
    fTree.MakeFolder("to");
    EXPECT_TRUE(Copy("from/tree", "to"));
    EXPECT_EQ(Mode("to/tree"), 0555u);
    EXPECT_EQ(fTree.Read("to/tree/a"), "contents");
    SetMode("from/tree", 0755);
    SetMode("to/tree", 0755);
}

TEST_F(NorvaneEntryTest, AReplacedFileKeepsItsMode)
{
    fTree.Write("from/a", "new");
    fTree.Write("to/a", "old");
    SetMode("from/a", 0644);
    SetMode("to/a", 0640);
    fUI.answers = {kAnswerOverwrite};
    mode_t modeBeside = 0;
    fUI.onBytes = [&](int64) {
        const std::string names = fTree.List("to");
        const std::string beside = names.substr(0, names.find('\n'));
        EXPECT_EQ(beside.rfind(".norvane-", 0), 0u);
        modeBeside = Mode("to/" + beside);
    };
    EXPECT_TRUE(Copy("from/a", "to"));
    EXPECT_EQ(modeBeside, 0600u);
    EXPECT_EQ(Mode("to/a"), 0640u);
    EXPECT_EQ(fTree.Read("to/a"), "new");
}

} // namespace norvane
