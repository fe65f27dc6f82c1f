#include "TrashFixture.h"

#include <Path.h>
#include <TrashRecord.h>

#include <ctime>
#include <sys/stat.h>

namespace {

/// What follows "Path=" in a record.
std::string OriginIn(const std::string& record)
{
    const size_t start = record.find("\nPath=");
    return start == std::string::npos
               ? "(none)"
               : record.substr(start + 6, record.find('\n', start + 1) - start - 6);
}

} // namespace

TEST_F(TrashTest, WritesWhereAnEntryCameFrom)
{
    fTree.Write("from/report", "text");

    ASSERT_EQ(Trash("from/report"), B_OK);

    EXPECT_EQ(fTree.Read(InFiles("report")), "text");
    EXPECT_FALSE(fTree.Exists("from/report"));
    const std::string record = fTree.Read(InInfo("report"));
    EXPECT_EQ(record.substr(0, 13), "[Trash Info]\n");
    EXPECT_EQ(OriginIn(record), fTree.Path("from/report"));
    struct stat st;
    ASSERT_EQ(stat(fTree.Path(InInfo("report")).c_str(), &st), 0);
    EXPECT_EQ(st.st_mode & 0777, 0600u);
}

TEST_F(TrashTest, FollowsTheFolderThatIsRenamedMeanwhile)
{
    fTree.Write("from/first", "");
    fTree.Write("from/second", "");
    fTree.Write("other/third", "");

    ASSERT_EQ(Trash("from/first"), B_OK);
    ASSERT_EQ(BEntry(fTree.Path("from").c_str()).Rename("renamed"), B_OK);
    ASSERT_EQ(Trash("renamed/second"), B_OK);
    ASSERT_EQ(Trash("other/third"), B_OK);

    EXPECT_EQ(OriginIn(fTree.Read(InInfo("first"))), fTree.Path("from/first"));
    EXPECT_EQ(OriginIn(fTree.Read(InInfo("second"))), fTree.Path("renamed/second"));
    EXPECT_EQ(OriginIn(fTree.Read(InInfo("third"))), fTree.Path("other/third"));
}

TEST_F(TrashTest, WritesWhenItWasDeletedInLocalTime)
{
    fTree.Write("report", "");
    const time_t before = time(nullptr);

    ASSERT_EQ(Trash("report"), B_OK);

    const std::string record = fTree.Read(InInfo("report"));
    const size_t start = record.find("\nDeletionDate=");
    ASSERT_NE(start, std::string::npos);
    struct tm parts = {};
    const char* end = strptime(record.c_str() + start + 14, "%Y-%m-%dT%H:%M:%S", &parts);
    ASSERT_NE(end, nullptr);
    EXPECT_STREQ(end, "\n");
    parts.tm_isdst = -1;
    const time_t noted = mktime(&parts);
    EXPECT_GE(noted, before);
    EXPECT_LE(noted, time(nullptr));
}

TEST_F(TrashTest, EncodesAllButPlainBytes)
{
    const std::string name = "a b%\n#\xc3\xa9\xff-_.~";
    fTree.Write("from/" + name, "");

    ASSERT_EQ(Trash("from/" + name), B_OK);

    EXPECT_EQ(OriginIn(fTree.Read(InInfo(name))),
              fTree.Path("from/") + "a%20b%25%0A%23%C3%A9%FF-_.~");
}

TEST_F(TrashTest, SaysThatANameIsTakenByAnEntry)
{
    fTree.Write("report", "mine");
    fTree.Write(InFiles("report"), "there");

    EXPECT_EQ(Trash("report"), B_FILE_EXISTS);

    EXPECT_EQ(fTree.Read("report"), "mine");
    EXPECT_EQ(fTree.Read(InFiles("report")), "there");
    EXPECT_FALSE(fTree.Exists(InInfo("report")));
}

TEST_F(TrashTest, SaysThatANameIsTakenByARecord)
{
    fTree.Write("report", "mine");
    fTree.Write(InInfo("report"), "another's");

    EXPECT_EQ(Trash("report"), B_FILE_EXISTS);

    EXPECT_EQ(fTree.Read("report"), "mine");
    EXPECT_EQ(fTree.Read(InInfo("report")), "another's");
}

TEST_F(TrashTest, LeavesNoRecordOfAMoveThatFailed)
{
    EXPECT_EQ(Trash("none"), B_ENTRY_NOT_FOUND);

    EXPECT_FALSE(fTree.Exists(InInfo("none")));
}

TEST_F(TrashTest, NotesTheWholeNameUnderAShorterOne)
{
    const std::string name = std::string(250, 'n') + ".text";
    fTree.Write("a/" + name, "first");
    fTree.Write("b/" + name, "second");

    ASSERT_EQ(Trash("a/" + name), B_OK);
    const std::string first = fTrashedName;
    ASSERT_EQ(Trash("b/" + name), B_OK);

    EXPECT_LE(first.size(), 245u);
    EXPECT_NE(first, fTrashedName);
    EXPECT_TRUE(first.ends_with("~.text"));
    EXPECT_EQ(fTree.Read(InFiles(first)), "first");
    EXPECT_EQ(fTree.Read(InFiles(fTrashedName)), "second");
    EXPECT_EQ(OriginIn(fTree.Read(InInfo(first))), fTree.Path("a/" + name));
    EXPECT_EQ(OriginIn(fTree.Read(InInfo(fTrashedName))), fTree.Path("b/" + name));
}

TEST_F(TrashTest, ShortensBetweenLetters)
{
    std::string name;
    while (name.size() < 250) {
        name += "\xe2\x82\xac"; // three bytes each
    }
    fTree.Write(name, "");

    ASSERT_EQ(Trash(name), B_OK);

    EXPECT_EQ(fTrashedName.back(), '~');
    EXPECT_EQ((fTrashedName.size() - 1) % 3, 0u);
}

TEST_F(TrashTest, ForgetsWhereARemovedEntryCameFrom)
{
    fTree.Write("file", "");
    fTree.MakeFolder("folder");
    ASSERT_EQ(Trash("file"), B_OK);
    ASSERT_EQ(Trash("folder"), B_OK);

    EXPECT_EQ(BEntry(fTree.Path(InFiles("file")).c_str()).Remove(), B_OK);
    EXPECT_EQ(BEntry(fTree.Path(InFiles("folder")).c_str()).Remove(), B_OK);

    EXPECT_FALSE(fTree.Exists(InInfo("file")));
    EXPECT_FALSE(fTree.Exists(InInfo("folder")));
}

TEST_F(TrashTest, KeepsTheRecordOfWhatCouldNotBeRemoved)
{
    fTree.Write("folder/child", "");
    ASSERT_EQ(Trash("folder"), B_OK);

    EXPECT_EQ(BEntry(fTree.Path(InFiles("folder")).c_str()).Remove(), B_DIRECTORY_NOT_EMPTY);

    EXPECT_TRUE(fTree.Exists(InInfo("folder")));
}

TEST_F(TrashTest, ForgetsTheOriginOfWhatIsTakenOut)
{
    fTree.Write("from/report", "text");
    fTree.MakeFolder("to");
    ASSERT_EQ(Trash("from/report"), B_OK);
    BEntry entry(fTree.Path(InFiles("report")).c_str());
    BDirectory to(fTree.Path("to").c_str());

    EXPECT_EQ(entry.MoveTo(&to), B_OK);

    EXPECT_EQ(fTree.Read("to/report"), "text");
    EXPECT_FALSE(fTree.Exists(InInfo("report")));
}

TEST_F(TrashTest, TakesTheRecordAlongInsideTheTrash)
{
    fTree.Write("from/report", "text");
    ASSERT_EQ(Trash("from/report"), B_OK);
    BEntry entry(fTree.Path(InFiles("report")).c_str());

    EXPECT_EQ(entry.Rename("other"), B_OK);

    EXPECT_EQ(fTree.Read(InFiles("other")), "text");
    EXPECT_FALSE(fTree.Exists(InInfo("report")));
    EXPECT_EQ(OriginIn(fTree.Read(InInfo("other"))), fTree.Path("from/report"));
}

// As after a name that was put aside when its record could not be removed.
TEST_F(TrashTest, GetsTheNameBackWhoseRecordIsStillThere)
{
    const std::string record = PutAside();
    BEntry entry(fTree.Path(InFiles("aside")).c_str());
    fTree.Write(InInfo("report"), record);

    EXPECT_EQ(entry.Rename("report"), B_OK);

    EXPECT_EQ(fTree.Read(InFiles("report")), "text");
    EXPECT_EQ(fTree.Read(InInfo("report")), record);
    EXPECT_FALSE(fTree.Exists(InInfo("aside")));
}

TEST_F(TrashTest, LeavesANameToTheOtherEntryWhoseRecordIsThere)
{
    const std::string record = PutAside();
    BEntry entry(fTree.Path(InFiles("aside")).c_str());
    const std::string other = "[Trash Info]\nPath=/other\nDeletionDate=2026-01-01T00:00:00\n";
    fTree.Write(InInfo("report"), other); // claimed for an entry that is about to come

    EXPECT_EQ(entry.Rename("report"), B_FILE_EXISTS);

    EXPECT_EQ(fTree.Read(InInfo("report")), other);
    EXPECT_EQ(fTree.Read(InInfo("aside")), record);
}

TEST_F(TrashTest, KeepsTheRecordWhenTheNewNameIsTaken)
{
    fTree.Write("a", "1");
    ASSERT_EQ(Trash("a"), B_OK);
    const std::string record = fTree.Read(InInfo("a"));
    fTree.Write(InFiles("b"), "2"); // without a record

    BEntry entry(fTree.Path(InFiles("a")).c_str());
    EXPECT_EQ(entry.Rename("b"), B_FILE_EXISTS);

    EXPECT_EQ(fTree.Read(InInfo("a")), record);
    EXPECT_FALSE(fTree.Exists(InInfo("b")));
    EXPECT_EQ(fTree.Read(InFiles("b")), "2");
}

TEST_F(TrashTest, ReplacesTheRecordOfWhatIsReplaced)
{
    fTree.Write("first/report", "old");
    fTree.Write("second/report", "new");
    ASSERT_EQ(Trash("first/report"), B_OK);
    BEntry entry(fTree.Path("second/report").c_str());
    BDirectory trash(fTree.Path(InFiles("")).c_str());

    EXPECT_EQ(entry.MoveTo(&trash, nullptr, true), B_OK);

    EXPECT_EQ(fTree.Read(InFiles("report")), "new");
    EXPECT_EQ(OriginIn(fTree.Read(InInfo("report"))), fTree.Path("second/report"));
}

TEST_F(TrashTest, LeavesDeeperFoldersWithoutRecords)
{
    fTree.Write("folder/child", "");
    fTree.Write("info/child.trashinfo", "not of a Trash");
    ASSERT_EQ(Trash("folder"), B_OK);

    EXPECT_EQ(BEntry(fTree.Path(InFiles("folder/child")).c_str()).Remove(), B_OK);

    EXPECT_TRUE(fTree.Exists(InInfo("folder")));
}

TEST_F(TrashTest, TakesNoOtherFolderForATrash)
{
    // Named as in a Trash, but nobody's.
    fTree.Write("x/Trash/files/report", "");
    fTree.Write("x/Trash/info/report.trashinfo", "kept");

    EXPECT_EQ(BEntry(fTree.Path("x/Trash/files/report").c_str()).Remove(), B_OK);

    EXPECT_TRUE(fTree.Exists("x/Trash/info/report.trashinfo"));
    const BDirectory folder(fTree.Path("x/Trash/files").c_str());
    EXPECT_FALSE(is_trash_folder(&folder));
}

TEST_F(TrashTest, SaysWhetherItKnowsWhatAFolderIs)
{
    fTree.MakeFolder("other");
    const BDirectory trash(fTree.Path(InFiles("")).c_str());
    const BDirectory other(fTree.Path("other").c_str());
    const BDirectory missing(fTree.Path("missing").c_str());
    bool isTrash = false;

    EXPECT_EQ(is_trash_folder(&trash, &isTrash), B_OK);
    EXPECT_TRUE(isTrash);
    EXPECT_EQ(is_trash_folder(&other, &isTrash), B_OK);
    EXPECT_FALSE(isTrash);
    EXPECT_EQ(is_trash_folder(&missing, &isTrash), B_BAD_VALUE);
}

TEST_F(TrashTest, KnowsWhatLiesInIt)
{
    fTree.Write(InFiles("folder/child"), "");
    const BDirectory files(fTree.Path(InFiles("")).c_str());
    const BDirectory below(fTree.Path(InFiles("folder")).c_str());
    const BEntry child(fTree.Path(InFiles("folder/child")).c_str());
    const BEntry folder(fTree.Path(InFiles("folder")).c_str());
    const BEntry home(fTree.Path("home").c_str());

    EXPECT_TRUE(is_trash_folder(&files));
    EXPECT_FALSE(is_trash_folder(&below));
    EXPECT_TRUE(is_in_trash(&child));
    EXPECT_TRUE(is_in_trash(&folder));
    EXPECT_FALSE(is_in_trash(&home));
}

TEST_F(TrashTest, FindsTheTrashOfAnEntryInTheHomeFolder)
{
    fTree.Write("home/report", "");
    const BEntry entry(fTree.Path("home/report").c_str());
    BPath path;

    ASSERT_EQ(find_trash_for(&entry, &path, false), B_OK);

    EXPECT_EQ(path.Path(), fTree.Path("home/.local/share/Trash/files"));
}

TEST_F(TrashTest, ClaimsANameForACopy)
{
    fTree.Write("from/report", "text");
    const BEntry original(fTree.Path("from/report").c_str());
    const BDirectory trash(fTree.Path(InFiles("")).c_str());
    {
        BTrashClaim claim;
        ASSERT_EQ(claim.SetTo(&trash, &original, "report"), B_OK);
        EXPECT_STREQ(claim.Name(), "report");
        BTrashClaim second;
        EXPECT_EQ(second.SetTo(&trash, &original, "report"), B_FILE_EXISTS);
        EXPECT_EQ(second.Name(), nullptr);
        fTree.Write(InFiles("report"), "copy");
        claim.Keep();
    }

    EXPECT_EQ(OriginIn(fTree.Read(InInfo("report"))), fTree.Path("from/report"));
}

TEST_F(TrashTest, DropsAClaimThatCameToNothing)
{
    fTree.Write("report", "text");
    const BEntry original(fTree.Path("report").c_str());
    const BDirectory trash(fTree.Path(InFiles("")).c_str());
    fTree.Write(InFiles("taken"), "");
    {
        BTrashClaim claim;
        ASSERT_EQ(claim.SetTo(&trash, &original, "report"), B_OK);
        ASSERT_TRUE(fTree.Exists(InInfo("report")));
        BTrashClaim other;
        EXPECT_EQ(other.SetTo(&trash, &original, "taken"), B_FILE_EXISTS);
    }

    EXPECT_FALSE(fTree.Exists(InInfo("report")));
    EXPECT_FALSE(fTree.Exists(InInfo("taken")));
}

TEST_F(TrashTest, ClaimsNothingOutsideATrash)
{
    fTree.Write("report", "text");
    const BEntry original(fTree.Path("report").c_str());
    const BDirectory home(fTree.Path("home").c_str());
    BTrashClaim claim;

    EXPECT_EQ(claim.SetTo(&home, &original, "report"), B_BAD_VALUE);
}
