#include "TransferFixture.h"

#include <sys/stat.h>

namespace norvane {

class DownloadTest : public TransferFixture
{
};

TEST_F(DownloadTest, BringsAFileByteForByte)
{
    const std::string bytes = Bytes(300'000);
    fRemote.AddFile("/pub/song", bytes);
    Download({"song"});
    EXPECT_EQ(fTree.Read("to/song"), bytes);
    EXPECT_EQ(fTree.List("to"), "song\n");
    EXPECT_EQ(Problems(), "");
    EXPECT_TRUE(HasSent("QUIT"));
}

TEST_F(DownloadTest, ActiveModeDoesTheSame)
{
    fIsPassive = false;
    fRemote.AddFile("/pub/song", "la");
    fRemote.AddFile("/pub/album/b", "li");
    Download({"song"}, {"album"});
    EXPECT_EQ(fTree.Read("to/song"), "la");
    EXPECT_EQ(fTree.Read("to/album/b"), "li");
    EXPECT_EQ(fServer->CommandLog().find("PASV"), std::string::npos);
}

TEST_F(DownloadTest, BringsAnEmptyFile)
{
    fRemote.AddFile("/pub/empty", "");
    Download({"empty"});
    EXPECT_EQ(fTree.Read("to/empty"), "");
    EXPECT_EQ(Problems(), "");
}

TEST_F(DownloadTest, ANewFileIsAsOpenAsTheUmaskLetsIt)
{
    const mode_t before = umask(027);
    fRemote.AddFile("/pub/song", "la");
    Download({"song"});
    umask(before);
    struct stat record = {};
    ASSERT_EQ(lstat(fTree.Path("to/song").c_str(), &record), 0);
    EXPECT_EQ(record.st_mode & 07777, 0640u);
}

TEST_F(DownloadTest, NamesAreBytes)
{
    const std::vector<std::string> names = {
        "two words", " leading", "trailing ", "Latin \xe4\xf6", "UTF \xc3\xa4",
        "quote\"s'", "-rf",      "tab\there", "a -> b",         "*?[x]",
        "\\back",    "%41",      "...",       ".hidden"};
    for (const std::string& name : names) {
        fRemote.AddFile("/pub/album/" + name, "of " + name);
    }
    Download({}, {"album"});
    for (const std::string& name : names) {
        EXPECT_EQ(fTree.Read("to/album/" + name), "of " + name);
    }
    EXPECT_EQ(Problems(), "");
}

TEST_F(DownloadTest, BringsATree)
{
    fRemote.AddFile("/pub/album/one/a", "1");
    fRemote.AddFile("/pub/album/one/deep/b", "2");
    fRemote.AddFile("/pub/album/two/c", "3");
    fRemote.AddFolder("/pub/album/empty");
    fRemote.AddFile("/pub/after", "4");
    Download({}, {"album", "nothing here"});
    EXPECT_EQ(fTree.Read("to/album/one/a"), "1");
    EXPECT_EQ(fTree.Read("to/album/one/deep/b"), "2");
    EXPECT_EQ(fTree.Read("to/album/two/c"), "3");
    EXPECT_TRUE(fTree.IsFolder("to/album/empty"));
    EXPECT_EQ(fTree.List("to"), "album\n");
    EXPECT_EQ(Problems(), "nothing here: the server says \"550 No such folder\"\n");
}

TEST_F(DownloadTest, MergesIntoAFolderThatIsThere)
{
    fRemote.AddFile("/pub/album/new", "new");
    fTree.Write("to/album/old", "old");
    Download({}, {"album"});
    EXPECT_EQ(fTree.List("to/album"), "new\nold\n");
    EXPECT_EQ(fTree.Read("to/album/old"), "old");
    EXPECT_TRUE(fUI.questions.empty());
}

TEST_F(DownloadTest, AFolderWithOneEntryIsListed)
{
    fRemote.AddFile("/pub/album/only", "1");
    FtpTree::Habits habits;
    habits.isTotalLineSent = false;
    fRemote.SetHabits(habits);
    Download({}, {"album"});
    EXPECT_EQ(fTree.Read("to/album/only"), "1");
}

TEST_F(DownloadTest, ALinkIsCalledByItsOwnName)
{
    fRemote.AddFile("/pub/album/target", "1");
    fRemote.AddLink("/pub/album/link", "target");
    Download({}, {"album"});
    EXPECT_TRUE(HasSent("RETR link"));
    EXPECT_EQ(fTree.Read("to/album/target"), "1");
}

TEST_F(DownloadTest, WhatIsRefusedLeavesNothing)
{
    fRemote.AddFile("/pub/b", "2");
    Download({"a", "b"});
    EXPECT_EQ(fTree.List("to"), "b\n");
    EXPECT_EQ(Problems(), "a: the server says \"550 No such file\"\n");
    ASSERT_EQ(fUI.summaries.size(), 1u);
}

TEST_F(DownloadTest, TellsHowFarItIs)
{
    fRemote.AddFile("/pub/a", Bytes(100'000));
    fRemote.AddFile("/pub/b", "12");
    BMessage request = DownloadRequest({"a", "b"});
    AddListed(&request, Listed("a", "100000", "Jan  5  2020"));
    AddListed(&request, Listed("b", "2", "Jan  5  2020"));
    Run(request);
    EXPECT_EQ(fUI.size.kind, OperationSize::Kind::kDownload);
    EXPECT_EQ(fUI.size.items, 2u);
    EXPECT_EQ(fUI.size.bytes, 100'002);
    ASSERT_GE(fUI.transfers.size(), 3u);
    const TransferStep& first = fUI.transfers.front();
    EXPECT_TRUE(first.isNew);
    EXPECT_EQ(first.from, "/pub");
    EXPECT_EQ(first.to, fTree.Path("to"));
    EXPECT_EQ(first.name, "a");
    const TransferStep& last = fUI.transfers.back();
    EXPECT_EQ(last.name, "b");
    EXPECT_EQ(last.percent, 100);
    EXPECT_EQ(last.bytes, 2);
    EXPECT_EQ(last.baseBytes, 100'000);
}

TEST_F(DownloadTest, RemembersWhatItMade)
{
    fRemote.AddFile("/pub/a", "1");
    fRemote.AddFile("/pub/album/b", "2");
    const auto operation =
        MakeTransfer(DownloadRequest({"a"}, {"album", "gone"}), fTree.Path("to").c_str(), fUI);
    operation->Run();
    const auto& items = operation->Results().Items();
    ASSERT_EQ(items.size(), 3u);
    EXPECT_EQ(items[0].ending, ItemResult::Ending::kWhole);
    ASSERT_EQ(items[0].changes.size(), 1u);
    EXPECT_EQ(items[0].changes[0].name, "a");
    ASSERT_EQ(items[1].changes.size(), 1u) << "the topmost alone";
    EXPECT_EQ(items[1].changes[0].name, "album");
    EXPECT_EQ(items[2].ending, ItemResult::Ending::kPartly);
}

} // namespace norvane
