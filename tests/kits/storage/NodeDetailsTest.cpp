#include <Node.h>
#include <NodeDetails.h>

#include <AccessList.h>
#include <TempTree.h>
#include <ctime>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

namespace {

using Right = BNodeDetails::Right;

class NodeDetailsTest : public testing::Test
{
protected:
    BNodeDetails Of(const char* name) const
    {
        return BNodeDetails(BNode(fTree.Path(name).c_str()));
    }
    bool GiveAttribute(const char* name, const std::string& value)
    {
        return setxattr(fTree.Path("a").c_str(), name, value.data(), value.size(), 0) == 0;
    }

    TempTree fTree;
};

TEST_F(NodeDetailsTest, TellsTheRoomThatANodeTakes)
{
    fTree.Write("a", std::string(10'000, 'x'));
    ASSERT_EQ(truncate(fTree.Path("a").c_str(), 10'000'000), 0); // mostly a hole
    struct stat record;
    ASSERT_EQ(lstat(fTree.Path("a").c_str(), &record), 0);

    const BNodeDetails details = Of("a");

    EXPECT_EQ(details.InitCheck(), B_OK);
    EXPECT_EQ(details.Record().st_size, 10'000'000);
    EXPECT_EQ(details.OccupiedBytes(), record.st_blocks * 512);
    EXPECT_LT(details.OccupiedBytes(), 1'000'000);
    EXPECT_EQ(details.OccupiedBytes(), occupied_bytes(record));
}

TEST_F(NodeDetailsTest, KnowsWhenANodeWasMade)
{
    const time_t before = time(nullptr) - 1; // the system's clock for files is a little behind
    fTree.Write("a", "");
    const timespec old[2] = {{1000, 0}, {1000, 0}};
    ASSERT_EQ(utimensat(AT_FDCWD, fTree.Path("a").c_str(), old, 0), 0);

    time_t made = 0;
    const status_t status = Of("a").GetBirthTime(&made);
    if (status == B_UNSUPPORTED) {
        GTEST_SKIP() << "the file system of temporary files notes no such time";
    }

    EXPECT_EQ(status, B_OK);
    EXPECT_GE(made, before);
    EXPECT_LE(made, time(nullptr));
    EXPECT_EQ(Of("a").GetBirthTime(nullptr), B_BAD_VALUE);
    uint64 birth = 0;
    EXPECT_EQ(node_birth(BNode(fTree.Path("a").c_str()), &birth), B_OK);
    EXPECT_EQ(static_cast<time_t>(birth / 1'000'000'000), made);
    EXPECT_EQ(node_birth(BNode(), &birth), B_NO_INIT);
}

TEST_F(NodeDetailsTest, ReadsAccessLists)
{
    fTree.MakeFolder("a");
    const AccessList list = {.owner = 6, .users = {{70000, 5}}, .group = 4, .mask = 7, .others = 1};
    if (!list.GiveTo(fTree.Path("a")) || !list.GiveTo(fTree.Path("a"), "default")) {
        GTEST_SKIP() << "the file system of temporary files keeps no access lists";
    }

    const BNodeDetails details = Of("a");
    const std::vector<Right>& rights = details.AccessList();

    ASSERT_EQ(rights.size(), 10u);
    const Right::Who order[] = {Right::Who::kOwner, Right::Who::kUser, Right::Who::kGroup,
                                Right::Who::kMask, Right::Who::kOthers};
    const int bits[] = {6, 5, 4, 7, 1};
    for (size_t i = 0; i < rights.size(); i++) {
        EXPECT_EQ(rights[i].who, order[i % 5]) << i;
        EXPECT_EQ(rights[i].rights, bits[i % 5]) << i;
        EXPECT_EQ(rights[i].isNew, i >= 5) << i;
    }
    EXPECT_EQ(rights[1].id, 70000u);
}

TEST_F(NodeDetailsTest, HasNoListWhereTheModeSaysAll)
{
    fTree.Write("a", "");

    EXPECT_TRUE(Of("a").AccessList().empty());
    EXPECT_TRUE(Of("a").Attributes().empty());
}

TEST_F(NodeDetailsTest, ReadsGivenAttributesInOrder)
{
    fTree.Write("a", "");
    if (!GiveAttribute("user.b", std::string(1000, 'v'))) {
        GTEST_SKIP() << "the file system of temporary files keeps no attributes";
    }
    ASSERT_TRUE(GiveAttribute("user.a", std::string("x\0y", 3)));
    ASSERT_TRUE(GiveAttribute("user.c", ""));

    const BNodeDetails details = Of("a");
    const auto& attributes = details.Attributes();

    ASSERT_EQ(attributes.size(), 3u);
    EXPECT_EQ(attributes[0].name, "user.a");
    EXPECT_EQ(attributes[0].size, 3);
    EXPECT_EQ(attributes[0].beginning, std::string("x\0y", 3));
    EXPECT_EQ(attributes[1].size, 1000);
    EXPECT_EQ(attributes[1].beginning, std::string(BNodeDetails::kShownBytes, 'v'));
    EXPECT_EQ(attributes[2].size, 0);
}

TEST_F(NodeDetailsTest, ALinkAnswersForItself)
{
    fTree.Write("a", "12345");
    fTree.Link("link", "a");
    GiveAttribute("user.a", "x");

    const BNodeDetails details = Of("link");

    EXPECT_TRUE(S_ISLNK(details.Record().st_mode));
    EXPECT_TRUE(details.Attributes().empty());
}

TEST_F(NodeDetailsTest, WithoutANodeThereIsNothing)
{
    fTree.Write("a", "12345");
    BNodeDetails details = Of("a");

    EXPECT_EQ(details.SetTo(BNode()), B_NO_INIT);

    time_t made = 0;
    EXPECT_EQ(details.InitCheck(), B_NO_INIT);
    EXPECT_EQ(details.GetBirthTime(&made), B_NO_INIT);
    EXPECT_EQ(details.Record().st_size, 0);
    EXPECT_EQ(details.OccupiedBytes(), 0);
}

TEST_F(NodeDetailsTest, KnowsNamesOfUsersAndGroups)
{
    EXPECT_EQ(user_name(0), "root");
    EXPECT_EQ(group_name(0), "root");
    EXPECT_EQ(user_name(3'999'999'991u), "");
    EXPECT_EQ(group_name(3'999'999'991u), "");
}

} // namespace
