#include "AppFixture.h"
#include "settings/HomeFolder.h"

#include <Messenger.h>

#include <chrono>
#include <future>

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

    static constexpr const char* kTitle = "Hey";

    /// Does `work` on a thread of its own and answers each alert it opens; gives their texts.
    std::vector<std::string> AnswerAlertsOf(const std::function<void()>& work)
    {
        std::vector<std::string> texts;
        const std::future<void> done = std::async(std::launch::async, work);
        const auto isDone = [&] {
            return done.wait_for(std::chrono::seconds(0)) == std::future_status::ready;
        };
        const auto isShown = [] {
            return kits::testing::CountShown(kTitle) > 0;
        };
        while (kits::testing::WaitFor([&] { return isDone() || isShown(); }) && !isDone()) {
            const BMessenger alert(nullptr, kits::testing::WaitForWindow(kTitle));
            std::string text;
            EXPECT_TRUE(kits::testing::AnswerAlert("Oh well", &text));
            EXPECT_TRUE(kits::testing::WaitFor([&] { return !alert.IsValid(); }));
            texts.push_back(text);
        }
        EXPECT_TRUE(isDone());
        return texts;
    }
};

TEST_F(StartWithoutSettingsTest, SaysSoAndStartsWithTheDefaults)
{
    const std::vector<std::string> texts = AnswerAlertsOf([this] {
        fWindow = new NorvaneWindow(BRect(10, 40, 809, 639), true);
        fWindow->Show();
    });
    ASSERT_FALSE(texts.empty());
    for (const std::string& text : texts) {
        EXPECT_EQ(text, "Couldn't find the preferences directory.");
    }
    ASSERT_TRUE(kits::testing::WaitForFocus(fWindow));
    EXPECT_EQ(CountPanes(), 2);
    EXPECT_EQ(PanePath(0), HomeFolder());
    EXPECT_EQ(PanePath(1), HomeFolder());
}

} // namespace norvane
