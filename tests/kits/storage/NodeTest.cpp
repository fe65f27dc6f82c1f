#include <Entry.h>
#include <File.h>
#include <Node.h>
#include <NodeInfo.h>
#include <SymLink.h>

#include <TempTree.h>
#include <cstring>
#include <gtest/gtest.h>
#include <memory>
#include <sys/xattr.h>
#include <unistd.h>

namespace {

class NodeTest : public testing::Test
{
protected:
    BNode Node(const char* name) { return BNode(fTree.Path(name).c_str()); }

    bool HasAttributes()
    {
        fTree.Write("probe", "");
        return setxattr(fTree.Path("probe").c_str(), "user.probe", "x", 1, 0) == 0;
    }

    TempTree fTree;
};

} // namespace

TEST_F(NodeTest, HoldsTheNodeWhateverItIsCalled)
{
    fTree.Write("a", "12345");
    const BNode node = Node("a");

    ASSERT_EQ(rename(fTree.Path("a").c_str(), fTree.Path("b").c_str()), 0);
    fTree.Write("a", "");

    off_t size = 0;
    EXPECT_EQ(node.GetSize(&size), B_OK);
    EXPECT_EQ(size, 5);
    EXPECT_TRUE(node == Node("b"));
    EXPECT_TRUE(node != Node("a"));
    EXPECT_TRUE(BNode() != BNode());
}

TEST_F(NodeTest, OpensAFifoWithoutWaiting)
{
    ASSERT_EQ(mkfifo(fTree.Path("fifo").c_str(), 0600), 0);

    const BNode node = Node("fifo");

    EXPECT_EQ(node.InitCheck(), B_OK);
    EXPECT_FALSE(node.IsFile());
    EXPECT_EQ(node.CountAttrs(), 0);
}

TEST_F(NodeTest, IsTheLinkItself)
{
    fTree.Write("target", "");
    fTree.Link("link", "target");
    BNode node = Node("link");
    struct stat like = {};
    like.st_mtim.tv_sec = 99;

    EXPECT_TRUE(node.IsSymLink());
    EXPECT_EQ(node.SetTimesLike(like), B_OK);
    EXPECT_NE(node.SetPermissions(0777), B_OK);
    time_t modified = 0;
    node.GetModificationTime(&modified);
    EXPECT_EQ(modified, 99);
    Node("target").GetModificationTime(&modified);
    EXPECT_NE(modified, 99);
}

TEST_F(NodeTest, SetsModeAndTimes)
{
    fTree.Write("a", "");
    BNode node = Node("a");
    mode_t mode = 0;

    EXPECT_EQ(node.SetPermissions(0604), B_OK);
    EXPECT_EQ(node.SetModificationTime(77), B_OK);
    EXPECT_EQ(node.Sync(), B_OK);

    node.GetPermissions(&mode);
    EXPECT_EQ(mode, 0604u);
    time_t modified = 0;
    node.GetModificationTime(&modified);
    EXPECT_EQ(modified, 77);
}

TEST_F(NodeTest, KeepsAttributes)
{
    if (!HasAttributes()) {
        GTEST_SKIP() << "the file system of temporary files keeps no extended attributes";
    }
    fTree.Write("a", "");
    BNode node = Node("a");
    const char value[] = "v\0w";
    char read[16] = {};
    attr_info info;

    EXPECT_EQ(node.CountAttrs(), 0);
    EXPECT_EQ(node.WriteAttr("name", 'TEST', 0, value, sizeof(value)), ssize_t(sizeof(value)));
    EXPECT_EQ(node.CountAttrs(), 1);
    EXPECT_EQ(node.ReadAttr("name", 'TEST', 0, read, sizeof(read)), ssize_t(sizeof(value)));
    EXPECT_EQ(memcmp(read, value, sizeof(value)), 0);
    EXPECT_EQ(node.ReadAttr("name", 'TEST', 2, read, 1), 1);
    EXPECT_EQ(read[0], 'w');
    EXPECT_EQ(node.GetAttrInfo("name", &info), B_OK);
    EXPECT_EQ(info.type, type_code('TEST'));
    EXPECT_EQ(info.size, off_t(sizeof(value)));
    char name[B_ATTR_NAME_LENGTH];
    EXPECT_EQ(node.GetNextAttrName(name), B_OK);
    EXPECT_STREQ(name, "name");
    EXPECT_EQ(node.GetNextAttrName(name), B_ENTRY_NOT_FOUND);
    EXPECT_EQ(node.RemoveAttr("name"), B_OK);
    EXPECT_EQ(node.ReadAttr("name", 'TEST', 0, read, 1), B_ENTRY_NOT_FOUND);
    EXPECT_EQ(node.GetAttrInfo("name", &info), B_ENTRY_NOT_FOUND);
}

TEST_F(NodeTest, TakesAttributesOver)
{
    if (!HasAttributes()) {
        GTEST_SKIP() << "the file system of temporary files keeps no extended attributes";
    }
    fTree.Write("a", "");
    fTree.Write("b", "");
    ASSERT_EQ(setxattr(fTree.Path("a").c_str(), "user.other", "zz", 2, 0), 0);
    BNode from = Node("a");
    from.WriteAttr("mine", 'TEST', 0, "x", 1);

    BNode to = Node("b");
    EXPECT_EQ(to.CopyAttrsFrom(from), B_OK);

    char read[8];
    EXPECT_EQ(to.ReadAttr("mine", 'TEST', 0, read, 8), 1);
    EXPECT_EQ(getxattr(fTree.Path("b").c_str(), "user.other", read, 8), 2);
}

TEST_F(NodeTest, KeepsTypeAndPreferredApplication)
{
    if (!HasAttributes()) {
        GTEST_SKIP() << "the file system of temporary files keeps no extended attributes";
    }
    fTree.Write("a", "");
    BNode node = Node("a");
    BNodeInfo info(&node);
    char text[B_MIME_TYPE_LENGTH];

    EXPECT_EQ(info.GetType(text), B_ENTRY_NOT_FOUND);
    EXPECT_EQ(info.SetType("text/plain"), B_OK);
    EXPECT_EQ(info.SetType("not a type"), B_BAD_VALUE);
    EXPECT_EQ(info.GetType(text), B_OK);
    EXPECT_STREQ(text, "text/plain");
    EXPECT_EQ(info.SetPreferredApp("application/x-vnd.test"), B_OK);
    EXPECT_EQ(info.GetPreferredApp(text), B_OK);
    EXPECT_STREQ(text, "application/x-vnd.test");
    EXPECT_EQ(info.SetType(nullptr), B_OK);
    EXPECT_EQ(info.GetType(text), B_ENTRY_NOT_FOUND);
    BNode unset;
    EXPECT_EQ(BNodeInfo(&unset).InitCheck(), B_BAD_VALUE);
}

TEST_F(NodeTest, CopyHoldsTheNodeByItself)
{
    fTree.Write("a", "text");
    auto node = std::make_unique<BNode>(fTree.Path("a").c_str());
    const BNode copy(*node);
    node.reset();

    off_t size = 0;
    EXPECT_EQ(copy.GetSize(&size), B_OK);
    EXPECT_EQ(size, 4);
    EXPECT_EQ(BNode(BNode()).InitCheck(), B_NO_INIT);
}

TEST_F(NodeTest, TellsOwnerGroupAndTimes)
{
    fTree.Write("a", "");
    BNode node(fTree.Path("a").c_str());
    uid_t owner = 1;
    gid_t group = 1;
    EXPECT_EQ(node.GetOwner(&owner), B_OK);
    EXPECT_EQ(node.GetGroup(&group), B_OK);
    EXPECT_EQ(owner, geteuid());
    EXPECT_EQ(group, getegid());

    EXPECT_EQ(node.SetModificationTime(1'000'000), B_OK);
    EXPECT_EQ(node.SetAccessTime(2'000'000), B_OK);
    time_t accessed = 0;
    time_t created = 0;
    EXPECT_EQ(node.GetAccessTime(&accessed), B_OK);
    EXPECT_EQ(node.GetCreationTime(&created), B_OK);
    EXPECT_EQ(accessed, 2'000'000);
    EXPECT_EQ(created, 1'000'000);
    EXPECT_EQ(node.GetOwner(nullptr), B_BAD_VALUE);
}

TEST_F(NodeTest, OpensALinkByPathEntryAndRef)
{
    fTree.Link("link", "/there");
    const std::string path = fTree.Path("link");
    const BEntry entry(path.c_str());
    entry_ref ref;
    ASSERT_EQ(entry.GetRef(&ref), B_OK);

    EXPECT_TRUE(BSymLink(path.c_str()).IsAbsolute());
    EXPECT_TRUE(BSymLink(&entry).IsAbsolute());
    EXPECT_TRUE(BSymLink(&ref).IsAbsolute());
    EXPECT_EQ(BSymLink(fTree.Path("none").c_str()).InitCheck(), B_ENTRY_NOT_FOUND);
}

TEST_F(NodeTest, OneHoldsTheLockOfAFile)
{
    fTree.Write("a", "12345");
    BFile one(fTree.Path("a").c_str(), B_READ_WRITE);
    BFile other(fTree.Path("a").c_str(), B_READ_ONLY);
    EXPECT_EQ(one.Lock(), B_OK);
    EXPECT_EQ(other.Lock(), B_BUSY);
    char read[5];
    EXPECT_EQ(other.Read(read, 5), 5); // who does not ask for the lock goes on
    EXPECT_EQ(one.Unlock(), B_OK);
    EXPECT_EQ(other.Lock(), B_OK);
    other.Unset();
    EXPECT_EQ(one.Lock(), B_OK);
}

TEST_F(NodeTest, OnlyWhatIsOpenForUseIsLocked)
{
    fTree.Write("a", "");
    EXPECT_EQ(BNode().Lock(), B_NO_INIT);
    EXPECT_EQ(BNode().Unlock(), B_NO_INIT);
    BNode held = Node("a");
    EXPECT_EQ(held.Lock(), B_NOT_ALLOWED);
    EXPECT_EQ(held.Unlock(), B_NOT_ALLOWED);
}
