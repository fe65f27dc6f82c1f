#include <Directory.h>
#include <Entry.h>

#include <TempTree.h>
#include <gtest/gtest.h>
#include <memory>
#include <string>

namespace {

class DirectoryOpeningTest : public testing::Test
{
protected:
    DirectoryOpeningTest()
    {
        fTree.MakeFolder("folder");
        fTree.Write("folder/a", "");
        fTree.Write("folder/b", "");
        fTree.Link("folder/link", "a");
    }

    std::string Path() { return fTree.Path("folder"); }

    TempTree fTree;
};

int32 Count(BDirectory folder)
{
    return folder.InitCheck() == B_OK ? folder.CountEntries() : folder.InitCheck();
}

} // namespace

TEST_F(DirectoryOpeningTest, OpensByRefEntryAndFromAFolder)
{
    const BEntry entry(Path().c_str());
    entry_ref ref;
    ASSERT_EQ(entry.GetRef(&ref), B_OK);
    const BDirectory above(fTree.Path().c_str());

    EXPECT_EQ(Count(BDirectory(&ref)), 3);
    EXPECT_EQ(Count(BDirectory(&entry)), 3);
    EXPECT_EQ(Count(BDirectory(&above, "folder")), 3);
    EXPECT_EQ(Count(BDirectory(&above, "none")), B_ENTRY_NOT_FOUND);
    EXPECT_EQ(Count(BDirectory(&above, "folder/a")), B_NOT_A_DIRECTORY);
    EXPECT_EQ(Count(BDirectory(static_cast<const BEntry*>(nullptr))), B_BAD_VALUE);
}

TEST_F(DirectoryOpeningTest, CopyBeginsItsListingAnew)
{
    auto folder = std::make_unique<BDirectory>(Path().c_str());
    BEntry entry;
    ASSERT_EQ(folder->GetNextEntry(&entry), B_OK);
    ASSERT_STREQ(entry.Name(), "a");

    BDirectory copy(*folder);
    folder.reset();

    EXPECT_EQ(copy.GetNextEntry(&entry), B_OK);
    EXPECT_STREQ(entry.Name(), "a");
    EXPECT_EQ(BDirectory(BDirectory()).InitCheck(), B_NO_INIT);
}

TEST_F(DirectoryOpeningTest, FindsWhatIsThere)
{
    const BDirectory folder(Path().c_str());
    BEntry entry;

    EXPECT_EQ(folder.FindEntry("a", &entry), B_OK);
    EXPECT_STREQ(entry.Name(), "a");
    EXPECT_EQ(folder.FindEntry("link", &entry), B_OK);
    EXPECT_STREQ(entry.Name(), "link");
    EXPECT_EQ(folder.FindEntry("link", &entry, true), B_OK);
    EXPECT_STREQ(entry.Name(), "a");

    EXPECT_EQ(folder.FindEntry("none", &entry), B_ENTRY_NOT_FOUND);
    EXPECT_EQ(entry.InitCheck(), B_NO_INIT);
    EXPECT_EQ(folder.FindEntry(nullptr, &entry), B_BAD_VALUE);
    EXPECT_EQ(folder.FindEntry("a", nullptr), B_BAD_VALUE);
    EXPECT_EQ(BDirectory().FindEntry("a", &entry), B_NO_INIT);
}

TEST_F(DirectoryOpeningTest, KnowsTheTopOfAVolume)
{
    EXPECT_TRUE(BDirectory("/").IsRootDirectory());
    EXPECT_TRUE(BDirectory("/proc").IsRootDirectory());
    EXPECT_FALSE(BDirectory(Path().c_str()).IsRootDirectory());
    EXPECT_FALSE(BDirectory().IsRootDirectory());
}
