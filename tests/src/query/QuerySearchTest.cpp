#include "query/QuerySearch.h"

#include "MessageCodes.h"
#include "RecordingLooper.h"
#include "SilentFile.h"

#include <testing/Driver.h>

#include <PrivateMounts.h>
#include <TempTree.h>
#include <algorithm>
#include <gtest/gtest.h>
#include <string>
#include <sys/stat.h>
#include <thread>
#include <vector>

namespace {

using namespace norvane;

constexpr bigtime_t kLimit = 60'000'000; // all volumes of the machine are walked through

class QuerySearchTest : public testing::Test
{
protected:
    QuerySearchTest() { fLooper->Run(); }
    ~QuerySearchTest() override { EndLooper(fLooper); }

    /// A name that no other entry of the machine has.
    std::string Name(const std::string& name)
    {
        const std::string folder = fTree.Path();
        return folder.substr(folder.rfind('/') + 1) + "-" + name;
    }

    QuerySearch::Order OrderFor(const std::string& pattern)
    {
        return {"(name==\"" + Name(pattern) + "\")", std::nullopt, BMessenger(nullptr, fLooper), 7};
    }

    bool HasEnded()
    {
        const Record::Entries all = fRecord.All();
        return std::find(all.begin(), all.end(),
                         std::pair{std::string("looper"), uint32{kSearchEnded}}) != all.end();
    }

    static std::string Names(QuerySearch& search)
    {
        std::vector<std::string> names;
        for (const entry_ref& hit : search.TakeHits()) {
            names.emplace_back(hit.name);
        }
        std::sort(names.begin(), names.end());
        std::string joined;
        for (const std::string& name : names) {
            joined += name + " ";
        }
        return joined;
    }

    TempTree fTree;
    Record fRecord;
    RecordingLooper* fLooper = new RecordingLooper(fRecord); // deletes itself
};

TEST_F(QuerySearchTest, FindsEntriesByName)
{
    fTree.Write("one/" + Name("a"), "");
    fTree.MakeFolder("two/" + Name("b"));

    QuerySearch search(OrderFor("*"));

    ASSERT_TRUE(kits::testing::WaitFor([this] { return HasEnded(); }, kLimit));
    EXPECT_EQ(Names(search), Name("a") + " " + Name("b") + " ");
    EXPECT_EQ(search.Look().found, 2);
    EXPECT_EQ(search.Look().examined, 0);
    EXPECT_EQ(Names(search), "");
}

TEST_F(QuerySearchTest, KeepsFilesThatHoldTheText)
{
    for (int file = 0; file < 50; file++) {
        fTree.Write(Name(std::to_string(file)), file % 10 == 0 ? "a needle" : "hay");
    }
    fTree.Write(Name("closed"), "needle");
    chmod(fTree.Path(Name("closed")).c_str(), 0);
    const WithoutFileRights asAnybody; // root may read everything
    QuerySearch::Order order = OrderFor("*");
    order.text = "needle";

    QuerySearch search(order);

    ASSERT_TRUE(kits::testing::WaitFor([this] { return HasEnded(); }, kLimit));
    EXPECT_EQ(Names(search), Name("0") + " " + Name("10") + " " + Name("20") + " " + Name("30") +
                                 " " + Name("40") + " ");
    EXPECT_EQ(search.Look().examined, 51);
    EXPECT_EQ(search.Look().unreadable, 1);
    EXPECT_EQ(search.TakeUnreadable(), fTree.Path(Name("closed")));
    EXPECT_EQ(search.TakeUnreadable(), "");
}

TEST_F(QuerySearchTest, EndsWithNothingForWhatIsNoPredicate)
{
    QuerySearch::Order order = OrderFor("*");
    order.predicate = "(name==";

    QuerySearch search(order);

    ASSERT_TRUE(kits::testing::WaitFor([this] { return HasEnded(); }, kLimit));
    EXPECT_EQ(Names(search), "");
}

TEST_F(QuerySearchTest, TellsNobodyWhenItIsLetGoOf)
{
    const thread_id before = find_thread("query");
    {
        const QuerySearch search(OrderFor("*"));
        ASSERT_TRUE(kits::testing::WaitFor([] { return find_thread("query") >= B_OK; }, kLimit));
    }

    ASSERT_LT(before, B_OK);
    EXPECT_TRUE(kits::testing::WaitFor([] { return find_thread("query") < B_OK; }, kLimit));
    EXPECT_FALSE(HasEnded());
}

TEST_F(QuerySearchTest, GivesAVolumeUpThatDoesNotAnswer)
{
    for (const char* name : {"a", "b", "silent"}) {
        fTree.Write(Name(name), "needle");
    }
    struct stat st = {};
    ASSERT_EQ(stat(fTree.Path().c_str(), &st), 0);
    QuerySearch::Order order = OrderFor("*");
    order.text = "needle";
    order.volume = static_cast<dev_t>(st.st_dev);
    order.patience = 2;
    const SilentFile silent(fTree.Path(Name("silent")));

    QuerySearch search(order);

    ASSERT_TRUE(kits::testing::WaitFor([this] { return HasEnded(); }, kLimit));
    EXPECT_EQ(search.TakeSilent().size(), 1U);
    EXPECT_TRUE(search.TakeSilent().empty());
    EXPECT_EQ(search.Look().unreadable, 0);
    // One reader waits for the silent one; where there is no other, what came before it is there.
    const std::string found = Names(search);
    EXPECT_EQ(found.find(Name("silent")), std::string::npos);
    if (std::thread::hardware_concurrency() > 1) {
        EXPECT_EQ(found, Name("a") + " " + Name("b") + " ");
    }
}

TEST_F(QuerySearchTest, CanBeLetGoOfWhileAVolumeIsSilent)
{
    fTree.Write(Name("silent"), "needle");
    const SilentFile silent(fTree.Path(Name("silent")));
    QuerySearch::Order order = OrderFor("*");
    order.text = "needle";
    order.patience = 1000;
    {
        const QuerySearch search(order);
        ASSERT_TRUE(kits::testing::WaitFor([] { return SilentFile::IsAwaited(); }, kLimit));
    }
    EXPECT_TRUE(kits::testing::WaitFor([] { return find_thread("query") < B_OK; }, kLimit));
    EXPECT_FALSE(HasEnded());
}

} // namespace
