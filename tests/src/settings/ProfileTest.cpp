#include "settings/Profile.h"

#include "ApplicationEnvironment.h"
#include "SettingsFixture.h"

#include <sys/stat.h>

#include <future>

namespace {

using norvane::GetProfileString;
using norvane::SetProfileString;

class ProfileTest : public SettingsFixture
{
protected:
    /// The value of a key, "(missing)" when there is none.
    static std::string Get(const char* key)
    {
        std::string value = "(missing)";
        GetProfileString("Norvane", key, value, "Norvane.pref");
        return value;
    }

    static bool Set(const char* key, const std::string& value)
    {
        return SetProfileString("Norvane", key, value.c_str(), "Norvane.pref");
    }
};

TEST_F(ProfileTest, ReadsTheExactKeyOnly)
{
    Write("Lefty=3\nTop =40\ntop=41\nLeft=12\n");
    EXPECT_EQ(Get("Left"), "12");
    EXPECT_EQ(Get("Top"), "(missing)");
    EXPECT_EQ(Get("Top "), "40");
}

TEST_F(ProfileTest, ReadsTheFirstOfSeveralLines)
{
    Write("\n0\nTop=1\nTop=2\n");
    EXPECT_EQ(Get("Top"), "1");
}

TEST_F(ProfileTest, KeepsBlanksAndCarriageReturns)
{
    Write("A=  x y \r\nB==\nC=\n");
    EXPECT_EQ(Get("A"), "  x y \r");
    EXPECT_EQ(Get("B"), "=");
    EXPECT_EQ(Get("C"), "");
}

TEST_F(ProfileTest, LosesTheLastCharacterOfAnUnendedLine)
{
    Write("B=9\nA=123");
    EXPECT_EQ(Get("A"), "12");
}

TEST_F(ProfileTest, ReadsNothingFromAnEmptyFile)
{
    Write("");
    EXPECT_EQ(Get("A"), "(missing)");
}

TEST_F(ProfileTest, LeavesTheBufferAloneWhenNothingIsFound)
{
    char value[norvane::kProfileLineBytes] = "default";
    EXPECT_FALSE(GetProfileString("Norvane", "A", value, "Norvane.pref"));
    EXPECT_STREQ(value, "default");
    EXPECT_FALSE(fTree.Exists("config/Norvane"));
}

TEST_F(ProfileTest, LeavesTheRestOfALongerOldLine)
{
    Write("Width=8000\nHeight=600\n");
    EXPECT_TRUE(Set("Width", "90"));
    EXPECT_EQ(Contents(), "Width=90\n0\nHeight=600\n");
    EXPECT_EQ(Get("Height"), "600");
    EXPECT_TRUE(Set("Width", "1000"));
    EXPECT_EQ(Contents(), "Width=1000\nHeight=600\n");
}

TEST_F(ProfileTest, LeavesTheOldLineFeedWhenOneByteIsLeft)
{
    Write("Width=800\nHeight=600\n");
    EXPECT_TRUE(Set("Width", "90"));
    EXPECT_EQ(Contents(), "Width=90\n\nHeight=600\n");
    EXPECT_EQ(Get("Height"), "600");
}

TEST_F(ProfileTest, OverwritesTheNeighbourOfAShorterOldLine)
{
    Write("Width=800\nHeight=600\n");
    EXPECT_TRUE(Set("Width", "12345"));
    EXPECT_EQ(Contents(), "Width=12345\night=600\n");
    EXPECT_EQ(Get("Height"), "(missing)");
    EXPECT_TRUE(Set("Height", "7"));
    EXPECT_EQ(Contents(), "Width=12345\night=600\nHeight=7\n");
}

TEST_F(ProfileTest, AppendsANewKeyEvenToAnUnendedLine)
{
    Write("A=1\nB=2");
    EXPECT_TRUE(Set("C", "3"));
    EXPECT_EQ(Contents(), "A=1\nB=2C=3\n");
}

TEST_F(ProfileTest, CreatesFolderAndFileForTheOwnerAlone)
{
    EXPECT_TRUE(Set("A", "1"));
    EXPECT_EQ(Contents(), "A=1\n");
    struct stat file = {};
    struct stat folder = {};
    ASSERT_EQ(stat(fTree.Path("config/Norvane/Norvane.pref").c_str(), &file), 0);
    ASSERT_EQ(stat(fTree.Path("config/Norvane").c_str(), &folder), 0);
    EXPECT_EQ(file.st_mode & 077, 0u);
    EXPECT_EQ(folder.st_mode & 077, 0u);
}

TEST_F(ProfileTest, TakesAwayWhatOthersMayDoWithAFileThatIsWritten)
{
    Write("A=1\n");
    const std::string file = fTree.Path("config/Norvane/Norvane.pref");
    const std::string folder = fTree.Path("config/Norvane");
    ASSERT_EQ(chmod(file.c_str(), 0646), 0);
    ASSERT_EQ(chmod(folder.c_str(), 0775), 0);
    EXPECT_TRUE(Set("A", "2"));
    struct stat found = {};
    ASSERT_EQ(stat(file.c_str(), &found), 0);
    EXPECT_EQ(found.st_mode & 0777, 0600u);
    ASSERT_EQ(stat(folder.c_str(), &found), 0);
    EXPECT_EQ(found.st_mode & 0777, 0700u);
}

TEST_F(ProfileTest, AddsAFileToAnExistingFolder)
{
    Write("A=1\n");
    EXPECT_TRUE(SetProfileString("Norvane", "Host", "h", "My server.ftp"));
    EXPECT_EQ(fTree.Read("config/Norvane/My server.ftp"), "Host=h\n");
    EXPECT_EQ(Contents(), "A=1\n");
}

TEST_F(ProfileTest, RefusesWhatDoesNotFitALine)
{
    Write("A=1\n");
    EXPECT_TRUE(Set("A", std::string(256, 'x')));
    EXPECT_EQ(Get("A"), std::string(256, 'x'));
    EXPECT_FALSE(Set("A", std::string(257, 'y')));
    EXPECT_FALSE(Set("A", "two\nlines"));
    EXPECT_EQ(Get("A"), std::string(256, 'x'));
}

TEST_F(ProfileTest, PassesOverLinesThatDoNotFit)
{
    Write("A=" + std::string(300, 'x') + "\nB=2\nA=3\n");
    EXPECT_EQ(Get("B"), "2");
    EXPECT_EQ(Get("A"), "3");
}

TEST_F(ProfileTest, PassesOverValuesThatDoNotFitTheBuffer)
{
    Write("F=12345678\nF=123\n");
    char value[8] = "";
    EXPECT_TRUE(GetProfileString("Norvane", "F", value, sizeof(value), "Norvane.pref"));
    EXPECT_STREQ(value, "123");
}

TEST_F(ProfileTest, ReplacesALineThatIsTooLongOnce)
{
    Write("A=" + std::string(300, 'x') + "\nB=2\n");
    EXPECT_TRUE(Set("A", "1"));
    const std::string once = Contents();
    EXPECT_EQ(Get("A"), "1");
    EXPECT_EQ(Get("B"), "2");
    EXPECT_TRUE(Set("A", "1"));
    EXPECT_EQ(Contents(), once);
}

TEST(ProfileCompareTest, IsSymmetric)
{
    EXPECT_TRUE(norvane::Compare("Left", "Left=12"));
    EXPECT_FALSE(norvane::Compare("Left", "Lefty=3"));
    EXPECT_FALSE(norvane::Compare("Left", "left=3"));
    EXPECT_FALSE(norvane::Compare("Left", "Left =3"));
    EXPECT_FALSE(norvane::Compare("Left", "Left"));
    EXPECT_FALSE(norvane::Compare("Left", "Le"));
    EXPECT_TRUE(norvane::Compare("Le=ft", "Le"));
    EXPECT_TRUE(norvane::Compare("", "=x"));
}

TEST_F(ProfileTest, ReadsNothingBehindALineShorterThanItsKey)
{
    Write("Le\n");
    EXPECT_EQ(Get("Le=ft"), "");
}

TEST_F(ProfileTest, ComposesTheFullPath)
{
    char path[1024];
    EXPECT_EQ(norvane::GetSettingFullPath("Norvane", "a.ftp", path), path);
    EXPECT_EQ(std::string(path), fTree.Path("config/Norvane/a.ftp"));
}

TEST_F(ProfileTest, TellsWhenTheFileCannotBeCreated)
{
    fTree.Write("config/Norvane", "a file where the folder should be");
    std::future<bool> result = std::async(std::launch::async, [] { return Set("Top", "1"); });
    EXPECT_NE(kits::testing::WaitForWindow("Hey"), nullptr);
    std::string text;
    EXPECT_TRUE(kits::testing::AnswerAlert("Oh well", &text));
    EXPECT_EQ(text, "Could not create the application preferences file.");
    EXPECT_FALSE(result.get());
}

} // namespace
