#include "panes/FolderSource.h"

#include "MessageCodes.h"

#include "SourceFixture.h"

#include <sys/stat.h>

namespace {

using namespace norvane;
using Act = DropMeaning::Act;

class FolderSourceTest : public SourceFixture
{
protected:
    void SetUp() override
    {
        fTree.MakeFolder("shown/below");
        fTree.Write("shown/file", "12");
        fTree.Link("shown/link", "below");
    }

    Act MeaningAt(const std::string& path, const BMessage& dropped,
                  const DirListItem* onto = nullptr) const
    {
        return FolderSource(path).MeaningOf(dropped, onto).act;
    }
};

TEST_F(FolderSourceTest, HandsItsRowsOverInTheListingsOrder)
{
    FolderSource source(fTree.Path("shown"));
    EXPECT_EQ(Open(source), B_OK);
    EXPECT_EQ(fOpened, &source);
    EXPECT_EQ(Names(), ".. below link file ");
    EXPECT_EQ(fCounted, 4);
    EXPECT_EQ(fRead, 3);
}

TEST_F(FolderSourceTest, NamesTheFolderToFollowOnceItIsOpen)
{
    FolderSource source(fTree.Path("shown"));
    EXPECT_FALSE(source.Folder().has_value());
    EXPECT_EQ(Open(source), B_OK);
    struct stat st = {};
    ASSERT_EQ(stat(fTree.Path("shown").c_str(), &st), 0);
    ASSERT_TRUE(source.Folder().has_value());
    EXPECT_EQ(source.Folder()->node, node_ref(st.st_dev, st.st_ino));
    EXPECT_EQ(source.Folder()->inside.directory, st.st_ino);
}

TEST_F(FolderSourceTest, TellsNobodyOfAFolderThatCannotBeOpened)
{
    FolderSource missing(fTree.Path("missing"));
    EXPECT_EQ(Open(missing), B_ENTRY_NOT_FOUND);
    EXPECT_EQ(fOpened, nullptr);
    EXPECT_EQ(missing.Complaint(B_ENTRY_NOT_FOUND), "");
    FolderSource file(fTree.Path("shown/file"));
    EXPECT_EQ(Open(file), B_NOT_A_DIRECTORY);
    EXPECT_EQ(file.Complaint(B_NOT_A_DIRECTORY), "The directory, " + fTree.Path("shown/file") +
                                                     ", is not valid.\nThe volume may not be "
                                                     "mounted.");
    EXPECT_EQ(FolderSource("/a\nb").Complaint(B_IO_ERROR),
              "The directory, /a\u20390A\u203Ab, cannot be read.");
    EXPECT_EQ(file.Complaint(B_PERMISSION_DENIED),
              "The directory, " + fTree.Path("shown/file") + ", cannot be read.");
}

TEST_F(FolderSourceTest, LeadsUpAndDown)
{
    FolderSource source(fTree.Path("shown"));
    ASSERT_EQ(Open(source), B_OK);
    EXPECT_EQ(source.Up()->LocalFolder(), fTree.Path());
    EXPECT_EQ(source.NameAbove(), "shown");
    EXPECT_EQ(source.Into(*Row("below"))->LocalFolder(), fTree.Path("shown/below"));
    EXPECT_EQ(source.Into(*Row("link"))->LocalFolder(), fTree.Path("shown/link"));
    EXPECT_EQ(source.Into(*Row("file")), nullptr);
    EXPECT_EQ(source.GoTo("/there")->LocalFolder(), "/there");
    EXPECT_EQ(source.Again()->LocalFolder(), fTree.Path("shown"));
}

TEST_F(FolderSourceTest, LeadsNowhereAboveTheRoot)
{
    EXPECT_EQ(FolderSource("/").Up(), nullptr);
    EXPECT_EQ(FolderSource("/").NameAbove(), "");
    EXPECT_EQ(FolderSource("/boot").Up()->LocalFolder(), "/");
}

TEST_F(FolderSourceTest, MakesAndRenamesEntriesButReplacesNone)
{
    FolderSource source(fTree.Path("shown"));
    ASSERT_EQ(Open(source), B_OK);
    const FolderWork make = source.MakingFolder();
    ASSERT_TRUE(make);
    EXPECT_EQ(make("made"), B_OK);
    EXPECT_EQ(make("file"), B_FILE_EXISTS);
    EXPECT_EQ(source.Renaming(*Row("file"), "made")(), B_FILE_EXISTS);
    EXPECT_EQ(source.Renaming(*Row("file"), "renamed")(), B_OK);
    EXPECT_EQ(fTree.List("shown"), "below\nlink\nmade\nrenamed\n");
}

TEST_F(FolderSourceTest, LeavesDeletingToAnOperation)
{
    FolderSource source(fTree.Path("shown"));
    ASSERT_EQ(Open(source), B_OK);
    EXPECT_FALSE(source.DeletesForGood());
    const std::optional<OperationRequest> request =
        source.Delete({Row("file"), Row("below")}, false);
    ASSERT_TRUE(request.has_value());
    EXPECT_EQ(request->title, "Delete");
    EXPECT_EQ(request->path, fTree.Path("shown"));
    EXPECT_EQ(request->message->what, 606u);
    entry_ref ref;
    EXPECT_EQ(request->message->FindRef("refs", 1, &ref), B_OK);
    EXPECT_STREQ(ref.name, "below");
    for (const bool isForGood : {false, true}) {
        bool isSaid = !isForGood;
        const auto said = source.Delete({Row("file")}, isForGood);
        EXPECT_EQ(said->message->FindBool(kForGood, &isSaid), B_OK);
        EXPECT_EQ(isSaid, isForGood) << "the request says what was agreed to";
    }
}

TEST_F(FolderSourceTest, CarriesRefsAndWhereTheyComeFrom)
{
    FolderSource source(fTree.Path("shown"));
    ASSERT_EQ(Open(source), B_OK);
    const std::unique_ptr<BMessage> message = source.MessageFor({Row("file")});
    EXPECT_EQ(message->what, static_cast<uint32>('DATA'));
    entry_ref ref;
    EXPECT_EQ(message->FindRef("refs", 0, &ref), B_OK);
    EXPECT_STREQ(ref.name, "file");
    EXPECT_NE(message->FindRef("refs", 1, &ref), B_OK);
    EXPECT_STREQ(message->GetString("From", ""), fTree.Path("shown").c_str());
}

TEST_F(FolderSourceTest, PassesMessagesWithoutEntriesOn)
{
    EXPECT_EQ(MeaningAt("/a", Drop("/a", false)), Act::kPassOn);
}

TEST_F(FolderSourceTest, IgnoresEntriesOfItsOwnFolder)
{
    EXPECT_EQ(MeaningAt("/a", Drop("/a")), Act::kIgnore);
    EXPECT_EQ(MeaningAt("/", Drop("/")), Act::kIgnore);
}

TEST_F(FolderSourceTest, RefusesEntriesForTheRoot)
{
    EXPECT_EQ(MeaningAt("/", Drop("/a")), Act::kRefuse);
    EXPECT_EQ(MeaningAt("/", Drop("")), Act::kRefuse);
    EXPECT_STREQ(FolderSource("/").MeaningOf(Drop(""), nullptr).title, "Warning");
}

TEST_F(FolderSourceTest, CopiesAllOtherEntriesHere)
{
    EXPECT_EQ(MeaningAt("/b", Drop("")), Act::kOperate);
    const DropMeaning meaning = FolderSource("/b").MeaningOf(Drop("/a"), nullptr);
    EXPECT_EQ(meaning.act, Act::kOperate);
    EXPECT_EQ(meaning.operation.title, "Copy");
    EXPECT_EQ(meaning.operation.path, "/b");
    EXPECT_STREQ(meaning.operation.message->GetString("From", ""), "/a");
}

TEST_F(FolderSourceTest, AFoldersRowStandsForThatFolder)
{
    const std::string shown = fTree.Path("shown");
    FolderSource source(shown);
    ASSERT_EQ(Open(source), B_OK);
    EXPECT_EQ(source.MeaningOf(Drop(shown), Row("below")).operation.path, shown + "/below");
    EXPECT_EQ(MeaningAt(shown, Drop(shown + "/below"), Row("below")), Act::kIgnore);
    EXPECT_EQ(MeaningAt("/", Drop("/a"), Row("below")), Act::kOperate);
    EXPECT_EQ(MeaningAt(shown, Drop(shown), Row("file")), Act::kIgnore);
    EXPECT_EQ(MeaningAt(shown, Drop(shown), Row("..")), Act::kIgnore);
}

TEST_F(FolderSourceTest, NamesItselfAndItsRows)
{
    FolderSource source(fTree.Path("shown"));
    ASSERT_EQ(Open(source), B_OK);
    EXPECT_EQ(source.Mode(), kLocalMode);
    EXPECT_EQ(source.HeaderText(), fTree.Path("shown"));
    EXPECT_EQ(source.PathOf(*Row("below")), fTree.Path("shown/below"));
    EXPECT_EQ(FolderSource("/").PathOf(*Row("below")), "//below");
    EXPECT_EQ(source.FooterText({1, 1024}, {3, 4096}), "1 of 4k in 1 of 3 files selected");
}

} // namespace
