#include "properties/EntryFacts.h"

#include "AccessList.h"
#include "TempTree.h"
#include "properties/Tally.h"

#include <Errors.h>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

namespace {

using namespace norvane;

class EntryFactsTest : public testing::Test
{
protected:
    EntryFacts Facts(const std::string& name)
    {
        entry_ref ref;
        EXPECT_EQ(get_ref_for_path(fTree.Path(name).c_str(), &ref), B_OK);
        EntryFacts facts;
        EXPECT_EQ(ReadFacts(ref, &facts), B_OK);
        return facts;
    }
    /// What is said of `label`; "(none)" when there is no such line.
    static std::string Line(const std::vector<Fact>& lines, const char* label)
    {
        for (const Fact& fact : lines) {
            if (fact.label == label) {
                return fact.value;
            }
        }
        return "(none)";
    }
    static std::string In(const EntryFacts& facts, const char* label)
    {
        return Line(LinesOf(facts, nullptr, true), label);
    }

    TempTree fTree;
};

TEST_F(EntryFactsTest, TellsOfAFile)
{
    fTree.Write("a.txt", std::string(5000, 'x'));
    const timespec times[2] = {{86400 * 365, 0}, {86400 * 366, 0}};
    ASSERT_EQ(utimensat(AT_FDCWD, fTree.Path("a.txt").c_str(), times, 0), 0);
    struct stat record;
    ASSERT_EQ(lstat(fTree.Path("a.txt").c_str(), &record), 0);

    const EntryFacts facts = Facts("a.txt");

    EXPECT_NE(facts.kind.find("(text/plain)"), std::string::npos) << facts.kind;
    EXPECT_EQ(In(facts, "Location"), fTree.Path());
    EXPECT_EQ(In(facts, "Size"), "5,000 bytes (4.9 KiB)");
    EXPECT_EQ(In(facts, "Size on disk"), SizeInFull(record.st_blocks * 512));
    EXPECT_EQ(In(facts, "Accessed").substr(0, 8), "1971-01-");
    EXPECT_EQ(In(facts, "Modified").substr(0, 8), "1971-01-");
    EXPECT_NE(In(facts, "Accessed"), In(facts, "Modified"));
    EXPECT_EQ(In(facts, "Hard links"), "1");
    EXPECT_EQ(In(facts, "Node number"), std::to_string(record.st_ino));
    EXPECT_NE(In(facts, "Owner").find("(" + std::to_string(getuid()) + ")"), std::string::npos);
    EXPECT_NE(In(facts, "Volume").find(" on "), std::string::npos);
    EXPECT_EQ(In(facts, "Contents"), "(none)");
}

TEST_F(EntryFactsTest, TellsWhatIsInAFolder)
{
    fTree.MakeFolder("folder");
    Tally contents;
    contents.files = 2;
    contents.bytes = 3000;
    const EntryFacts facts = Facts("folder");

    EXPECT_EQ(facts.kind, "Folder");
    EXPECT_EQ(Line(LinesOf(facts, &contents, true), "Contents"), "2 files");
    EXPECT_EQ(Line(LinesOf(facts, &contents, false), "Contents"), "2 files so far");
    EXPECT_EQ(Line(LinesOf(facts, &contents, true), "Size"), "3,000 bytes (2.9 KiB)");
    EXPECT_EQ(Line(LinesOf(facts, &contents, true), "Not readable"), "(none)");
    contents.unreadable = 1;
    EXPECT_EQ(Line(LinesOf(facts, &contents, true), "Not readable"), "1 entry");
}

TEST_F(EntryFactsTest, TellsWhereALinkLeads)
{
    fTree.MakeFolder("folder");
    fTree.Write("file", "");
    fTree.Link("to folder", "folder");
    fTree.Link("to file", "./file");
    fTree.Link("to nothing", "gone/nowhere");
    fTree.Link("to itself", "to itself");

    EXPECT_EQ(In(Facts("to folder"), "Leads to"), "folder");
    EXPECT_EQ(In(Facts("to folder"), "Which is"), "a folder");
    EXPECT_EQ(In(Facts("to file"), "Which is"), "a file");
    EXPECT_EQ(In(Facts("to nothing"), "Leads to"), "gone/nowhere");
    EXPECT_EQ(In(Facts("to nothing"), "Which is"), "nothing that is there");
    EXPECT_EQ(In(Facts("to itself"), "Which is"), "nothing that is there");
    EXPECT_EQ(Facts("to file").kind, "Link");
}

TEST_F(EntryFactsTest, NamesOfAnyBytesAreRead)
{
    for (const std::string& name : {std::string("line\nbreak"), std::string("\xff\xfe"),
                                    std::string("\xe2\x80\xae.txt"), std::string(255, 'n')}) {
        fTree.Write(name, "12");
        EXPECT_EQ(In(Facts(name), "Size"), "2 bytes") << name;
    }
}

TEST_F(EntryFactsTest, ShowsListsAndAttributes)
{
    fTree.Write("file", "");
    const std::string path = fTree.Path("file");
    const std::string value(300, 'v');
    if (!AccessList{.users = {{70000, 5}}}.GiveTo(path) ||
        setxattr(path.c_str(), "user.long", value.data(), value.size(), 0) != 0 ||
        setxattr(path.c_str(), "user.bytes", "\0\1", 2, 0) != 0) {
        GTEST_SKIP() << "the file system of temporary files keeps no lists or attributes";
    }

    const std::vector<Fact> more = Facts("file").more;

    EXPECT_EQ(Line(more, "Access list"), "rw-  Owner");
    EXPECT_EQ(more[1], (Fact{"", "r-x  User 70000"}));
    EXPECT_EQ(Line(more, "Attributes"), "user.bytes, 2 bytes");
    EXPECT_EQ(more.back().value, "user.long, 300 bytes: " + std::string(256, 'v') + "...");
}

TEST_F(EntryFactsTest, AnEntryThatIsGoneIsAnError)
{
    fTree.Write("file", "");
    entry_ref ref;
    ASSERT_EQ(get_ref_for_path(fTree.Path("file").c_str(), &ref), B_OK);
    fTree.Remove("file");
    EntryFacts facts;
    facts.kind = "before";

    EXPECT_EQ(ReadFacts(ref, &facts), B_ENTRY_NOT_FOUND);
    EXPECT_EQ(facts.kind, "before");
}

TEST_F(EntryFactsTest, SeveralAreSummedUp)
{
    Tally chosen;
    chosen.files = 2;
    chosen.bytes = 100;
    Tally contents;
    contents.bytes = 20;

    EXPECT_EQ(Line(LinesOf(chosen, contents, true), "Contents"), "(none)");
    chosen.folders = 1;
    chosen.unreadable = 3;
    const std::vector<Fact> lines = LinesOf(chosen, contents, true);
    EXPECT_EQ(Line(lines, "Chosen"), "2 files, 1 folder");
    EXPECT_EQ(Line(lines, "Contents"), "nothing");
    EXPECT_EQ(Line(lines, "Size"), "120 bytes");
    EXPECT_EQ(Line(lines, "Gone or not readable"), "3 entries");
}

} // namespace
