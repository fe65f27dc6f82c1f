#include "fileops/engine/FileInfoCopy.h"

#include "CopyFixture.h"

#include "ApplicationEnvironment.h"

#include <Bitmap.h>
#include <Node.h>
#include <NodeInfo.h>

#include <cstring>

namespace norvane {

/// What goes along with a file's bytes.
class FileInfoCopyTest : public CopyFixture
{
protected:
    void SetUp() override
    {
        fTree.MakeFolder("to");
        fTree.Write("from/empty", "");
        fSource.SetTo(fTree.Path("from/empty").c_str());
        if (fSource.WriteAttr("other", B_STRING_TYPE, 0, "x", 2) != 2) {
            GTEST_SKIP() << "this file system keeps no attributes";
        }
    }

    static void FillIcon(BBitmap& icon, char color)
    {
        std::memset(icon.Bits(), color, static_cast<size_t>(icon.BitsLength()));
    }

    static int FirstPixel(const BNodeInfo& info, icon_size which)
    {
        const float last = which == B_MINI_ICON ? 15 : 31;
        BBitmap icon(BRect(0, 0, last, last), B_CMAP8);
        return info.GetIcon(&icon, which) == B_OK ? *static_cast<const char*>(icon.Bits()) : -1;
    }

    BNode fSource;
};

TEST_F(FileInfoCopyTest, AnEmptyFileGetsItsTypeApplicationAndIcons)
{
    BNodeInfo from(&fSource);
    ASSERT_EQ(from.SetType("text/x-note"), B_OK);
    ASSERT_EQ(from.SetPreferredApp("application/x-vnd.Note"), B_OK);
    BBitmap mini(BRect(0, 0, 15, 15), B_CMAP8);
    BBitmap large(BRect(0, 0, 31, 31), B_CMAP8);
    FillIcon(mini, 5);
    FillIcon(large, 7);
    ASSERT_EQ(from.SetIcon(&mini, B_MINI_ICON), B_OK);
    ASSERT_EQ(from.SetIcon(&large, B_LARGE_ICON), B_OK);
    EXPECT_TRUE(Copy("from/empty", "to"));
    EXPECT_TRUE(fIsWhole);
    BNode target(fTree.Path("to/empty").c_str());
    const BNodeInfo to(&target);
    char text[B_FILE_NAME_LENGTH] = "";
    EXPECT_EQ(to.GetType(text), B_OK);
    EXPECT_STREQ(text, "text/x-note");
    EXPECT_EQ(to.GetPreferredApp(text), B_OK);
    EXPECT_STREQ(text, "application/x-vnd.Note");
    EXPECT_EQ(FirstPixel(to, B_MINI_ICON), 5);
    EXPECT_EQ(FirstPixel(to, B_LARGE_ICON), 7);
}

TEST_F(FileInfoCopyTest, NothingElseGoesAlong)
{
    EXPECT_TRUE(Copy("from/empty", "to"));
    BNode target(fTree.Path("to/empty").c_str());
    EXPECT_EQ(target.CountAttrs(), 0);
}

} // namespace norvane
