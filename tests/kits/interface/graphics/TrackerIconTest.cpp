#include "ApplicationEnvironment.h"
#include "interface/graphics/BitmapAccess.h"
#include "interface/graphics/IconDrawings.h"
#include "interface/graphics/IconKinds.h"

#include <Bitmap.h>
#include <Entry.h>
#include <Node.h>
#include <NodeInfo.h>

#include <QIcon>
#include <TempTree.h>
#include <cstring>
#include <gtest/gtest.h>
#include <set>
#include <string>
#include <sys/xattr.h>
#include <testing/Native.h>

using kits::IconKind;

namespace {

const BRect kMini(0, 0, 15, 15);

IconKind IconKindOfEntry(const char* name, mode_t mode)
{
    return kits::LookOfEntry(name, mode)->kind;
}

std::string Pixels(const QImage& image)
{
    return std::string(reinterpret_cast<const char*>(image.constBits()),
                       static_cast<size_t>(image.sizeInBytes()));
}

std::string Pixels(const BBitmap& bitmap)
{
    return std::string(static_cast<const char*>(bitmap.Bits()),
                       static_cast<size_t>(bitmap.BitsLength()));
}

} // namespace

TEST(TrackerIconTest, DrawsEveryKindDifferently)
{
    for (const int32 size : {16, 32, 64}) {
        std::set<std::string> drawings;
        for (int32 kind = 0; kind < kits::kIconKinds; ++kind) {
            const QImage icon = kits::DrawIcon(static_cast<IconKind>(kind), size);
            EXPECT_EQ(icon.width(), size);
            drawings.insert(Pixels(icon));
        }
        EXPECT_EQ(drawings.size(), static_cast<size_t>(kits::kIconKinds));
    }
}

TEST(TrackerIconTest, KnowsKindsByNameAndMode)
{
    EXPECT_EQ(IconKindOfEntry("a.png", S_IFDIR | 0755), IconKind::kFolder);
    EXPECT_EQ(IconKindOfEntry("a.png", S_IFLNK | 0777), IconKind::kLink);
    EXPECT_EQ(IconKindOfEntry("a.png", S_IFREG | 0644), IconKind::kImage);
    EXPECT_EQ(IconKindOfEntry("A.PNG", S_IFREG | 0755), IconKind::kImage);
    EXPECT_EQ(IconKindOfEntry("a.txt", S_IFREG | 0644), IconKind::kText);
    EXPECT_EQ(IconKindOfEntry("a.mp3", S_IFREG | 0644), IconKind::kSound);
    EXPECT_EQ(IconKindOfEntry("a.mkv", S_IFREG | 0644), IconKind::kVideo);
    EXPECT_EQ(IconKindOfEntry("a.tar.gz", S_IFREG | 0644), IconKind::kArchive);
    EXPECT_EQ(IconKindOfEntry("a.zip", S_IFREG | 0644), IconKind::kArchive);
    EXPECT_EQ(IconKindOfEntry("tool", S_IFREG | 0755), IconKind::kProgram);
    EXPECT_EQ(IconKindOfEntry("\xff\xfe", S_IFREG | 0644), IconKind::kGeneric);
    EXPECT_EQ(IconKindOfEntry("fifo", S_IFIFO | 0644), IconKind::kGeneric);
}

TEST(TrackerIconTest, FillsOnlyBitmapsThatFit)
{
    BBitmap wrong(BRect(0, 0, 16, 15), B_CMAP8);
    BBitmap icon(kMini, B_CMAP8);
    const std::string empty = Pixels(icon);

    EXPECT_EQ(BNodeInfo::GetTrackerIcon("a", S_IFREG, &wrong, B_MINI_ICON), B_BAD_VALUE);
    EXPECT_EQ(BNodeInfo::GetTrackerIcon("a", S_IFREG, &icon, B_LARGE_ICON), B_BAD_VALUE);
    EXPECT_EQ(BNodeInfo::GetTrackerIcon("a", S_IFREG, nullptr, B_MINI_ICON), B_BAD_VALUE);
    EXPECT_EQ(Pixels(icon), empty);
    EXPECT_EQ(BNodeInfo::GetTrackerIcon("a", S_IFREG, &icon, B_MINI_ICON), B_OK);
    EXPECT_NE(Pixels(icon), empty);
}

TEST(TrackerIconTest, KeepsStoredIcons)
{
    TempTree tree;
    tree.Write("a", "");
    if (setxattr(tree.Path("a").c_str(), "user.probe", "x", 1, 0) != 0) {
        GTEST_SKIP() << "the file system of temporary files keeps no extended attributes";
    }
    BNode node(tree.Path("a").c_str());
    BNodeInfo info(&node);
    BBitmap stored(kMini, B_CMAP8);
    BBitmap read(kMini, B_CMAP8);
    std::memset(stored.Bits(), 42, static_cast<size_t>(stored.BitsLength()));

    EXPECT_EQ(info.GetIcon(&read, B_MINI_ICON), B_ENTRY_NOT_FOUND);
    EXPECT_EQ(info.SetIcon(&stored, B_MINI_ICON), B_OK);
    EXPECT_EQ(info.GetIcon(&read, B_MINI_ICON), B_OK);
    EXPECT_EQ(Pixels(read), Pixels(stored));
    EXPECT_EQ(info.GetTrackerIcon(&read, B_MINI_ICON), B_OK);
    EXPECT_EQ(Pixels(read), Pixels(stored));
    EXPECT_EQ(info.SetIcon(nullptr, B_MINI_ICON), B_OK);
    EXPECT_EQ(info.GetIcon(&read, B_MINI_ICON), B_ENTRY_NOT_FOUND);
}

TEST(TrackerIconTest, IsTheSameByRefAndByName)
{
    TempTree tree;
    tree.MakeFolder("folder");
    tree.Write("a.txt", "");
    for (const auto& [name, mode] : {std::pair("folder", S_IFDIR), std::pair("a.txt", S_IFREG)}) {
        entry_ref ref;
        ASSERT_EQ(get_ref_for_path(tree.Path(name).c_str(), &ref), B_OK);
        BBitmap byRef(kMini, B_CMAP8);
        BBitmap byName(kMini, B_CMAP8);

        EXPECT_EQ(BNodeInfo::GetTrackerIcon(&ref, &byRef, B_MINI_ICON), B_OK);
        EXPECT_EQ(BNodeInfo::GetTrackerIcon(name, mode | 0644u, &byName, B_MINI_ICON), B_OK);
        EXPECT_EQ(Pixels(byRef), Pixels(byName)) << name;
    }
}

namespace {

/// An icon theme whose icons are squares of one colour, at 16 pixels and, darker, at 24.
class ThemeTest : public testing::Test
{
protected:
    void SetUp() override
    {
        fTree.Write("probe/index.theme", "[Icon Theme]\nName=probe\nDirectories=16,24\n"
                                         "[16]\nSize=16\nType=Fixed\n[24]\nSize=24\nType=Fixed\n");
        Put("application-x-dvi", Qt::red);
        Put("x-office-spreadsheet", Qt::green);
        Put("video-x-generic", Qt::blue);
        Put("drive-harddisk", Qt::magenta);
        kits::testing::OnServer([this] {
            fPaths = QIcon::themeSearchPaths();
            fName = QIcon::themeName();
            QIcon::setThemeSearchPaths({QString::fromStdString(fTree.Path())});
            QIcon::setThemeName(QStringLiteral("probe"));
        });
    }
    void TearDown() override
    {
        kits::testing::OnServer([this] {
            QIcon::setThemeSearchPaths(fPaths);
            QIcon::setThemeName(fName);
        });
    }

    void Put(const std::string& name, QColor color)
    {
        for (const int size : {16, 24}) {
            const std::string folder = "probe/" + std::to_string(size);
            fTree.MakeFolder(folder);
            QImage image(size, size, QImage::Format_ARGB32);
            image.fill(size == 16 ? color : color.darker());
            image.save(QString::fromStdString(fTree.Path(folder + "/" + name + ".png")));
        }
    }
    static QImage Draw(const char* name, double scale, mode_t type = S_IFREG)
    {
        BBitmap icon(kMini, B_CMAP8);
        EXPECT_EQ(BNodeInfo::GetTrackerIcon(name, type | 0644, &icon, B_MINI_ICON), B_OK);
        return kits::BitmapAccess::Picture(icon, QRectF(0, 0, 16, 16), scale, true).image;
    }

    TempTree fTree;
    QStringList fPaths;
    QString fName;
};

} // namespace

// The suffixes are of nobody else's tests: absent icons are remembered, too.
TEST_F(ThemeTest, HasIconsForTypes)
{
    EXPECT_EQ(Draw("paper.dvi", 1).pixelColor(8, 8), QColor(Qt::red));
}

TEST_F(ThemeTest, HasIconsForKindsOfTypes)
{
    EXPECT_EQ(Draw("sums.sxc", 1).pixelColor(8, 8), QColor(Qt::green));
    EXPECT_EQ(Draw("film.ogm", 1).pixelColor(8, 8), QColor(Qt::blue));
}

// At a size that no other test asks for.
TEST_F(ThemeTest, HasIconsForWhatHasNoType)
{
    EXPECT_EQ(Draw("sda", 1.5, S_IFBLK).pixel(8, 8), QColor(Qt::magenta).darker().rgb());
}

TEST_F(ThemeTest, LeavesTheRestToOurDrawings)
{
    EXPECT_EQ(Pixels(Draw("song.669", 1)), Pixels(kits::DrawIcon(IconKind::kSound, 16)));
}

TEST_F(ThemeTest, IconsAreSharpBetweenWholeScales)
{
    const QImage icon = Draw("paper.dvi", 1.5);
    EXPECT_EQ(icon.size(), QSize(24, 24));
    EXPECT_EQ(icon.pixel(23, 23), QColor(Qt::red).darker().rgb());
    EXPECT_EQ(Pixels(Draw("song.669", 1.25)), Pixels(kits::DrawIcon(IconKind::kSound, 20)));
}
