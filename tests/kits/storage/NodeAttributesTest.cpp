#include "OwnVolume.h"

#include <Directory.h>
#include <File.h>
#include <Node.h>

#include <AccessList.h>
#include <TempTree.h>
#include <gtest/gtest.h>
#include <sys/xattr.h>
#include <unistd.h>

namespace {

class NodeAttributesTest : public testing::Test
{
protected:
    void SetUp() override
    {
        fTree.Write("a", "");
        fTree.MakeFolder("volume");
        if (!Give("a", "user.probe")) {
            GTEST_SKIP() << "the file system of temporary files keeps no extended attributes";
        }
        removexattr(Path("a").c_str(), "user.probe");
    }

    std::string Path(const char* name) const { return fTree.Path(name); }
    BNode Node(const char* name) const { return BNode(Path(name).c_str()); }

    bool Give(const char* name, const char* attribute, size_t size = 1) const
    {
        const std::string value(size, 'x');
        return setxattr(Path(name).c_str(), attribute, value.data(), value.size(), 0) == 0;
    }

    bool Has(const char* name, const char* attribute) const
    {
        return getxattr(Path(name).c_str(), attribute, nullptr, 0) >= 0;
    }

    /// In place of a new node.
    bool Make(const char* name) const
    {
        const int file = open(Path(name).c_str(), O_CREAT | O_WRONLY, 0600);
        return file >= 0 && close(file) == 0;
    }

    TempTree fTree;
};

} // namespace

TEST_F(NodeAttributesTest, TakesOverWhatWasGivenAlone)
{
    Give("a", "user.one");
    Give("a", "user.two");
    const bool isRoot = Give("a", "trusted.label");
    const bool hasList = AccessList{.users = {{11111, 4}}}.GiveTo(Path("a"));
    ASSERT_TRUE(Make("b"));

    BNode to = Node("b");
    EXPECT_EQ(to.CopyAttrsFrom(Node("a")), B_OK);

    EXPECT_TRUE(Has("b", "user.one"));
    EXPECT_TRUE(Has("b", "user.two"));
    EXPECT_FALSE(Has("b", "trusted.label")) << isRoot;
    EXPECT_EQ(AccessList::Of(Path("b")), "") << hasList;
}

TEST_F(NodeAttributesTest, TellsWhatAVolumeCannotHold)
{
    Give("a", "user.one");
    OnVolume(
        Path("volume"), "",
        [this] {
            BNode to(Make("volume/b") ? Path("volume/b").c_str() : nullptr);
            const bool holds =
                Expect(to.CopyAttrsFrom(Node("a")) == B_UNSUPPORTED, "attributes that cannot be") &&
                Expect(to.CheckAttrsFrom(Node("a")) == B_UNSUPPORTED, "the same, asked");
            return holds && removexattr(Path("a").c_str(), "user.one") == 0 &&
                   Expect(to.CheckAttrsFrom(Node("a")) == B_OK, "nothing to keep");
        },
        "ramfs");
}

TEST_F(NodeAttributesTest, CountsListsAndNoLabels)
{
    if (!AccessList{.users = {{11111, 4}}}.GiveTo(Path("a"))) {
        GTEST_SKIP() << "the file system of temporary files keeps no access lists";
    }
    fTree.MakeFolder("folder");
    AccessList{.users = {{11111, 4}}}.GiveTo(Path("folder"), "default");
    fTree.Write("labelled", "");
    Give("labelled", "trusted.label");
    OnVolume(
        Path("volume"), "",
        [this] {
            mkdir(Path("volume/folder").c_str(), 0700);
            BNode to(Make("volume/b") ? Path("volume/b").c_str() : nullptr);
            BDirectory folder(Path("volume/folder").c_str());
            return Expect(to.CheckAttrsFrom(Node("a")) == B_UNSUPPORTED, "a list") &&
                   Expect(folder.CheckAttrsFrom(Node("folder")) == B_UNSUPPORTED,
                          "a default list") &&
                   Expect(to.CheckAttrsFrom(Node("labelled")) == B_OK, "labels do not count");
        },
        "ramfs");
}

TEST_F(NodeAttributesTest, ChecksAndLeavesAttributesOnly)
{
    Give("a", "user.one");
    if (!AccessList{.users = {{11111, 6}}, .group = 6, .others = 6}.GiveTo(Path("a"))) {
        GTEST_SKIP() << "the file system of temporary files keeps no access lists";
    }
    ASSERT_TRUE(Make("b"));

    BNode to = Node("b");
    EXPECT_EQ(to.CheckAttrsFrom(Node("a")), B_OK);

    EXPECT_TRUE(Has("b", "user.one"));
    EXPECT_EQ(AccessList::Of(Path("b")), "");
    mode_t mode = 0;
    EXPECT_EQ(to.GetPermissions(&mode), B_OK);
    EXPECT_EQ(mode, 0600u);
}

TEST_F(NodeAttributesTest, TellsALargeAttributeFromAFullDisk)
{
    constexpr size_t kLarge = 30'000;
    fTree.Write("probe", "");
    const bool holdsLarge = Give("probe", "user.large", kLarge);
    OnVolume(Path("volume"), "", [&] {
        if (!Make("volume/from") || !Give("volume/from", "user.large", kLarge)) {
            return true; // the memory's file system keeps none
        }
        BNode to = Node("a");
        const status_t expected = holdsLarge ? B_OK : B_UNSUPPORTED;
        return Expect(to.CopyAttrsFrom(Node("volume/from")) == expected, "a large attribute");
    });
}
