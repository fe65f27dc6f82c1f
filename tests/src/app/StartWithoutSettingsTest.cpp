#include "AppFixture.h"
#include "settings/HomeFolder.h"

namespace norvane {

/// The window where there is no folder for settings and none can be made.
class StartWithoutSettingsTest : public AppFixture
{
protected:
    void SetUp() override
    {
        AppFixture::SetUp();
        fTree.Write("file", "");
        setenv("XDG_CONFIG_HOME", fTree.Path("file/config").c_str(), 1);
    }

    const std::vector<std::string> kTold = {"Couldn't find the preferences directory."};
};

TEST_F(StartWithoutSettingsTest, SaysSoOnceAndStartsWithTheDefaults)
{
    const std::vector<std::string> texts = AnswerAlertsOf([this] {
        fWindow = new NorvaneWindow(BRect(10, 40, 809, 639), true);
        fWindow->Show();
    });
    EXPECT_EQ(texts, kTold);
    ASSERT_TRUE(kits::testing::WaitForFocus(fWindow));
    EXPECT_EQ(CountPanes(), 2);
    EXPECT_EQ(PanePath(0), HomeFolder());
    EXPECT_EQ(PanePath(1), HomeFolder());
}

TEST_F(StartWithoutSettingsTest, SaysSoOnceMoreWhenItCannotSave)
{
    AnswerAlertsOf([this] {
        fWindow = new NorvaneWindow(BRect(10, 40, 809, 639), true);
        fWindow->Show();
    });
    ASSERT_TRUE(kits::testing::WaitForFocus(fWindow));
    EXPECT_EQ(AnswerAlertsOf([this] { Locked([this] { fWindow->SaveSettings(); }); }), kTold);
}

TEST_F(StartWithoutSettingsTest, SaysNothingMoreForWhatIsReadLater)
{
    AnswerAlertsOf([this] {
        fWindow = new NorvaneWindow(BRect(10, 40, 809, 639), true);
        fWindow->Show();
    });
    ASSERT_TRUE(kits::testing::WaitForFocus(fWindow));
    EXPECT_TRUE(AnswerAlertsOf([this] { Send(120); }).empty());
    EXPECT_EQ(CountPanes(), 3);
}

} // namespace norvane
