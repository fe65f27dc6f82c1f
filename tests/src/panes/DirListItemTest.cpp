#include "panes/DirListItem.h"

#include "RowFixture.h"
#include "panes/RowIcons.h"
#include "panes/RowTexts.h"

#include <sys/stat.h>

namespace {

using namespace norvane;

class DirListItemTest : public RowFixture
{
protected:
    std::unique_ptr<DirListItem> Row(const std::string& name, int mode = kLocalMode)
    {
        BEntry entry(fTree.Path(name).c_str());
        return std::make_unique<DirListItem>(&entry, rgb_color{}, false, mode, "%D %R");
    }

    TempTree fTree;
};

TEST_F(DirListItemTest, ShowsAFile)
{
    fTree.Write("a.txt", std::string(1025, 'x'));
    chmod(fTree.Path("a.txt").c_str(), 0644);
    const auto row = Row("a.txt");
    EXPECT_STREQ(row->GetEntryName(), "a.txt");
    EXPECT_STREQ(row->Text(1), "a.txt");
    EXPECT_STREQ(row->Text(2), "1 K");
    EXPECT_STREQ(row->Text(4), "rw-r--r--");
    EXPECT_STREQ(row->Text(0), "");
    EXPECT_STREQ(row->Text(9), "");
    EXPECT_EQ(row->GetSize(), 1025);
    EXPECT_FALSE(row->IsDir());
    EXPECT_STREQ(row->GetRef()->name, "a.txt");
}

TEST_F(DirListItemTest, SizesFollowTheUnits)
{
    fTree.Write("a", std::string(1433, 'x'));
    fTree.MakeFolder("f");
    fTree.MakeFolder("measured");
    const auto file = Row("a");
    const auto folder = Row("f");
    const auto measured = Row("measured");
    measured->SetDirSize(1433 << 10);
    DirListItem remote("r", "1536", "now", "-rw-r--r--");
    DirListItem link("l", "1536", "now", "lrwxrwxrwx");
    DirListItem parent;
    const auto texts = [&] {
        std::string all;
        for (const DirListItem* row :
             {file.get(), folder.get(), measured.get(), &remote, &link, &parent}) {
            all += std::string(row->Text(2)) + "|";
        }
        return all;
    };
    const std::string described = "1 K|[Directory]|1433 K|1 K|[Link]|--|";
    EXPECT_EQ(texts(), described);

    SetSizeUnits(SizeUnits::kReadable);
    EXPECT_EQ(texts(), "1.4 KiB|[Directory]|1.4 MiB|1.5 KiB|[Link]|--|");
    EXPECT_STREQ(remote.Text(3), "now");

    SetSizeUnits(SizeUnits::kKilobytes);
    EXPECT_EQ(texts(), described);
}

TEST_F(DirListItemTest, ShowsAFolder)
{
    fTree.MakeFolder("f");
    const auto row = Row("f");
    EXPECT_TRUE(row->IsDir());
    EXPECT_STREQ(row->Text(2), "[Directory]");
    EXPECT_EQ(row->GetSize(), 0);
    row->SetDirSize(4097);
    EXPECT_STREQ(row->Text(2), "4 K");
}

TEST_F(DirListItemTest, TakesALinkForWhatItPointsTo)
{
    fTree.MakeFolder("f");
    fTree.Write("file", "1234");
    fTree.Link("toFolder", "f");
    fTree.Link("toFile", "file");
    fTree.Link("broken", "nowhere");
    EXPECT_TRUE(Row("toFolder")->IsDir());
    EXPECT_STREQ(Row("toFolder")->Text(2), "[Link]");
    EXPECT_FALSE(Row("toFile")->IsDir());
    EXPECT_STREQ(Row("toFile")->Text(2), "[Link]");
    EXPECT_EQ(Row("toFile")->GetSize(), 0);
    EXPECT_TRUE(Row("broken")->IsDir());
}

TEST_F(DirListItemTest, ShowsOtherNodesWithoutSizeAndIcon)
{
    ASSERT_EQ(mkfifo(fTree.Path("fifo").c_str(), 0600), 0);
    const auto row = Row("fifo");
    EXPECT_TRUE(row->IsDir());
    EXPECT_FALSE(row->IsEnterable());
    EXPECT_STREQ(row->Text(2), "");
    EXPECT_EQ(row->GetBitmap(), nullptr);
}

TEST_F(DirListItemTest, ShowsTheWholePathInQueryResults)
{
    fTree.Write("d/a", "");
    const auto row = Row("d/a", kQueryMode);
    EXPECT_EQ(row->GetEntryName(), fTree.Path("d/a"));
    EXPECT_STREQ(row->GetRef()->name, "a");
    EXPECT_EQ(row->Update("%D"), B_OK);
    EXPECT_STREQ(row->GetEntryName(), "a");
}

TEST_F(DirListItemTest, MakesAParentRow)
{
    for (const bool withEntry : {true, false}) {
        const auto row =
            withEntry ? std::make_unique<DirListItem>(nullptr, rgb_color{}, true, kLocalMode, "%D")
                      : std::make_unique<DirListItem>();
        EXPECT_STREQ(row->GetEntryName(), "..");
        for (int32 column = 2; column <= 4; column++) {
            EXPECT_STREQ(row->Text(column), "--");
        }
        EXPECT_TRUE(row->IsDir());
        EXPECT_TRUE(row->IsParent());
        EXPECT_EQ(row->GetBitmap(), UpArrowIcon());
        EXPECT_EQ(row->GetRef()->name, nullptr);
    }
}

TEST_F(DirListItemTest, TellsRemoteKindsByTheFirstPermission)
{
    const DirListItem folder("d", "4096", "Jan 1", "drwxr-xr-x");
    const DirListItem link("l", "9", "Jan 1", "lrwxrwxrwx");
    const DirListItem file("f", "2147483648", "Jan 1", "-rw-r--r--");
    EXPECT_TRUE(folder.IsDir());
    EXPECT_STREQ(folder.Text(2), "[Directory]");
    EXPECT_EQ(folder.GetBitmap(), RemoteFolderIcon());
    EXPECT_FALSE(link.IsDir());
    EXPECT_STREQ(link.Text(2), "[Link]");
    EXPECT_EQ(link.GetBitmap(), RemoteFileIcon());
    EXPECT_FALSE(file.IsDir());
    EXPECT_STREQ(file.Text(2), "2097152 K");
    EXPECT_STREQ(file.Text(3), "Jan 1");
    EXPECT_STREQ(file.Text(4), "-rw-r--r--");
    EXPECT_EQ(file.GetSize(), 2147483648);
}

TEST_F(DirListItemTest, IsRebuiltInPlace)
{
    fTree.Write("a", "123");
    fTree.MakeFolder("b");
    const auto row = Row("a");
    EXPECT_STREQ(row->Text(2), "3 Bytes");
    fTree.Write("a", "12345");
    EXPECT_EQ(row->Update("%Y"), B_OK);
    EXPECT_STREQ(row->Text(2), "5 Bytes");
    EXPECT_EQ(std::string(row->Text(3)).size(), 4u);
    entry_ref other;
    ASSERT_EQ(get_ref_for_path(fTree.Path("b").c_str(), &other), B_OK);
    EXPECT_EQ(row->Update(&other, "%Y"), B_OK);
    EXPECT_STREQ(row->GetEntryName(), "b");
    EXPECT_TRUE(row->IsDir());
}

TEST_F(DirListItemTest, StaysAsItWasWhenTheEntryIsGone)
{
    fTree.Write("a", "123");
    const auto row = Row("a");
    fTree.Remove("a");
    EXPECT_NE(row->Update("%D"), B_OK);
    EXPECT_STREQ(row->Text(1), "a");
    EXPECT_STREQ(row->Text(2), "3 Bytes");
}

TEST_F(DirListItemTest, SaysWhenPermissionsCannotBeRead)
{
    const auto row = Row("missing");
    EXPECT_STREQ(row->Text(4), "n/a");
}

TEST_F(DirListItemTest, ReturnsPermissionsToTheCaller)
{
    const std::unique_ptr<char[]> text(DirListItem::GetStrPermissions(0750));
    EXPECT_STREQ(text.get(), "rwxr-x---");
}

TEST_F(DirListItemTest, StaysSmall)
{
    EXPECT_LE(sizeof(DirListItem), 232u);
}

} // namespace
