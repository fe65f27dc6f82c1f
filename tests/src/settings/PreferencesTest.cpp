#include "settings/Preferences.h"

#include "SettingsFixture.h"

#include <Errors.h>
#include <Message.h>

namespace norvane {

namespace {

using PreferencesTest = SettingsFixture;

TEST_F(PreferencesTest, MissingOnesAreTheDefaults)
{
    EXPECT_EQ(Preferences::Read(), Preferences());

    Write("ShowHeader=0\n");
    Preferences expected;
    expected.showsHeader = false;
    EXPECT_EQ(Preferences::Read(), expected);
    EXPECT_EQ(expected.dateFormat, "%D %R");
}

TEST_F(PreferencesTest, AnyNumberButZeroIsOn)
{
    Write("DateFormat=%T\nShowProgressBar=00\nShowHeader=7\nShowFooter=no\n");

    const Preferences read = Preferences::Read();

    EXPECT_EQ(read.dateFormat, "%T");
    EXPECT_FALSE(read.showsProgress);
    EXPECT_TRUE(read.showsHeader);
    EXPECT_FALSE(read.showsFooter);
}

TEST_F(PreferencesTest, AllAreWrittenInTheirOrderAndReadAgain)
{
    Preferences preferences;
    preferences.dateFormat = "%a %b %d %x %Y";
    preferences.showsFooter = false;

    ASSERT_EQ(preferences.Write(), B_OK);

    const std::string lines = "DateFormat=%a %b %d %x %Y\nShowProgressBar=1\nShowHeader=1\n"
                              "ShowFooter=0\n";
    EXPECT_EQ(Contents().substr(0, lines.size()), lines);
    EXPECT_EQ(Preferences::Read(), preferences);
}

TEST_F(PreferencesTest, LongerValuesLoseNoOtherSetting)
{
    Write("DateFormat=%T\nPane0=/home\nNumPanes=1\n");
    Preferences preferences;

    ASSERT_EQ(preferences.Write(), B_OK);

    for (const char* line : {"DateFormat=%D %R\n", "Pane0=/home\n", "NumPanes=1\n"}) {
        EXPECT_NE(Contents().find(line), std::string::npos) << line;
    }
}

TEST_F(PreferencesTest, FormatThatNoLineHoldsIsRefusedAndNothingWritten)
{
    Write("DateFormat=%T\n");
    Preferences preferences;
    preferences.dateFormat = "%D\n%T";

    EXPECT_EQ(preferences.Write(), B_BAD_VALUE);

    EXPECT_EQ(Contents(), "DateFormat=%T\n");
}

TEST_F(PreferencesTest, ExtrasThatWereNeverOnLeaveNoLine)
{
    const Preferences preferences;

    ASSERT_EQ(preferences.Write(), B_OK);

    EXPECT_EQ(Contents(), "DateFormat=%D %R\nShowProgressBar=1\nShowHeader=1\nShowFooter=1\n");
}

TEST_F(PreferencesTest, ExtrasAreStoredAndTakenBack)
{
    Preferences preferences;
    preferences.showsReadableSizes = true;
    ASSERT_EQ(preferences.Write(), B_OK);
    EXPECT_EQ(Preferences::Read(), preferences);

    preferences.showsReadableSizes = false;
    ASSERT_EQ(preferences.Write(), B_OK);
    EXPECT_EQ(Preferences::Read(), preferences);
    EXPECT_NE(Contents().find("\nReadableSizes=0\n"), std::string::npos);
}

TEST_F(PreferencesTest, FontSizeIsStoredAndTakenBack)
{
    Preferences preferences;
    preferences.fontSize = 18;
    ASSERT_EQ(preferences.Write(), B_OK);
    EXPECT_EQ(Preferences::Read().fontSize, 18);
    BMessage message;
    preferences.AddTo(&message);
    EXPECT_EQ(Preferences::In(message), preferences);
    EXPECT_TRUE(Preferences().DiffersInExtrasAlone(preferences));

    preferences.fontSize = 12;
    ASSERT_EQ(preferences.Write(), B_OK);
    EXPECT_EQ(Preferences::Read().fontSize, 12);
    EXPECT_NE(Contents().find("\nFontSize=12\n"), std::string::npos);
}

TEST_F(PreferencesTest, FontSizeThatNoRowCanHaveIsNone)
{
    for (const char* size : {"", "x", "0", "7", "37", "-12", "99999999999"}) {
        Write(std::string("FontSize=") + size + "\n");
        EXPECT_EQ(Preferences::Read().fontSize, 12) << size;
    }
    for (const int32 size : {8, 36}) {
        Write("FontSize=" + std::to_string(size) + "\n");
        EXPECT_EQ(Preferences::Read().fontSize, size);
    }
    BMessage message;
    message.AddInt32("FontSize", 1000);
    EXPECT_EQ(Preferences::In(message).fontSize, 12);
}

TEST_F(PreferencesTest, TellExtrasFromTheRest)
{
    const Preferences plain;
    Preferences extra;
    extra.showsReadableSizes = true;
    Preferences both = extra;
    both.showsHeader = false;

    EXPECT_TRUE(plain.DiffersInExtrasAlone(extra));
    EXPECT_FALSE(plain.DiffersInExtrasAlone(plain));
    EXPECT_FALSE(plain.DiffersInExtrasAlone(both));
    EXPECT_TRUE(Preferences(both) != extra);
}

TEST_F(PreferencesTest, GoThroughAMessage)
{
    Preferences preferences;
    preferences.dateFormat = "%D %T";
    preferences.showsProgress = false;
    preferences.showsReadableSizes = true;
    BMessage message('test');

    preferences.AddTo(&message);

    EXPECT_EQ(Preferences::In(message), preferences);
    EXPECT_EQ(Preferences::In(BMessage('none')), Preferences());
}

} // namespace

} // namespace norvane
