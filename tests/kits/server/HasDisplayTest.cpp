#include "ApplicationEnvironment.h"

#include "server/HasDisplay.h"

#include <Application.h>
#include <TempTree.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <map>
#include <string>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace {

/// Sets what tells of displays, and sets it back.
class HasDisplayTest : public ::testing::Test
{
protected:
    HasDisplayTest()
    {
        for (const char* name : {"QT_QPA_PLATFORM", "DISPLAY", "WAYLAND_DISPLAY", "WAYLAND_SOCKET",
                                 "XDG_RUNTIME_DIR"}) {
            const char* value = std::getenv(name);
            fFormer[name] = value != nullptr ? value : "";
            unsetenv(name);
        }
    }
    ~HasDisplayTest() override
    {
        for (const auto& [name, value] : fFormer) {
            value.empty() ? unsetenv(name.c_str()) : setenv(name.c_str(), value.c_str(), 1);
        }
    }

    std::map<std::string, std::string> fFormer;
};

using HasDisplayDeathTest = HasDisplayTest;

TEST_F(HasDisplayTest, NothingNamedIsNone)
{
    EXPECT_FALSE(kits::HasDisplay());
}

TEST_F(HasDisplayTest, ADisplayThatDoesNotAnswerIsNone)
{
    setenv("DISPLAY", ":54321", 1);
    setenv("WAYLAND_DISPLAY", "/nowhere/at/all", 1);

    EXPECT_FALSE(kits::HasDisplay());
}

TEST_F(HasDisplayTest, AHeadlessPlatformIsOne)
{
    setenv("QT_QPA_PLATFORM", "xcb;offscreen", 1);

    EXPECT_TRUE(kits::HasDisplay());
}

TEST_F(HasDisplayTest, APlatformThatIsWantedIsAskedAlone)
{
    setenv("QT_QPA_PLATFORM", "xcb:option", 1);

    EXPECT_FALSE(kits::HasDisplay());
}

TEST_F(HasDisplayTest, ASocketThatListensIsOne)
{
    TempTree tree;
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    tree.Path("wayland-7").copy(address.sun_path, sizeof(address.sun_path) - 1);
    const int file = socket(AF_UNIX, SOCK_STREAM, 0);
    ASSERT_EQ(bind(file, reinterpret_cast<const sockaddr*>(&address), sizeof(address)), 0);
    setenv("XDG_RUNTIME_DIR", tree.Path().c_str(), 1);
    setenv("WAYLAND_DISPLAY", "wayland-7", 1);
    EXPECT_FALSE(kits::HasDisplay()) << "nobody listens";

    ASSERT_EQ(listen(file, 1), 0);

    EXPECT_TRUE(kits::HasDisplay());
    close(file);
}

// In a process of its own: there is one application at a time.
TEST_F(HasDisplayDeathTest, AnApplicationWithoutOneTellsAndGoesOn)
{
    ::testing::GTEST_FLAG(death_test_style) = "threadsafe";
    EXPECT_EXIT(
        {
            gApplicationEnvironment->TearDown();
            status_t status = B_OK;
            {
                BApplication application("application/x-vnd.no-display", &status);
                application.Run();
            }
            std::_Exit(status == B_ERROR ? 3 : 4);
        },
        ::testing::ExitedWithCode(3), "^$");
}

} // namespace
