#include "CaseName.h"
#include "TempTree.h"
#include "WindowFixture.h"

#include <Font.h>
#include <StringView.h>

#include <QFont>
#include <QFontMetricsF>

#include <sys/wait.h>
#include <unistd.h>

#include <climits>
#include <cmath>
#include <cstdio>
#include <cstdlib>

namespace {

constexpr const char* kFamilyVariable = "TEST_FONT_FAMILY";
constexpr const char* kText = "Ångström, gjpqy|";

struct Family
{
    const char* name;
    const char* folder;
    const char* file;
};

void PrintTo(const Family& family, std::ostream* out)
{
    *out << family.name;
}

/// Each test runs in a process of its own where the desktop's font is of another family: a process
/// asks for it only once.
class FontFamilyTest : public ::testing::TestWithParam<Family>
{
protected:
    /// True in the process that is to look at the font. In the first one it starts that process
    /// and takes its result over.
    bool IsInFamily()
    {
        if (std::getenv(kFamilyVariable) != nullptr) {
            return true;
        }
        TempTree tree;
        WriteConfiguration(tree);
        const auto* info = ::testing::UnitTest::GetInstance()->current_test_info();
        const std::string command = std::string(kFamilyVariable) + "='" + GetParam().name +
                                    "' FONTCONFIG_FILE='" + tree.Path("fonts.conf") +
                                    "' GTEST_OUTPUT= '" + OwnProgram() + "' --gtest_filter='" +
                                    info->test_suite_name() + "." + info->name() + "' 2>&1";
        std::string output;
        const int status = Run(command, &output);
        EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << output;
        EXPECT_NE(output.find("[  PASSED  ] 1 test."), std::string::npos) << output;
        return false;
    }

    bool IsInstalled() const
    {
        const std::string path = std::string(GetParam().folder) + "/" + GetParam().file;
        return access(path.c_str(), R_OK) == 0;
    }

private:
    static void WriteConfiguration(TempTree& tree)
    {
        const std::string name = GetParam().name;
        tree.Write("fonts.conf", "<?xml version=\"1.0\"?>\n"
                                 "<!DOCTYPE fontconfig SYSTEM \"urn:fontconfig:fonts.dtd\">\n"
                                 "<fontconfig><dir>" +
                                     std::string(GetParam().folder) +
                                     "</dir><cachedir>/var/cache/fontconfig</cachedir>"
                                     "<cachedir prefix=\"xdg\">fontconfig</cachedir>"
                                     "<match target=\"pattern\"><edit name=\"family\" "
                                     "mode=\"prepend\" binding=\"strong\"><string>" +
                                     name + "</string></edit></match></fontconfig>\n");
    }

    static std::string OwnProgram()
    {
        char path[PATH_MAX] = "";
        const ssize_t length = readlink("/proc/self/exe", path, sizeof(path) - 1);
        return std::string(path, length > 0 ? static_cast<size_t>(length) : 0);
    }

    static int Run(const std::string& command, std::string* output)
    {
        FILE* pipe = popen(command.c_str(), "r");
        if (pipe == nullptr) {
            return -1;
        }
        char part[4096];
        for (size_t got = 0; (got = fread(part, 1, sizeof(part), pipe)) > 0;) {
            output->append(part, got);
        }
        return pclose(pipe);
    }
};

// Of a line of the plain font: what makes fifteen whole units.
constexpr double kRoom = 15.2;

double LineHeight(const QFont& font)
{
    const QFontMetricsF metrics(font);
    return metrics.ascent() + metrics.descent();
}

TEST_P(FontFamilyTest, ThePlainFontIsFifteenUnitsHigh)
{
    ASSERT_TRUE(IsInstalled()) << GetParam().name << " is not in " << GetParam().folder;
    if (!IsInFamily()) {
        return;
    }
    BFont named;
    named.SetFamilyAndStyle(GetParam().name, nullptr);
    named.SetSize(be_plain_font->Size());
    ASSERT_EQ(be_plain_font->StringWidth(kText), named.StringWidth(kText));

    font_height height = {};
    be_plain_font->GetHeight(&height);
    EXPECT_EQ(height.ascent + height.descent, 15);
    EXPECT_EQ(height.ascent, std::floor(height.ascent));
    QFont font(GetParam().name);
    font.setPixelSize(static_cast<int>(be_plain_font->Size()));
    EXPECT_LE(LineHeight(font), kRoom);
    EXPECT_EQ(height.descent, std::round(QFontMetricsF(font).descent()));
    font.setPixelSize(font.pixelSize() + 1);
    EXPECT_GT(LineHeight(font), kRoom);
}

/// How many pixels of letters a window shows from `left` to `right`.
int32 Ink(const kits::testing::Picture& picture, int32 left, int32 right)
{
    const rgb_color paper = picture.At(0, 0);
    return (right - left) * picture.height - picture.Count(paper, left, 0, right, picture.height);
}

TEST_P(FontFamilyTest, LowStringViewsAreAsHighAsTheFontAndShowWholeLetters)
{
    ASSERT_TRUE(IsInstalled()) << GetParam().name << " is not in " << GetParam().folder;
    if (!IsInFamily()) {
        return;
    }
    auto* window = new BWindow(BRect(100, 100, 399, 199), "text", B_TITLED_WINDOW, 0);
    auto* low = new BStringView(BRect(10, 40, 99, 45), "low", kText);
    auto* high = new BStringView(BRect(110, 30, 199, 69), "high", kText);
    auto* large = new BStringView(BRect(210, 40, 299, 45), "large", "Ag|");
    large->SetFontSize(31);
    for (BStringView* view : {low, high, large}) {
        window->AddChild(view);
    }
    window->Show();
    const kits::testing::Picture picture = kits::testing::TakePicture(window);

    ASSERT_TRUE(window->Lock());
    EXPECT_EQ(low->Frame(), BRect(10, 35, 99, 49)); // nine units more: five above, four below
    EXPECT_EQ(high->Frame(), BRect(110, 30, 199, 69));
    font_height height = {};
    large->GetFontHeight(&height);
    EXPECT_EQ(large->Frame().Height() + 1, height.ascent + height.descent);
    EXPECT_LE(std::fabs(large->Frame().top + large->Frame().bottom - (40 + 45)), 1);
    window->Quit();
    EXPECT_GT(Ink(picture, 0, 100), 50);
    EXPECT_EQ(Ink(picture, 0, 100), Ink(picture, 100, 200));
}

INSTANTIATE_TEST_SUITE_P(
    Families, FontFamilyTest,
    ::testing::Values(Family{"DejaVu Sans", "/usr/share/fonts/truetype/dejavu", "DejaVuSans.ttf"},
                      Family{"Noto Sans", "/usr/share/fonts/truetype/noto", "NotoSans-Regular.ttf"},
                      Family{"Liberation Sans", "/usr/share/fonts/truetype/liberation",
                             "LiberationSans-Regular.ttf"}),
    [](const auto& tested) { return CaseName(tested.param.name); });

} // namespace
