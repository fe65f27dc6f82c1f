#include <Directory.h>
#include <Node.h>
#include <NodeAccess.h>

#include <AccessList.h>
#include <TempTree.h>
#include <gtest/gtest.h>
#include <unistd.h>

namespace {

constexpr unsigned kOtherGroup = 54321;
constexpr unsigned kNamedUser = 11111;
constexpr unsigned kNamedGroup = 22222;

class NodeAccessTest : public testing::Test
{
protected:
    void SetUp() override
    {
        fTree.Write("a", "");
        if (!AccessList{.users = {{kNamedUser, 4}}}.GiveTo(Path("a"))) {
            GTEST_SKIP() << "the file system of temporary files keeps no access lists";
        }
        fGroup = Record("a").st_gid;
    }

    std::string Path(const char* name) const { return fTree.Path(name); }
    BNode Node(const char* name) const { return BNode(Path(name).c_str()); }
    struct stat Record(const char* name) const
    {
        struct stat st = {};
        EXPECT_EQ(lstat(Path(name).c_str(), &st), 0);
        return st;
    }
    mode_t Mode(const char* name) const { return Record(name).st_mode & 07777; }

    /// Everybody in whom two nodes may differ.
    std::vector<Person> People() const
    {
        std::vector<Person> people;
        for (const unsigned user : {kNamedUser, 99999u}) {
            for (unsigned in = 0; in < 8; ++in) {
                Person person{user, {}};
                const unsigned groups[] = {fGroup, kOtherGroup, kNamedGroup};
                for (unsigned i = 0; i < 3; ++i) {
                    if ((in & 1u << i) != 0) {
                        person.groups.push_back(groups[i]);
                    }
                }
                people.push_back(person);
            }
        }
        return people;
    }

    TempTree fTree;
    unsigned fGroup = 0;
};

/// Lists of all rights to read that matter, with or without those who are named.
std::vector<AccessList> Lists()
{
    std::vector<AccessList> lists;
    for (unsigned bits = 0; bits < 128; ++bits) {
        const auto right = [bits](unsigned at) {
            return (bits & 1u << at) != 0 ? 4u : 0u;
        };
        AccessList list;
        list.group = right(0);
        list.others = right(1);
        list.mask = right(2);
        if ((bits & 8) != 0) {
            list.users.push_back({kNamedUser, right(5)});
        }
        if ((bits & 16) != 0) {
            list.groups.push_back({kNamedGroup, right(6)});
        }
        lists.push_back(list);
    }
    return lists;
}

} // namespace

TEST_F(NodeAccessTest, OpensACopyToNobodyWhoIsLeftOut)
{
    for (const AccessList& list : Lists()) {
        ASSERT_TRUE(list.GiveTo(Path("a")));
        const BNodeAccess access(Node("a"));
        ASSERT_EQ(access.InitCheck(), B_OK);
        for (const unsigned group : {fGroup, kOtherGroup}) {
            const mode_t most = access.MostFor(group);
            for (const Person& person : People()) {
                EXPECT_TRUE(!person.May(4, most, group) || person.May(4, list, fGroup))
                    << "group " << list.group << " others " << list.others << " mask " << list.mask
                    << " users " << list.users.size() << " groups " << list.groups.size()
                    << " most " << most << " in other " << person.IsIn(kOtherGroup);
            }
        }
    }
}

TEST_F(NodeAccessTest, CutsTheListOfAnotherGroup)
{
    fTree.Write("b", "");
    for (const AccessList& list : Lists()) {
        ASSERT_TRUE(list.GiveTo(Path("a")));
        const BNodeAccess access(Node("a"));
        if (!access.HasList()) {
            continue;
        }
        BNode given = Node("b");
        ASSERT_EQ(access.GiveList(&given, kOtherGroup), B_OK);
        const std::string bytes = AccessList::Of(Path("b"));
        AccessList cut = list;
        const size_t groupAt = 4 + 8 * (1 + list.users.size()) + 2;
        cut.group = static_cast<unsigned char>(bytes.at(groupAt));
        cut.others = static_cast<unsigned char>(bytes.at(bytes.size() - 6));
        EXPECT_EQ(bytes, cut.Bytes());
        for (const Person& person : People()) {
            EXPECT_TRUE(!person.May(4, cut, kOtherGroup) || person.May(4, list, fGroup))
                << "group " << list.group << " others " << list.others << " mask " << list.mask;
        }
    }
}

TEST_F(NodeAccessTest, TakesWhatCanBeToldFromBitsAndList)
{
    struct Row
    {
        mode_t mode;
        bool hasList;
        mode_t same;
        mode_t other;
    };
    // With the list of a user who may read and write, and a group that may read.
    const Row rows[] = {
        {0640, false, 0640, 0600}, {0644, false, 0644, 0644}, {0664, false, 0664, 0644},
        {0755, false, 0755, 0755}, {0604, false, 0604, 0600}, {0660, true, 0640, 0600},
        {0664, true, 0644, 0644},  {0620, true, 0600, 0600},
    };
    for (const Row& row : rows) {
        fTree.Write("b", "");
        ASSERT_EQ(chmod(Path("b").c_str(), row.mode), 0);
        if (row.hasList) {
            const AccessList list{.users = {{kNamedUser, 6}},
                                  .group = 4,
                                  .mask = row.mode >> 3 & 7,
                                  .others = row.mode & 7};
            ASSERT_TRUE(list.GiveTo(Path("b")));
        }
        const BNodeAccess access(Node("b"));
        EXPECT_EQ(access.Mode(), row.mode);
        EXPECT_EQ(access.HasList(), row.hasList);
        EXPECT_EQ(access.MostFor(fGroup), row.same) << row.mode;
        EXPECT_EQ(access.MostFor(kOtherGroup), row.other) << row.mode;
        fTree.Remove("b");
    }
}

TEST_F(NodeAccessTest, RemovesAListWithoutOpeningTheGroup)
{
    ASSERT_TRUE((AccessList{.users = {{kNamedUser, 6}}, .group = 0, .mask = 6}.GiveTo(Path("a"))));
    ASSERT_EQ(Mode("a"), 0660u);

    BNode node = Node("a");
    EXPECT_EQ(BNodeAccess::RemoveList(&node), B_OK);

    EXPECT_EQ(AccessList::Of(Path("a")), "");
    EXPECT_EQ(Mode("a"), 0600u);
    EXPECT_EQ(BNodeAccess::RemoveList(&node), B_OK);
}

TEST_F(NodeAccessTest, ChecksListsAndOpensNothing)
{
    fTree.Write("b", "");
    ASSERT_EQ(chmod(Path("b").c_str(), 0600), 0);
    ASSERT_TRUE(
        (AccessList{.users = {{kNamedUser, 6}}, .group = 6, .others = 6}.GiveTo(Path("a"))));

    BNode made = Node("b");
    EXPECT_EQ(BNodeAccess::CheckLists(Node("a"), &made), B_OK);

    EXPECT_EQ(AccessList::Of(Path("b")), "");
    EXPECT_EQ(Mode("b"), 0600u);
}

TEST_F(NodeAccessTest, CopiesAFoldersDefaultList)
{
    fTree.MakeFolder("from");
    fTree.MakeFolder("to");
    const AccessList list{.users = {{kNamedUser, 4}}, .group = 4, .others = 0};
    ASSERT_TRUE(list.GiveTo(Path("from"), "default"));
    BDirectory to(Path("to").c_str());

    EXPECT_EQ(BNodeAccess::CopyDefaultList(BDirectory(Path("from").c_str()), &to), B_OK);
    EXPECT_EQ(AccessList::Of(Path("to"), "default"), list.Bytes());

    if (geteuid() == 0) {
        ASSERT_EQ(chown(Path("to").c_str(), 0, kOtherGroup), 0);
        EXPECT_EQ(BNodeAccess::CopyDefaultList(BDirectory(Path("from").c_str()), &to), B_OK);
        AccessList cut = list;
        cut.group = 0;
        EXPECT_EQ(AccessList::Of(Path("to"), "default"), cut.Bytes());
    }
}

TEST_F(NodeAccessTest, GivesNobodyRightsWhenItKnowsNothing)
{
    BNode unset;
    BNodeAccess access;

    EXPECT_EQ(access.InitCheck(), B_NO_INIT);
    EXPECT_EQ(access.MostFor(0), 0700u);
    EXPECT_EQ(access.SetTo(unset), B_NO_INIT);
    EXPECT_EQ(access.GiveList(&unset, 0), B_NO_INIT);
    EXPECT_EQ(BNodeAccess::RemoveList(&unset), B_NO_INIT);
    BNode node = Node("a");
    EXPECT_EQ(access.GiveList(&node, 0), B_BAD_VALUE);
}

TEST_F(NodeAccessTest, ReadsTheUmaskWithoutChangingIt)
{
    const mode_t before = umask(027);
    EXPECT_EQ(current_umask(), 027u);
    EXPECT_EQ(umask(0), 027u);
    EXPECT_EQ(current_umask(), 0u);
    umask(before);
}
