#include "TrashFixture.h"

#include <Path.h>
#include <TrashRecord.h>

namespace {

/// Where an entry of a Trash was before.
class TrashOriginTest : public TrashTest
{
protected:
    /// The path, or what was said instead, as text.
    std::string OriginAt(const std::string& path)
    {
        BPath origin;
        const BEntry entry(fTree.Path(path).c_str());
        const status_t status = find_trash_origin(&entry, &origin);
        return status == B_OK                  ? std::string(origin.Path())
               : status == B_ENTRY_NOT_FOUND   ? "(none)"
               : status == B_MISMATCHED_VALUES ? "(no place)"
               : status == B_BAD_VALUE         ? "(no Trash)"
                                               : "(failed)";
    }
    /// The same of an entry with such a record.
    std::string OriginOf(const std::string& record)
    {
        fTree.Write(InFiles("made"), "");
        fTree.Write(InInfo("made"), record);
        return OriginAt(InFiles("made"));
    }
};

TEST_F(TrashOriginTest, IsWhereItWasByteForByte)
{
    for (const char* name : {"plain", "new\nline", "bad \xff %41", "\xe2\x80\xae"}) {
        fTree.Write(std::string("from/") + name, "");
        ASSERT_EQ(Trash(std::string("from/") + name), B_OK);
        EXPECT_EQ(OriginAt(InFiles(name)), fTree.Path(std::string("from/") + name));
    }
}

TEST_F(TrashOriginTest, OfALongNameItIsTheWholeOne)
{
    const std::string name(255, 'n');
    fTree.Write("from/" + name, "");
    ASSERT_EQ(Trash("from/" + name), B_OK);

    EXPECT_EQ(OriginAt(InFiles(fTrashedName)), fTree.Path("from/" + name));
}

TEST_F(TrashOriginTest, ReadsWhatOtherProgramsWrite)
{
    EXPECT_EQ(OriginOf("[Trash Info]\nPath=/a%2fb\nDeletionDate=x\n"), "/a/b");
    EXPECT_EQ(OriginOf("[Trash Info]\nDeletionDate=x\nPath=/a"), "/a");
    EXPECT_EQ(OriginOf("[Trash Info]\nPath=/first\nPath=/second\n"), "/first");
    EXPECT_EQ(OriginOf("[Trash Info]\nPath=/unescaped name\n"), "/unescaped name");
}

TEST_F(TrashOriginTest, BelievesNoRecordThatNamesNoPlace)
{
    for (const char* record : {"", "Path=/a\n", "[Other]\nPath=/a\n", "[Trash Info]\nPath=\n",
                               "[Trash Info]\nPath=/a%\n", "[Trash Info]\nPath=/a%4\n",
                               "[Trash Info]\nPath=/a%zz\n", "[Trash Info]\nPath=/a%00b\n",
                               "[Trash Info]\nPath=relative\n", "[Trash Info]\nPath=/a/../b\n",
                               "[Trash Info]\nPath=/a/%2e%2e\n", "[Trash Info]\nPath=/a/\n"}) {
        EXPECT_EQ(OriginOf(record), "(no place)") << record;
    }
}

TEST_F(TrashOriginTest, WithoutARecordThereIsNone)
{
    fTree.Write(InFiles("lone"), "");

    EXPECT_EQ(OriginAt(InFiles("lone")), "(none)");
}

TEST_F(TrashOriginTest, BelowAndOutsideATrashThereIsNone)
{
    fTree.Write("from/tree/inside", "");
    ASSERT_EQ(Trash("from/tree"), B_OK);

    EXPECT_EQ(OriginAt(InFiles("tree/inside")), "(no Trash)");
    EXPECT_EQ(OriginAt("from"), "(no Trash)");
}

} // namespace
