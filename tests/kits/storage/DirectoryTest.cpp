#include <Directory.h>
#include <Entry.h>
#include <EntryBatch.h>
#include <File.h>
#include <Path.h>
#include <SymLink.h>

#include <TempTree.h>
#include <cstddef>
#include <dirent.h>
#include <gtest/gtest.h>
#include <map>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

namespace {

class DirectoryTest : public testing::Test
{
protected:
    std::string Names(BDirectory& folder)
    {
        std::string names;
        BEntry entry;
        while (folder.GetNextEntry(&entry) == B_OK) {
            names += std::string(entry.Name()) + "\n";
        }
        return names;
    }

    TempTree fTree;
};

} // namespace

TEST_F(DirectoryTest, YieldsEntriesInByteOrder)
{
    for (const char* name : {"b", "B", "a", "\xc3\xa4", "_", ".hidden", "\xff", "a b", "10", "9"}) {
        fTree.Write(name, "");
    }
    BDirectory folder(fTree.Path().c_str());

    EXPECT_EQ(Names(folder), ".hidden\n10\n9\nB\n_\na\na b\nb\n\xc3\xa4\n\xff\n");
    BEntry entry;
    EXPECT_EQ(folder.GetNextEntry(&entry), B_ENTRY_NOT_FOUND);
    EXPECT_EQ(entry.InitCheck(), B_NO_INIT);
}

TEST_F(DirectoryTest, SeesChangesAfterRewind)
{
    fTree.Write("a", "");
    BDirectory folder(fTree.Path().c_str());
    EXPECT_EQ(folder.CountEntries(), 1);
    fTree.Write("b", "");

    EXPECT_EQ(folder.CountEntries(), 2);
    EXPECT_EQ(Names(folder), "a\n");
    EXPECT_EQ(folder.Rewind(), B_OK);
    EXPECT_EQ(Names(folder), "a\nb\n");
}

TEST_F(DirectoryTest, TellsWhyItCannotBeOpened)
{
    fTree.Write("file", "");
    fTree.Link("loop", "loop");

    EXPECT_EQ(BDirectory(fTree.Path("none").c_str()).InitCheck(), B_ENTRY_NOT_FOUND);
    EXPECT_EQ(BDirectory(fTree.Path("file").c_str()).InitCheck(), B_NOT_A_DIRECTORY);
    EXPECT_EQ(BDirectory(fTree.Path("loop").c_str()).InitCheck(), B_LINK_LIMIT);
    EXPECT_EQ(BDirectory().InitCheck(), B_NO_INIT);
}

TEST_F(DirectoryTest, OpensAChildButNeverALink)
{
    fTree.MakeFolder("real");
    fTree.Link("link", "real");
    const BDirectory parent(fTree.Path().c_str());
    BDirectory child;

    EXPECT_EQ(child.SetToChild(parent, "real"), B_OK);
    EXPECT_EQ(child.SetToChild(parent, "link"), B_NOT_A_DIRECTORY);
    EXPECT_EQ(child.SetToChild(parent, ".."), B_BAD_VALUE);
}

TEST_F(DirectoryTest, StaysInItsFolderWhenThatIsMoved)
{
    fTree.Write("a/x", "");
    BDirectory folder(fTree.Path("a").c_str());

    ASSERT_EQ(rename(fTree.Path("a").c_str(), fTree.Path("b").c_str()), 0);
    fTree.Write("a/wrong", "");

    EXPECT_EQ(folder.CreateFile("y", nullptr, true), B_OK);
    EXPECT_EQ(fTree.List("b"), "x\ny\n");
    EXPECT_EQ(Names(folder), "x\ny\n");
}

TEST_F(DirectoryTest, CreatesAFileOnlyWhereNoneIs)
{
    fTree.Write("a", "old");
    fTree.Link("link", "elsewhere");
    BDirectory folder(fTree.Path().c_str());
    BFile file;

    EXPECT_EQ(folder.CreateFile("a", &file, true), B_FILE_EXISTS);
    EXPECT_EQ(folder.CreateFile("link", &file, true), B_FILE_EXISTS);
    EXPECT_EQ(folder.CreateNewFile("link", 0666, &file), B_FILE_EXISTS);
    EXPECT_EQ(fTree.Read("a"), "old");
    EXPECT_EQ(folder.CreateFile("a", &file), B_OK);
    EXPECT_EQ(fTree.Read("a"), "");
    EXPECT_FALSE(fTree.Exists("elsewhere"));
}

TEST_F(DirectoryTest, CreatesWithTheModeAskedFor)
{
    const mode_t before = umask(022);
    BDirectory folder(fTree.Path().c_str());
    BFile file;
    BDirectory made;
    mode_t mode = 0;

    EXPECT_EQ(folder.CreateNewFile("f", 0662, &file), B_OK);
    file.GetPermissions(&mode);
    EXPECT_EQ(mode, 0640u);
    EXPECT_EQ(folder.CreateNewDirectory("d", 0572, &made), B_OK);
    made.GetPermissions(&mode);
    EXPECT_EQ(mode, 0750u);
    EXPECT_EQ(made.SetPermissions(mode & 0572), B_OK);
    made.GetPermissions(&mode);
    EXPECT_EQ(mode, 0550u);
    umask(before);
}

TEST_F(DirectoryTest, RefusesNamesThatAreNoNames)
{
    BDirectory folder(fTree.Path().c_str());
    BFile file;

    for (const char* name : {"", ".", "..", "a/b", "/x"}) {
        EXPECT_EQ(folder.CreateNewFile(name, 0600, &file), B_BAD_VALUE) << name;
    }
    EXPECT_EQ(folder.CreateNewFile(std::string(256, 'n').c_str(), 0600, &file), B_NAME_TOO_LONG);
    EXPECT_EQ(fTree.List(), "");
}

TEST_F(DirectoryTest, MakesFoldersAndLinks)
{
    BDirectory folder(fTree.Path().c_str());
    BDirectory made;
    BSymLink link;

    EXPECT_EQ(folder.CreateDirectory("d", &made), B_OK);
    EXPECT_EQ(folder.CreateDirectory("d", nullptr), B_FILE_EXISTS);
    EXPECT_EQ(made.CreateSymLink("l", "../to nowhere", &link), B_OK);
    EXPECT_EQ(fTree.ReadLink("d/l"), "../to nowhere");
    char text[64];
    EXPECT_EQ(link.ReadLink(text, sizeof(text)), 13);
    EXPECT_STREQ(text, "../to nowhere");
    BPath path;
    EXPECT_GT(link.MakeLinkedPath(&made, &path), 0);
    EXPECT_EQ(std::string(path.Path()), fTree.Path("to nowhere"));
    EXPECT_FALSE(link.IsAbsolute());
    EXPECT_EQ(link.ReadLink(text, 13), B_NAME_TOO_LONG);
}

TEST_F(DirectoryTest, ContainsWhatLiesBelow)
{
    fTree.Write("a/b/c", "");
    fTree.MakeFolder("ab");
    const BDirectory folder(fTree.Path("a").c_str());

    EXPECT_TRUE(folder.Contains("b/c", B_FILE_NODE));
    EXPECT_FALSE(folder.Contains("b", B_FILE_NODE));
    EXPECT_FALSE(folder.Contains("../ab"));
    EXPECT_FALSE(folder.Contains("none"));
}

TEST_F(DirectoryTest, GivesRefsAndRecords)
{
    fTree.Write("a", "");
    fTree.MakeFolder("bb");
    BDirectory folder(fTree.Path().c_str());
    char buffer[4096];
    dirent* record = reinterpret_cast<dirent*>(buffer);

    EXPECT_EQ(folder.GetNextDirents(record, sizeof(buffer)), 2);
    EXPECT_STREQ(buffer + offsetof(dirent, d_name), "a");
    EXPECT_STREQ(buffer + record->d_reclen + offsetof(dirent, d_name), "bb");
    EXPECT_EQ(folder.GetNextDirents(record, sizeof(buffer)), 0);
    folder.Rewind();
    entry_ref ref;
    EXPECT_EQ(folder.GetNextRef(&ref), B_OK);
    EXPECT_EQ(std::string(BPath(&ref).Path()), fTree.Path("a"));
}

TEST_F(DirectoryTest, IsFoundByItsNode)
{
    fTree.Write("a/x", "");
    node_ref node;
    ASSERT_EQ(BEntry(fTree.Path("a").c_str()).GetNodeRef(&node), B_OK);

    BDirectory folder(&node);

    EXPECT_EQ(Names(folder), "x\n");
    const node_ref unknown(node.device, ~ino_t(0));
    EXPECT_EQ(BDirectory(&unknown).InitCheck(), B_ENTRY_NOT_FOUND);
}

TEST_F(DirectoryTest, MakesAWholePathOfFolders)
{
    EXPECT_EQ(create_directory(fTree.Path("a/b/c").c_str(), 0700), B_OK);
    EXPECT_EQ(create_directory(fTree.Path("a/b/c").c_str(), 0700), B_OK);
    EXPECT_TRUE(fTree.IsFolder("a/b/c"));
    fTree.Write("file", "");
    EXPECT_EQ(create_directory(fTree.Path("file").c_str(), 0700), B_FILE_EXISTS);
    EXPECT_EQ(create_directory(fTree.Path("file/x").c_str(), 0700), B_NOT_A_DIRECTORY);
}

TEST_F(DirectoryTest, ReadsAWholeFolderWithItsRecords)
{
    for (int i = 0; i < 600; ++i) {
        fTree.Write(std::to_string(i) + "f", std::string(static_cast<size_t>(i), 'x'));
    }
    fTree.Link("link", "f599");
    fTree.MakeFolder("folder");
    BDirectory folder(fTree.Path().c_str());
    BEntryBatch batch;

    ASSERT_EQ(batch.SetTo(folder), B_OK);
    while (batch.StatNext()) {
    }
    batch.Sort();

    ASSERT_EQ(batch.CountItems(), 602);
    EXPECT_EQ(batch.CountStatted(), 602);
    BEntry entry;
    for (int32 i = 0; i < batch.CountItems(); ++i) {
        ASSERT_EQ(folder.GetNextEntry(&entry), B_OK);
        struct stat st;
        ASSERT_EQ(entry.GetStat(&st), B_OK);
        const BEntryBatch::Item& item = batch.ItemAt(i);
        EXPECT_STREQ(item.name, entry.Name());
        EXPECT_EQ(item.size, st.st_size);
        EXPECT_EQ(item.mode, st.st_mode);
        EXPECT_EQ(item.node, st.st_ino);
        EXPECT_EQ(item.device, st.st_dev);
        EXPECT_EQ(item.modified, st.st_mtime);
    }
    entry_ref ref;
    EXPECT_EQ(batch.GetRef(0, &ref), B_OK);
    EXPECT_TRUE(BEntry(&ref).Exists());
    EXPECT_EQ(batch.GetRef(602, &ref), B_BAD_INDEX);
}

TEST_F(DirectoryTest, ReadsALargeFolderWithTwoThreads)
{
    BDirectory folder(fTree.Path().c_str());
    for (int i = 0; i < 25000; ++i) {
        ASSERT_EQ(symlink("x", fTree.Path(std::to_string(i) + "l").c_str()), 0);
    }
    BEntryBatch batch;
    ASSERT_EQ(batch.SetTo(folder), B_OK);
    ASSERT_EQ(unlink(fTree.Path("77l").c_str()), 0);
    while (batch.StatNext()) {
    }
    batch.Sort();

    EXPECT_EQ(batch.CountStatted(), 25000);
    int32 links = 0;
    for (int32 i = 0; i < batch.CountItems(); ++i) {
        const BEntryBatch::Item& item = batch.ItemAt(i);
        links += item.status == B_OK && S_ISLNK(item.mode) ? 1 : 0;
        EXPECT_TRUE(i == 0 || strcmp(batch.ItemAt(i - 1).name, item.name) < 0);
    }
    EXPECT_GE(links, 24999);
}

TEST_F(DirectoryTest, GivesNamesWithTheirKinds)
{
    fTree.Write("all/file", "");
    fTree.MakeFolder("all/folder");
    fTree.Link("all/link", "file");
    ASSERT_EQ(mkfifo(fTree.Path("all/pipe").c_str(), 0600), 0);
    BDirectory folder(fTree.Path("all").c_str());
    std::map<std::string, uint32> kinds;
    const char* name = nullptr;
    uint32 kind = B_ANY_NODE;

    while (folder.GetNextName(&name, &kind) == B_OK) {
        kinds[name] = kind;
    }

    const std::map<std::string, uint32> expected = {{"file", B_FILE_NODE},
                                                    {"folder", B_DIRECTORY_NODE},
                                                    {"link", B_SYMLINK_NODE},
                                                    {"pipe", 0u}};
    EXPECT_EQ(kinds, expected);
}

TEST_F(DirectoryTest, TellsAFolderThatIsGoneFromOneThatIsEmpty)
{
    fTree.MakeFolder("gone");
    fTree.MakeFolder("empty");
    BDirectory gone(fTree.Path("gone").c_str());
    BDirectory empty(fTree.Path("empty").c_str());
    fTree.Remove("gone");
    const char* name = nullptr;

    EXPECT_EQ(gone.GetNextName(&name), B_FILE_ERROR);
    EXPECT_EQ(empty.GetNextName(&name), B_ENTRY_NOT_FOUND);
}
