#include <Query.h>

#include "storage/QueryPredicate.h"

#include <Entry.h>
#include <Path.h>
#include <String.h>
#include <Volume.h>

#include <PrivateMounts.h>
#include <TempTree.h>
#include <fcntl.h>
#include <functional>
#include <gtest/gtest.h>
#include <set>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

namespace {

std::string TextOf(BQuery& query)
{
    BString text;
    return query.GetPredicate(&text) == B_OK ? text.String() : "(none)";
}

std::string TextOfName(const char* value, query_op operation)
{
    BQuery query;
    query.PushAttr("name");
    query.PushString(value);
    query.PushOp(operation);
    return TextOf(query);
}

dev_t DeviceOf(const std::string& path)
{
    struct stat st = {};
    stat(path.c_str(), &st);
    return st.st_dev;
}

/// What a query for that predicate finds on the volume of a folder, as paths below it.
std::set<std::string> Hits(const std::string& folder, const char* predicate)
{
    BQuery query;
    const BVolume volume(DeviceOf(folder));
    std::set<std::string> hits;
    if (query.SetVolume(&volume) != B_OK || query.SetPredicate(predicate) != B_OK ||
        query.Fetch() != B_OK) {
        return {"(not fetched)"};
    }
    BEntry entry;
    BPath path;
    while (query.GetNextEntry(&entry) == B_OK) {
        hits.insert(entry.GetPath(&path) == B_OK ? path.Path() + folder.size() + 1 : "(no path)");
    }
    return hits;
}

class QueryTest : public testing::Test
{
protected:
    QueryTest() { fTree.MakeFolder("volume"); }

    std::string Folder() { return fTree.Path("volume"); }

    /// Does `work` with a volume of its own at Folder(); it says whether all held.
    void OnVolume(const std::function<bool()>& work)
    {
        ExpectPassed(RunWithPrivateMounts(
            [&] { return Check(MountMemory(Folder(), 64L << 20), "mounted") && work(); }));
    }

    TempTree fTree;
};

} // namespace

TEST(QueryTextTest, MakesTermsOfNames)
{
    EXPECT_EQ(TextOfName("ab", B_CONTAINS), "(name==\"*ab*\")");
    EXPECT_EQ(TextOfName("ab", B_NE), "(name!=\"ab\")");
    EXPECT_EQ(TextOfName("ab", B_EQ), "(name==\"ab\")");
    EXPECT_EQ(TextOfName("ab", B_BEGINS_WITH), "(name==\"ab*\")");
    EXPECT_EQ(TextOfName("ab", B_ENDS_WITH), "(name==\"*ab\")");
    EXPECT_EQ(TextOfName("ab", B_LT), "(name<\"ab\")");
    EXPECT_EQ(TextOfName("ab", B_GE), "(name>=\"ab\")");
}

TEST(QueryTextTest, KeepsValuesApartFromTheText)
{
    EXPECT_EQ(TextOfName("a\"b", B_EQ), "(name==\"a\\\"b\")");
    EXPECT_EQ(TextOfName("a\\", B_EQ), "(name==\"a\\\\\")");
    EXPECT_EQ(TextOfName("a\\", B_CONTAINS), "(name==\"*a\\\\*\")");
    EXPECT_EQ(TextOfName("a\")||(name==\"*", B_EQ), "(name==\"a\\\")||(name==\\\"*\")");
}

TEST(QueryTextTest, FindsNamesWithQuotesAndBackslashes)
{
    for (const char* name :
         {"a\"b", "a\\", "\\", "\\\\x", "a'b", "\"", "(a)", "a&&b", "!", "a b\n"}) {
        kits::QueryPredicate predicate;
        // In a pattern two of them are one.
        const bool isPattern = std::string(name).find("\\\\") != std::string::npos;

        ASSERT_EQ(predicate.SetTo(TextOfName(name, B_EQ)), B_OK) << name;

        EXPECT_EQ(predicate.Match({isPattern ? name + 1 : name}),
                  kits::QueryPredicate::Answer::kYes)
            << name;
    }
}

TEST(QueryTextTest, MakesTermsOfNumbers)
{
    BQuery query;
    query.PushAttr("size");
    query.PushInt32(INT32_MIN);
    query.PushOp(B_GT);
    query.PushAttr("size");
    query.PushUInt64(UINT64_MAX);
    query.PushOp(B_LE);
    query.PushOp(B_AND);
    query.PushAttr("size");
    query.PushDouble(1.5);
    query.PushOp(B_NE);
    query.PushOp(B_OR);
    query.PushOp(B_NOT);

    EXPECT_EQ(TextOf(query),
              "(!(((size>-2147483648)&&(size<=18446744073709551615))||(size!=1.5)))");
}

TEST(QueryTextTest, LeavesTermsWithoutAnOperatorSideBySide)
{
    BQuery query;
    query.PushAttr("name");
    query.PushString("a");
    query.PushOp(B_EQ);
    query.PushAttr("last_modified");
    query.PushUInt32(7);
    query.PushOp(B_GE);

    EXPECT_EQ(TextOf(query), "(name==\"a\")(last_modified>=7)");
}

TEST(QueryTextTest, QuotesAttributesThatAreNoPlainWord)
{
    BQuery query;
    query.PushAttr("my own");
    query.PushString("Ab", true);
    query.PushOp(B_EQ);

    EXPECT_EQ(TextOf(query), "(\"my own\"==\"[aA][bB]\")");
}

TEST(QueryTextTest, RefusesWhatMakesNoPredicate)
{
    BQuery nothing;
    BQuery noOperator;
    BQuery noAttribute;
    BQuery noTerms;
    BQuery numberThatContains;
    noOperator.PushAttr("name");
    noOperator.PushString("a");
    noAttribute.PushString("a");
    noAttribute.PushOp(B_EQ);
    noTerms.PushOp(B_AND);
    numberThatContains.PushAttr("size");
    numberThatContains.PushInt32(1);
    numberThatContains.PushOp(B_CONTAINS);
    char buffer[64] = "as it was";

    EXPECT_EQ(nothing.GetPredicate(buffer, sizeof(buffer)), B_NO_INIT);
    EXPECT_EQ(nothing.PredicateLength(), 0u);
    for (BQuery* query : {&noOperator, &noAttribute, &noTerms, &numberThatContains}) {
        EXPECT_EQ(query->GetPredicate(buffer, sizeof(buffer)), B_BAD_VALUE);
    }
    EXPECT_EQ(nothing.PushOp(B_INVALID_OP), B_BAD_VALUE);
    EXPECT_EQ(nothing.PushString(nullptr), B_BAD_VALUE);
    EXPECT_STREQ(buffer, "as it was");
}

TEST(QueryTextTest, FillsABufferWholeOrNotAtAll)
{
    BQuery query;
    ASSERT_EQ(query.SetPredicate("name==abc"), B_OK);
    char buffer[10] = "!";

    EXPECT_EQ(query.PredicateLength(), 10u);
    EXPECT_EQ(query.GetPredicate(buffer, 9), B_BAD_VALUE);
    EXPECT_STREQ(buffer, "!");
    EXPECT_EQ(query.GetPredicate(buffer, 10), B_OK);
    EXPECT_STREQ(buffer, "name==abc");
    EXPECT_EQ(query.SetPredicate("name=="), B_BAD_VALUE);
    EXPECT_EQ(TextOf(query), "name==abc");
}

TEST_F(QueryTest, FindsWhatHolds)
{
    OnVolume([this] {
        fTree.Write("volume/a.txt", "12345");
        fTree.Write("volume/one/two/b.txt", "123");
        fTree.Write("volume/one/c.log", "12345");
        fTree.MakeFolder("volume/one/d.txt");
        fTree.Link("volume/one/e.txt", "a.txt");
        const auto byName = Hits(Folder(), "name==\"*.txt\"");
        const auto bySize = Hits(Folder(), "size==5&&name!=\"e*\"");
        return Check(byName ==
                         std::set<std::string>{"a.txt", "one/two/b.txt", "one/d.txt", "one/e.txt"},
                     "all of that name") &&
               Check(bySize == std::set<std::string>{"a.txt", "one/c.log"}, "all of that size") &&
               Check(Hits(Folder(), "name==nowhere").empty(), "nothing");
    });
}

TEST_F(QueryTest, FollowsNoLinkAndEntersNoMount)
{
    OnVolume([this] {
        fTree.Write("volume/one/x", "");
        fTree.Link("volume/up", "..");
        fTree.Link("volume/one/loop", ".");
        fTree.MakeFolder("volume/other");
        fTree.MakeFolder("volume/again");
        const std::string other = fTree.Path("volume/other");
        const std::string again = fTree.Path("volume/again");
        const std::string one = fTree.Path("volume/one");
        if (!Check(MountMemory(other, 1L << 20) && MountAlsoAt(one, again), "mounted")) {
            return false;
        }
        fTree.Write("volume/other/x", "");
        return Check(Hits(Folder(), "name==x") == std::set<std::string>{"one/x"}, "once") &&
               Check(Hits(Folder(), "name==other") == std::set<std::string>{"other"},
                     "the mount point");
    });
}

TEST_F(QueryTest, FindsEverythingInALargeAndDeepTree)
{
    OnVolume([this] {
        std::set<std::string> expected;
        for (int folder = 0; folder < 300; folder++) {
            const std::string name = std::to_string(folder);
            fTree.Write("volume/" + name + "/hit", "");
            fTree.Write("volume/" + name + "/miss", "");
            fTree.Write("volume/" + name + "/in/hit", "");
            expected.insert(name + "/hit");
            expected.insert(name + "/in/hit");
        }
        return Check(Hits(Folder(), "name==hit") == expected, "all");
    });
}

TEST_F(QueryTest, FindsWhatNoPathReaches)
{
    OnVolume([this] {
        // Longer than any path that a call takes.
        const std::string name(200, 'n');
        if (chdir(Folder().c_str()) != 0) {
            return Check(false, "there");
        }
        for (int level = 0; level < 60; level++) {
            if (mkdir(name.c_str(), 0700) != 0 || chdir(name.c_str()) != 0) {
                return Check(false, "made");
            }
        }
        close(open("deep", O_CREAT | O_WRONLY, 0600));
        BQuery query;
        const BVolume volume(DeviceOf(Folder()));
        entry_ref ref;
        const bool isFound = query.SetVolume(&volume) == B_OK &&
                             query.SetPredicate("name==deep") == B_OK && query.Fetch() == B_OK &&
                             query.GetNextRef(&ref) == B_OK;
        return Check(isFound && std::string(ref.name) == "deep", "found") &&
               Check(BEntry(&ref).Exists(), "reached by its ref");
    });
}

TEST_F(QueryTest, PassesOverWhatMayNotBeRead)
{
    OnVolume([this] {
        fTree.Write("volume/open/x", "");
        fTree.Write("volume/closed/x", "");
        chmod(fTree.Path("volume/closed").c_str(), 0);
        const WithoutFileRights asAnybody; // root may read everything
        return Check(Hits(Folder(), "name==x") == std::set<std::string>{"open/x"}, "the open one");
    });
}

TEST_F(QueryTest, AsksForEachThingInItsTime)
{
    OnVolume([this] {
        const BVolume volume(DeviceOf(Folder()));
        const BVolume none;
        BQuery query;
        entry_ref ref;
        bool holds = Check(query.GetNextRef(&ref) == B_FILE_ERROR, "before") &&
                     Check(query.Fetch() == B_NO_INIT, "without a volume") &&
                     Check(query.SetVolume(&none) == B_BAD_VALUE, "no volume") &&
                     Check(query.SetVolume(&volume) == B_OK, "volume") &&
                     Check(query.TargetDevice() == volume.Device(), "the volume") &&
                     Check(query.Fetch() == B_NO_INIT, "without a predicate") &&
                     Check(query.SetPredicate("name==\"*\"") == B_OK, "predicate") &&
                     Check(query.Fetch() == B_OK, "fetch");
        holds = holds && Check(query.Fetch() == B_NOT_ALLOWED, "twice") &&
                Check(query.PushAttr("name") == B_NOT_ALLOWED, "push after") &&
                Check(query.SetPredicate("name==a") == B_NOT_ALLOWED, "predicate after") &&
                Check(query.SetVolume(&volume) == B_NOT_ALLOWED, "volume after") &&
                Check(query.GetNextRef(&ref) == B_ENTRY_NOT_FOUND, "nothing there") &&
                Check(query.GetNextRef(nullptr) == B_BAD_VALUE, "nowhere to put it");
        return holds && Check(query.Clear() == B_OK && query.Fetch() == B_NO_INIT, "cleared");
    });
}

TEST_F(QueryTest, CountsWhatItLookedAt)
{
    OnVolume([this] {
        for (int file = 0; file < 100; file++) {
            fTree.Write("volume/" + std::to_string(file), "");
        }
        fTree.MakeFolder("volume/folder");
        const BVolume volume(DeviceOf(Folder()));
        BQuery query;
        entry_ref ref;
        return Check(query.CountVisited() == 0, "nothing yet") &&
               Check(query.SetVolume(&volume) == B_OK &&
                         query.SetPredicate("name==\"none\"") == B_OK && query.Fetch() == B_OK,
                     "fetched") &&
               Check(query.GetNextRef(&ref) == B_ENTRY_NOT_FOUND, "no hit") &&
               Check(query.CountVisited() == 101, "all of them");
    });
}

TEST_F(QueryTest, EndsWhenItIsStopped)
{
    OnVolume([this] {
        for (int file = 0; file < 100; file++) {
            fTree.Write("volume/" + std::to_string(file), "");
        }
        const BVolume volume(DeviceOf(Folder()));
        BQuery query;
        entry_ref ref;
        if (query.SetVolume(&volume) != B_OK || query.SetPredicate("name==\"*\"") != B_OK ||
            query.Fetch() != B_OK || query.GetNextRef(&ref) != B_OK) {
            return Check(false, "fetched");
        }
        query.Stop();
        return Check(query.GetNextRef(&ref) == B_ENTRY_NOT_FOUND, "no more of the folder");
    });
}
