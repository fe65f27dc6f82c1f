#include "properties/PropertiesReading.h"

#include "TempTree.h"
#include "testing/Driver.h"

#include <Directory.h>
#include <Errors.h>

#include <gtest/gtest.h>

namespace {

using namespace norvane;

class PropertiesReadingTest : public testing::Test
{
protected:
    entry_ref Ref(const char* name) const
    {
        entry_ref ref;
        EXPECT_EQ(get_ref_for_path(fTree.Path(name).c_str(), &ref), B_OK);
        return ref;
    }
    ReadProperties Read(const PropertiesOrder& order)
    {
        PropertiesReading reading{BMessenger()};
        reading.Read(order);
        return reading.Look();
    }

    TempTree fTree;
};

TEST_F(PropertiesReadingTest, CountsWhatIsInAFolder)
{
    fTree.Write("top/a", "123");
    fTree.Write("top/sub/b", "4567");
    fTree.Write("outside/c", "many bytes");
    fTree.Link("top/link", "../outside");

    const ReadProperties read = Read({{Ref("top")}, ""});

    EXPECT_TRUE(read.isRead);
    EXPECT_TRUE(read.isCounted);
    EXPECT_EQ(read.status, B_OK);
    EXPECT_EQ(read.contents.Text(), "2 files, 1 folder, 1 link");
    EXPECT_EQ(read.contents.bytes, 7);
    EXPECT_EQ(read.chosen.Text(), "1 folder");
    ASSERT_NE(read.facts, nullptr);
    EXPECT_EQ(read.facts->kind, "Folder");
    EXPECT_NE(read.icon, nullptr);
}

TEST_F(PropertiesReadingTest, SeveralAreMixedByTheirBits)
{
    fTree.Write("a", "123");
    fTree.Write("b", "");
    fTree.Link("link", "a");
    ASSERT_EQ(chmod(fTree.Path("a").c_str(), 0644), 0);
    ASSERT_EQ(chmod(fTree.Path("b").c_str(), 0600), 0);

    const ReadProperties read = Read({{Ref("link"), Ref("a"), Ref("b")}, ""});

    EXPECT_EQ(read.subjects->size(), 3u);
    EXPECT_EQ(read.mix.set, 0600u);
    EXPECT_EQ(read.mix.mixed, 0044u);
    EXPECT_EQ(read.chosen.Text(), "2 files, 1 link");
    EXPECT_EQ(read.facts, nullptr);
}

TEST_F(PropertiesReadingTest, WhatIsGoneIsCounted)
{
    fTree.Write("a", "123");
    fTree.Write("b", "");
    const PropertiesOrder order = {{Ref("a"), Ref("b")}, ""};
    fTree.Remove("b");

    const ReadProperties read = Read(order);

    EXPECT_EQ(read.subjects->size(), 1u);
    EXPECT_EQ(read.chosen.unreadable, 1);
    EXPECT_EQ(read.status, B_ENTRY_NOT_FOUND);
}

TEST_F(PropertiesReadingTest, AFolderIsReadByItsPath)
{
    fTree.Write("top/a", "123");

    EXPECT_EQ(Read({{}, fTree.Path("top")}).contents.files, 1);
    EXPECT_EQ(Read({{}, fTree.Path("none/none")}).status, B_ENTRY_NOT_FOUND);
}

TEST_F(PropertiesReadingTest, CancelledItCountsNothingMore)
{
    fTree.Write("top/a", "123");
    PropertiesReading reading{BMessenger()};
    reading.Cancel();
    reading.Read({{Ref("top")}, ""});

    EXPECT_EQ(reading.Look().contents.files, 0);
}

TEST_F(PropertiesReadingTest, OpensOnlyTheFolderShown)
{
    fTree.MakeFolder("top");
    fTree.MakeFolder("other");
    const ReadProperties read = Read({{Ref("top")}, ""});
    const Subject subject = read.subjects->front();
    BDirectory folder;

    EXPECT_EQ(OpenSubject(subject, &folder), B_OK);
    fTree.Remove("top");
    fTree.Link("top", "other");
    EXPECT_NE(OpenSubject(subject, &folder), B_OK);
    fTree.Remove("top");
    fTree.MakeFolder("new");
    ASSERT_EQ(rename(fTree.Path("other").c_str(), fTree.Path("top").c_str()), 0);
    EXPECT_EQ(OpenSubject(subject, &folder), B_ENTRY_NOT_FOUND);
}

TEST_F(PropertiesReadingTest, TheTopOfAllFoldersIsAnEntryToo)
{
    entry_ref ref;
    ASSERT_EQ(get_ref_for_path("/", &ref), B_OK);
    Subject subject;
    struct stat record;
    BDirectory folder;

    ASSERT_EQ(LookAt(ref, &subject, &record), B_OK);
    EXPECT_TRUE(S_ISDIR(record.st_mode));
    EXPECT_EQ(OpenSubject(subject, &folder), B_OK);
}

TEST_F(PropertiesReadingTest, ANumberThatIsGivenAgainIsAnotherNode)
{
    fTree.Write("a", "");
    Subject shown;
    struct stat record;
    ASSERT_EQ(LookAt(Ref("a"), &shown, &record), B_OK);
    EXPECT_TRUE(IsSame(shown, BNode(&shown.ref)));

    Subject other = shown;
    other.birth++;
    EXPECT_FALSE(IsSame(other, BNode(&shown.ref)));
    other = shown;
    other.mode = S_IFLNK | 0777;
    EXPECT_FALSE(IsSame(other, BNode(&shown.ref)));
    EXPECT_FALSE(IsSame(shown, BNode()));
}

} // namespace
