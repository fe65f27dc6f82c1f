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

/// A socket in a folder of its own, to which nobody listens at first.
class Socket
{
public:
    Socket() : fFile(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0))
    {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        Path().copy(address.sun_path, sizeof(address.sun_path) - 1);
        EXPECT_EQ(bind(fFile, reinterpret_cast<const sockaddr*>(&address), sizeof(address)), 0);
    }
    ~Socket() { close(fFile); }
    Socket(const Socket&) = delete;
    Socket& operator=(const Socket&) = delete;

    void Listen() { EXPECT_EQ(listen(fFile, 1), 0); }
    std::string Folder() const { return fTree.Path(); }
    std::string Path() const { return fTree.Path("wayland-7"); }

private:
    TempTree fTree;
    const int fFile;
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
    Socket another;
    another.Listen();
    setenv("WAYLAND_DISPLAY", another.Path().c_str(), 1);
    setenv("QT_QPA_PLATFORM", "xcb:option", 1);

    EXPECT_FALSE(kits::HasDisplay());
}

TEST_F(HasDisplayTest, ASocketThatListensIsOne)
{
    Socket socket;
    setenv("XDG_RUNTIME_DIR", socket.Folder().c_str(), 1);
    setenv("WAYLAND_DISPLAY", "wayland-7", 1);
    EXPECT_FALSE(kits::HasDisplay()) << "nobody listens";

    socket.Listen();

    EXPECT_TRUE(kits::HasDisplay());
}

TEST_F(HasDisplayTest, ASocketMayBeNamedByItsPath)
{
    Socket socket;
    socket.Listen();
    setenv("XDG_RUNTIME_DIR", "/nowhere/at/all", 1);
    setenv("WAYLAND_DISPLAY", socket.Path().c_str(), 1);

    EXPECT_TRUE(kits::HasDisplay());
}

TEST_F(HasDisplayTest, ASocketThatIsOpenAlreadyIsOne)
{
    setenv("WAYLAND_SOCKET", "7", 1); // which is for one client: nobody tries it

    EXPECT_TRUE(kits::HasDisplay());
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
