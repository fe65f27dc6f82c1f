#include "settings/SettingsWriter.h"

#include "SettingsFixture.h"
#include "settings/Profile.h"

#include <Errors.h>

#include <map>
#include <random>

namespace {

using norvane::SettingsWriter;

class SettingsWriterTest : public SettingsFixture
{
protected:
    static SettingsWriter Writer()
    {
        return {"Norvane", "Norvane.pref", norvane::MainSettingsKeys()};
    }

    static std::string Get(const std::string& key)
    {
        std::string value = "(missing)";
        norvane::GetProfileString("Norvane", key.c_str(), value, "Norvane.pref");
        return value;
    }
};

TEST_F(SettingsWriterTest, BringsBackANeighbourThatWasOverwritten)
{
    Write("Width=800\nHeight=600\nDateFormat=%d.%m.\n");
    SettingsWriter writer = Writer();
    writer.Set("Width", 12345);
    EXPECT_EQ(writer.Write(), B_OK);
    EXPECT_EQ(Get("Width"), "12345");
    EXPECT_EQ(Get("Height"), "600");
    EXPECT_EQ(Get("DateFormat"), "%d.%m.");
}

TEST_F(SettingsWriterTest, WritesNothingThatHoldsAlready)
{
    Write("Width=800\nHeight=600\n");
    SettingsWriter writer = Writer();
    writer.Set("Width", 800);
    EXPECT_EQ(writer.Write(), B_OK);
    EXPECT_EQ(Contents(), "Width=800\nHeight=600\n");
}

TEST_F(SettingsWriterTest, SeesThroughAFragmentThatReadsLikeAKey)
{
    Write("Pane0=/a/bcTop=9\nTop=40\n");
    SettingsWriter writer = Writer();
    writer.SetPath("Pane0", "/a");
    EXPECT_EQ(writer.Write(), B_OK);
    EXPECT_EQ(Get("Pane0"), "/a");
    EXPECT_EQ(Get("Top"), "40");
}

TEST_F(SettingsWriterTest, HoldsThroughManyRandomChanges)
{
    std::mt19937 random(7);
    std::map<std::string, std::string> wanted;
    for (int round = 0; round < 40; round++) {
        SettingsWriter writer = Writer();
        for (const std::string& key : norvane::MainSettingsKeys()) {
            if (random() % 3 == 0) {
                wanted[key] = std::string(random() % 60, static_cast<char>('a' + round % 26));
                writer.Set(key, wanted[key]);
            }
        }
        ASSERT_EQ(writer.Write(), B_OK) << "round " << round;
        for (const auto& [key, value] : wanted) {
            ASSERT_EQ(Get(key), value) << key << " in round " << round;
        }
    }
}

TEST_F(SettingsWriterTest, RefusesLineFeedsAndValuesThatAreTooLong)
{
    SettingsWriter writer = Writer();
    EXPECT_FALSE(writer.Set("DateFormat", std::string("%D\n%R")));
    EXPECT_FALSE(writer.Set("DateFormat", std::string(250, 'x')));
    EXPECT_EQ(writer.Write(), B_OK);
    EXPECT_EQ(Get("DateFormat"), "(missing)");
}

TEST_F(SettingsWriterTest, SavesTheLongestParentThatFits)
{
    const std::string parent = "/home/" + std::string(100, 'p');
    SettingsWriter writer = Writer();
    EXPECT_TRUE(writer.SetPath("Pane0", parent + "/" + std::string(200, 'c') + "/x"));
    EXPECT_TRUE(writer.SetPath("Pane1", "/with\nfeed/below"));
    EXPECT_TRUE(writer.SetPath("Pane2", "/good/below\n"));
    EXPECT_TRUE(writer.SetPath("Pane3", "/"));
    EXPECT_EQ(writer.Write(), B_OK);
    EXPECT_EQ(Get("Pane0"), parent);
    EXPECT_EQ(Get("Pane1"), "/");
    EXPECT_EQ(Get("Pane2"), "/good");
    EXPECT_EQ(Get("Pane3"), "/");
}

TEST_F(SettingsWriterTest, WritesNewKeysInTheOrderInWhichTheyWereSet)
{
    Write("Height=600\n");
    SettingsWriter writer = Writer();
    for (const char* key : {"Top", "NumPanes", "Left"}) {
        writer.Set(key, 1);
    }
    writer.Set("Top", 2);
    EXPECT_EQ(writer.Write(), B_OK);
    EXPECT_EQ(Contents(), "Height=600\nTop=2\nNumPanes=1\nLeft=1\n");
}

TEST_F(SettingsWriterTest, TellsWhyItCouldNotWrite)
{
    fTree.MakeFolder("config/Norvane/Norvane.pref");
    SettingsWriter writer = Writer();
    writer.Set("Left", 1);
    EXPECT_EQ(writer.Write(), B_IS_A_DIRECTORY);
}

TEST_F(SettingsWriterTest, CreatesTheFile)
{
    SettingsWriter writer = Writer();
    writer.Set("Left", -5);
    EXPECT_EQ(writer.Write(), B_OK);
    EXPECT_EQ(Contents(), "Left=-5\n");
}

} // namespace
