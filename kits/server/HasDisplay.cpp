#include "HasDisplay.h"

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>
#include <xcb/xcb.h>

#include <cstdlib>
#include <cstring>
#include <sstream>
#include <string>

namespace kits {

namespace {

std::string Variable(const char* name)
{
    const char* value = std::getenv(name);
    return value != nullptr ? value : "";
}

bool AnswersX11()
{
    xcb_connection_t* connection = xcb_connect(nullptr, nullptr);
    const bool isOpen = xcb_connection_has_error(connection) == 0;
    xcb_disconnect(connection);
    return isOpen;
}

bool TakesConnections(const std::string& path)
{
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (path.size() >= sizeof(address.sun_path)) {
        return false;
    }
    std::memcpy(address.sun_path, path.data(), path.size());
    const int file = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const bool isOpen =
        connect(file, reinterpret_cast<const sockaddr*>(&address), sizeof(address)) == 0;
    close(file);
    return isOpen;
}

bool AnswersWayland()
{
    if (!Variable("WAYLAND_SOCKET").empty()) {
        return true; // open already, and for one client: not to be tried
    }
    std::string name = Variable("WAYLAND_DISPLAY");
    if (name.empty()) {
        name = "wayland-0";
    }
    return TakesConnections(name[0] == '/' ? name : Variable("XDG_RUNTIME_DIR") + "/" + name);
}

bool Answers(const std::string& platform)
{
    if (platform == "xcb") {
        return AnswersX11();
    }
    return platform.rfind("wayland", 0) != 0 || AnswersWayland();
}

} // namespace

bool HasDisplay()
{
    // "first;second:with options", tried in turn.
    std::istringstream wanted(Variable("QT_QPA_PLATFORM"));
    bool isAnyWanted = false;
    for (std::string platform; std::getline(wanted, platform, ';');) {
        isAnyWanted = true;
        if (Answers(platform.substr(0, platform.find(':')))) {
            return true;
        }
    }
    return !isAnyWanted && (AnswersX11() || AnswersWayland());
}

} // namespace kits
