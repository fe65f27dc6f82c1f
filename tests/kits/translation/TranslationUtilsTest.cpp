#include "ApplicationEnvironment.h"
#include "TempTree.h"
#include "interface/graphics/BitmapAccess.h"

#include <Bitmap.h>
#include <Entry.h>
#include <TranslationErrors.h>
#include <TranslationUtils.h>

#include <QBuffer>
#include <QImage>
#include <QImageWriter>

#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <string>
#include <sys/inotify.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr unsigned char kTwoPictures[] = {
    0x47, 0x49, 0x46, 0x38, 0x39, 0x61, 0x02, 0x00, 0x01, 0x00, 0xf0, 0x00, 0x00, 0xff, 0x00, 0x00,
    0x00, 0x00, 0x00, 0x21, 0xf9, 0x04, 0x00, 0x00, 0x00, 0x00, 0x00, 0x21, 0xff, 0x0b, 0x4e, 0x45,
    0x54, 0x53, 0x43, 0x41, 0x50, 0x45, 0x32, 0x2e, 0x30, 0x03, 0x01, 0x00, 0x00, 0x00, 0x2c, 0x00,
    0x00, 0x00, 0x00, 0x02, 0x00, 0x01, 0x00, 0x00, 0x02, 0x02, 0x04, 0x0a, 0x00, 0x21, 0xf9, 0x04,
    0x00, 0x00, 0x00, 0x00, 0x00, 0x2c, 0x00, 0x00, 0x00, 0x00, 0x02, 0x00, 0x01, 0x00, 0x80, 0x00,
    0xff, 0x00, 0x00, 0x00, 0x00, 0x02, 0x02, 0x04, 0x0a, 0x00, 0x3b};

rgb_color ColorAt(const BBitmap& bitmap, int32 x, int32 y)
{
    const auto* pixel = static_cast<const uint8*>(bitmap.Bits()) + y * bitmap.BytesPerRow() + x * 4;
    return {pixel[2], pixel[1], pixel[0], pixel[3]};
}

std::string Encoded(const QImage& image, const char* format)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    EXPECT_TRUE(QImageWriter(&buffer, format).write(image));
    return buffer.data().toStdString();
}

// What a camera writes that was held on its side, behind a JPEG's first two bytes.
const std::string kHeldOnItsSide("\xff\xe1\x00\x22"
                                 "Exif\0\0"
                                 "II*\0\x08\0\0\0"
                                 "\x01\0\x12\x01\x03\0\x01\0\0\0\x06\0\0\0"
                                 "\0\0\0\0",
                                 36);

QImage Plain(int width, int height, QColor color)
{
    QImage image(width, height, QImage::Format_RGB32);
    image.fill(color);
    return image;
}

class TranslationUtilsTest : public testing::Test
{
protected:
    std::unique_ptr<BBitmap> Load(const char* name, status_t* status = nullptr)
    {
        status_t unused = B_OK;
        return std::unique_ptr<BBitmap>(BTranslationUtils::GetBitmap(
            fTree.Path(name).c_str(), status != nullptr ? status : &unused));
    }

    status_t StatusOf(const char* name)
    {
        status_t status = B_OK;
        EXPECT_EQ(Load(name, &status), nullptr);
        return status;
    }

    TempTree fTree;
};

TEST_F(TranslationUtilsTest, LoadsAPictureByItsPath)
{
    fTree.Write("red.png", Encoded(Plain(3, 2, Qt::red), "png"));

    const std::unique_ptr<BBitmap> bitmap(
        BTranslationUtils::GetBitmap(fTree.Path("red.png").c_str()));

    ASSERT_NE(bitmap, nullptr);
    EXPECT_EQ(bitmap->Bounds(), BRect(0, 0, 2, 1));
    EXPECT_EQ(bitmap->ColorSpace(), B_RGB32);
    EXPECT_EQ(ColorAt(*bitmap, 2, 1), (rgb_color{255, 0, 0, 255}));
}

TEST_F(TranslationUtilsTest, LoadsAPictureByItsRefThroughALink)
{
    fTree.Write("red.png", Encoded(Plain(3, 2, Qt::red), "png"));
    fTree.Link("link", "red.png");
    entry_ref ref;
    ASSERT_EQ(get_ref_for_path(fTree.Path("link").c_str(), &ref), B_OK);

    const std::unique_ptr<BBitmap> bitmap(BTranslationUtils::GetBitmap(&ref));

    ASSERT_NE(bitmap, nullptr);
    EXPECT_EQ(bitmap->Bounds(), BRect(0, 0, 2, 1));
}

TEST_F(TranslationUtilsTest, KeepsWhatIsTransparent)
{
    QImage image(2, 1, QImage::Format_ARGB32);
    image.setPixel(0, 0, qRgba(10, 20, 30, 40));
    image.setPixel(1, 0, qRgba(1, 2, 3, 255));
    fTree.Write("half.png", Encoded(image, "png"));

    const std::unique_ptr<BBitmap> bitmap = Load("half.png");

    ASSERT_NE(bitmap, nullptr);
    EXPECT_EQ(bitmap->ColorSpace(), B_RGBA32);
    EXPECT_EQ(ColorAt(*bitmap, 0, 0), (rgb_color{10, 20, 30, 40}));
}

TEST_F(TranslationUtilsTest, TakesTheFirstOfSeveralPictures)
{
    fTree.Write("two.gif", {reinterpret_cast<const char*>(kTwoPictures), sizeof(kTwoPictures)});

    const std::unique_ptr<BBitmap> bitmap = Load("two.gif");

    ASSERT_NE(bitmap, nullptr);
    const rgb_color color = ColorAt(*bitmap, 0, 0);
    EXPECT_GT(color.red, 200);
    EXPECT_LT(color.green, 50);
}

TEST_F(TranslationUtilsTest, TurnsAPictureUpright)
{
    std::string photo = Encoded(Plain(16, 8, Qt::blue), "jpg");
    photo.insert(2, kHeldOnItsSide);
    fTree.Write("turned.jpg", photo);

    const std::unique_ptr<BBitmap> bitmap = Load("turned.jpg");

    ASSERT_NE(bitmap, nullptr);
    EXPECT_EQ(bitmap->Bounds(), BRect(0, 0, 7, 15));
}

TEST_F(TranslationUtilsTest, TellsAFormatByTheContentsWhateverTheEndingSays)
{
    fTree.Write("red.jpg", Encoded(Plain(3, 2, Qt::red), "png"));

    EXPECT_NE(Load("red.jpg"), nullptr);
}

TEST_F(TranslationUtilsTest, LoadsADrawing)
{
    fTree.Write("drawing.svg", "<svg xmlns='http://www.w3.org/2000/svg' width='4' height='3'>"
                               "<rect width='4' height='3' fill='#0000ff'/></svg>");

    const std::unique_ptr<BBitmap> bitmap = Load("drawing.svg");

    ASSERT_NE(bitmap, nullptr);
    EXPECT_EQ(bitmap->Bounds(), BRect(0, 0, 3, 2));
    EXPECT_EQ(ColorAt(*bitmap, 1, 1), (rgb_color{0, 0, 255, 255}));
}

TEST_F(TranslationUtilsTest, RefusesATooLargePictureBeforeItIsUnpacked)
{
    fTree.Write("large.ppm", "P6\n20000 20000\n255\n");

    EXPECT_EQ(StatusOf("large.ppm"), B_NO_MEMORY);
}

TEST_F(TranslationUtilsTest, LoadsWhatIsLargerThanAnImageUsuallyIs)
{
    // 200 MB when it is unpacked; few bytes in the file.
    QImage image(20000, 2500, QImage::Format_Mono);
    image.fill(1);
    fTree.Write("broad.png", Encoded(image, "png"));

    const std::unique_ptr<BBitmap> bitmap = Load("broad.png");

    ASSERT_NE(bitmap, nullptr);
    EXPECT_EQ(bitmap->Bounds(), BRect(0, 0, 19999, 2499));
}

TEST_F(TranslationUtilsTest, GivesNothingForDamagedFiles)
{
    const std::string whole = Encoded(Plain(300, 200, Qt::red), "png");
    fTree.Write("cut.png", whole.substr(0, whole.size() / 2));
    fTree.Write("head.png", whole.substr(0, 8));
    fTree.Write("empty.png", "");
    fTree.Write("text.png", "no picture");

    EXPECT_EQ(StatusOf("cut.png"), B_ILLEGAL_DATA);
    EXPECT_EQ(StatusOf("head.png"), B_ILLEGAL_DATA);
    EXPECT_EQ(StatusOf("empty.png"), B_NO_TRANSLATOR);
    EXPECT_EQ(StatusOf("text.png"), B_NO_TRANSLATOR);
}

TEST_F(TranslationUtilsTest, GivesNothingForWhatIsNotThere)
{
    EXPECT_EQ(StatusOf("missing.png"), B_ENTRY_NOT_FOUND);
    EXPECT_EQ(BTranslationUtils::GetBitmap(static_cast<const char*>(nullptr)), nullptr);
    EXPECT_EQ(BTranslationUtils::GetBitmap(static_cast<const entry_ref*>(nullptr)), nullptr);
    fTree.MakeFolder("folder.png");
    EXPECT_EQ(StatusOf("folder.png"), B_BAD_VALUE);
}

TEST_F(TranslationUtilsTest, OpensNoPipe)
{
    const std::string pipe = fTree.Path("pipe.png");
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    const int watch = ::inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
    ASSERT_GE(::inotify_add_watch(watch, pipe.c_str(), IN_OPEN), 0);

    EXPECT_EQ(StatusOf("pipe.png"), B_BAD_VALUE);

    char event[4096];
    EXPECT_LT(::read(watch, event, sizeof(event)), 0) << "the pipe was opened";
    ::close(watch);
}

TEST(BitmapAdoptionTest, KeepsThePixelsWhereTheyAre)
{
    QImage image = Plain(5, 4, Qt::green);
    const uchar* pixels = image.constBits();

    const std::unique_ptr<BBitmap> bitmap = kits::BitmapAccess::Adopt(std::move(image));

    ASSERT_NE(bitmap, nullptr);
    EXPECT_EQ(bitmap->Bits(), pixels);
    EXPECT_EQ(bitmap->Bounds(), BRect(0, 0, 4, 3));
}

TEST(BitmapAdoptionTest, CopiesPixelsThatOthersHold)
{
    QImage image = Plain(5, 4, Qt::green);
    const QImage other = image;

    const std::unique_ptr<BBitmap> bitmap = kits::BitmapAccess::Adopt(std::move(image));

    ASSERT_NE(bitmap, nullptr);
    std::memset(bitmap->Bits(), 0, 4);
    EXPECT_EQ(other.pixel(0, 0), qRgb(0, 255, 0));
}

} // namespace
