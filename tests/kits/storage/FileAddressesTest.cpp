#include "storage/FileAddresses.h"

#include "TempTree.h"

#include <Entry.h>
#include <Message.h>
#include <Path.h>

#include <gtest/gtest.h>

#include <string>

namespace {

using kits::AddressOfPath;
using kits::PathOfAddress;

std::string NamesOf(const BMessage& message)
{
    std::string names;
    entry_ref ref;
    for (int32 i = 0; message.FindRef("refs", i, &ref) == B_OK; i++) {
        names += std::string(ref.name) + "\n";
    }
    return names;
}

TEST(FileAddressesTest, EveryByteOfANameComesBack)
{
    std::string path = "/a folder/";
    for (int byte = 1; byte < 256; byte++) {
        path += static_cast<char>(byte);
    }

    const std::string address = AddressOfPath(path);

    EXPECT_EQ(PathOfAddress(address), path);
    EXPECT_EQ(address.find_first_of(" \r\n\t?#&\"\xff"), std::string::npos);
    EXPECT_EQ(AddressOfPath("/a b/\xc3\xa9%"), "file:///a%20b/%C3%A9%25");
}

TEST(FileAddressesTest, KnowsItsOwnMachineAlone)
{
    EXPECT_EQ(PathOfAddress("file:///a/b"), "/a/b");
    EXPECT_EQ(PathOfAddress("file:/a/b"), "/a/b");
    EXPECT_EQ(PathOfAddress("file://localhost/a%2fb"), "/a/b");
    EXPECT_EQ(PathOfAddress("file://another.example/a"), std::nullopt);
    EXPECT_EQ(PathOfAddress("http://localhost/a"), std::nullopt);
    EXPECT_EQ(PathOfAddress("file://"), std::nullopt);
    EXPECT_EQ(PathOfAddress("file:a"), std::nullopt);
    EXPECT_EQ(PathOfAddress(""), std::nullopt);
}

TEST(FileAddressesTest, APathWithANulIsNone)
{
    EXPECT_EQ(PathOfAddress("file:///a%00b"), std::nullopt);
    EXPECT_EQ(PathOfAddress("file:///a%zzb%4"), "/a%zzb%4");
}

TEST(FileAddressesTest, RefsBecomeLinesAndComeBackInOrder)
{
    TempTree tree;
    BMessage message('test');
    const char* const names[] = {"b", "sub/with blank", "a\n\xff"};
    for (const char* name : names) {
        tree.Write(name, "");
        entry_ref ref;
        ASSERT_EQ(get_ref_for_path(tree.Path(name).c_str(), &ref), B_OK);
        message.AddRef("refs", &ref);
    }

    const std::string list = kits::AddressesOfRefs(message);
    BMessage back;
    kits::AddRefsOfAddresses(list, &back);

    EXPECT_EQ(list, AddressOfPath(tree.Path("b")) + "\r\n" +
                        AddressOfPath(tree.Path("sub/with blank")) + "\r\n" +
                        AddressOfPath(tree.Path("a\n\xff")) + "\r\n");
    EXPECT_EQ(NamesOf(back), "b\nwith blank\na\n\xff\n");
}

TEST(FileAddressesTest, PassesOverWhatIsNoFileHere)
{
    TempTree tree;
    tree.Write("x", "");
    const std::string list =
        "# a comment\r\n\r\nhttp://example.com/x\r\nfile:///no/such/folder/y\n" +
        AddressOfPath(tree.Path("x")) + "\n" + AddressOfPath(tree.Path("gone"));

    BMessage message;
    kits::AddRefsOfAddresses(list, &message);

    EXPECT_EQ(NamesOf(message), "x\ngone\n"); // what is gone fails where it is used, with its name
}

TEST(FileAddressesTest, EntriesOfTheRootAndOfLostFoldersAreTold)
{
    TempTree tree;
    tree.Write("sub/x", "");
    entry_ref lost;
    ASSERT_EQ(get_ref_for_path(tree.Path("sub/x").c_str(), &lost), B_OK);
    entry_ref top;
    ASSERT_EQ(get_ref_for_path("/etc", &top), B_OK);
    BMessage message;
    message.AddRef("refs", &lost);
    message.AddRef("refs", &top);
    tree.Remove("sub");

    EXPECT_EQ(kits::AddressesOfRefs(message), "file:///etc\r\n");
}

} // namespace
