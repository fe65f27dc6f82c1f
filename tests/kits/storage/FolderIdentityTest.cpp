#include "storage/FolderIdentity.h"
#include "storage/SystemCalls.h"

#include <TempTree.h>
#include <gtest/gtest.h>

#include <fcntl.h>

using kits::Compare;
using kits::FolderIdentity;
using kits::Sameness;

namespace {

kits::UniqueFd Open(const std::string& path)
{
    return kits::UniqueFd(
        kits::sys::OpenAt(kits::sys::kWorkingDirectory, path.c_str(), O_PATH | O_DIRECTORY));
}

} // namespace

TEST(FolderIdentityTest, TellsFoldersApart)
{
    TempTree tree;
    tree.MakeFolder("a");
    tree.MakeFolder("b");
    const kits::UniqueFd a = Open(tree.Path("a"));
    const kits::UniqueFd b = Open(tree.Path("b"));

    const FolderIdentity identity = kits::IdentityOf(a.Get());

    ASSERT_NE(identity.Tag(), 0u) << "the file system of temporary files tells nothing";
    EXPECT_EQ(kits::IdentityOf(a.Get()).Tag(), identity.Tag());
    EXPECT_EQ(Compare(identity, kits::IdentityOf(a.Get()), a.Get()), Sameness::kSame);
    EXPECT_EQ(Compare(identity, kits::IdentityOf(b.Get()), b.Get()), Sameness::kOther);
}

TEST(FolderIdentityTest, GoesByTheBirthWithoutHandles)
{
    const FolderIdentity early{"", 1000};
    const FolderIdentity late{"", 2000};
    const FolderIdentity handle{"handle", 0};

    EXPECT_EQ(Compare(early, early, -1), Sameness::kSame);
    EXPECT_EQ(Compare(early, late, -1), Sameness::kOther);
    EXPECT_EQ(Compare(early, handle, -1), Sameness::kUnknown);
    EXPECT_EQ(Compare(early, {}, -1), Sameness::kUnknown);
    EXPECT_NE(early.Tag(), late.Tag());
    EXPECT_EQ(FolderIdentity().Tag(), 0u);
}

TEST(FolderIdentityTest, ReadsBirthAndHandleOfAnOpenFolder)
{
    TempTree tree;
    const kits::UniqueFd folder = Open(tree.Path());
    uint64 birth = 0;
    std::string handle;

    const status_t born = kits::sys::BirthOf(folder.Get(), &birth);
    EXPECT_EQ(born == B_OK, birth != 0);
    const status_t handled = kits::sys::HandleOf(folder.Get(), &handle);
    EXPECT_EQ(handled == B_OK, !handle.empty());
    EXPECT_TRUE(born == B_OK || handled == B_OK);
    EXPECT_NE(kits::sys::HandleOf(-1, &handle), B_OK);
    EXPECT_NE(kits::sys::BirthOf(-1, &birth), B_OK);
}
