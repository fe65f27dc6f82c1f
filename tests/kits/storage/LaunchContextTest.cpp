#include "storage/LaunchContext.h"

#include "TempTree.h"
#include "storage/StartNotices.h"

#include <gio/gdesktopappinfo.h>
#include <gtest/gtest.h>

namespace {

using namespace kits;

class CountingNotices : public StartNotices
{
public:
    std::string Begin(const StartingProgram&) override
    {
        return "notice-" + std::to_string(++begun);
    }
    void Fail(const std::string&) override {}

    int begun = 0;
};

/// What the desktop's library is told, which need not look itself whether a program answers.
class LaunchContextTest : public ::testing::Test
{
protected:
    ~LaunchContextTest() override { StartNotices::Set(nullptr); }

    std::string Ask(const std::string& lines)
    {
        fTree.Write("pen.desktop",
                    "[Desktop Entry]\nType=Application\nName=Pen\nExec=/bin/true\n" + lines);
        const Object<GAppInfo> program(reinterpret_cast<GAppInfo*>(
            g_desktop_app_info_new_from_filename(fTree.Path("pen.desktop").c_str())));
        const Object<GAppLaunchContext> context = MakeLaunchContext();
        const Memory<gchar> id(
            g_app_launch_context_get_startup_notify_id(context.get(), program.get(), nullptr));
        return id != nullptr ? id.get() : "none";
    }

    TempTree fTree;
};

TEST_F(LaunchContextTest, TellsOfProgramsThatAnswerAlone)
{
    const auto notices = std::make_shared<CountingNotices>();
    StartNotices::Set(notices);
    EXPECT_EQ(Ask("StartupNotify=true\n"), "notice-1");
    EXPECT_EQ(Ask("StartupNotify=false\n"), "none");
    EXPECT_EQ(Ask(""), "none");
    EXPECT_EQ(notices->begun, 1);
}

TEST_F(LaunchContextTest, TellsNobodyWhereNobodyListens)
{
    EXPECT_EQ(Ask("StartupNotify=true\n"), "none");
}

} // namespace
