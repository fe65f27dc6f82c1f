#include "X11StartNotices.h"

#include <unistd.h>
#include <xcb/xcb.h>

#include <atomic>
#include <cstdlib>
#include <cstring>
#include <memory>

namespace kits {

namespace {

constexpr size_t kPieceBytes = 20; // of a message's data

std::atomic<uint32> sLastInput{0};

/// A value as it stands in a message.
std::string Quoted(const std::string& text)
{
    std::string quoted = "\"";
    for (const char letter : text) {
        if (letter == '"' || letter == '\\') {
            quoted += '\\';
        }
        quoted += letter;
    }
    return quoted + '"';
}

xcb_atom_t AtomOf(xcb_connection_t* connection, const char* name)
{
    const std::unique_ptr<xcb_intern_atom_reply_t, decltype(&std::free)> reply(
        xcb_intern_atom_reply(
            connection,
            xcb_intern_atom(connection, 0, static_cast<uint16_t>(std::strlen(name)), name),
            nullptr),
        &std::free);
    return reply != nullptr ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

bool SendPieces(xcb_connection_t* connection, const std::string& message)
{
    const xcb_screen_t* screen = xcb_setup_roots_iterator(xcb_get_setup(connection)).data;
    const xcb_atom_t first = AtomOf(connection, "_NET_STARTUP_INFO_BEGIN");
    const xcb_atom_t further = AtomOf(connection, "_NET_STARTUP_INFO");
    if (screen == nullptr || first == XCB_ATOM_NONE || further == XCB_ATOM_NONE) {
        return false;
    }
    // Who listens tells the messages of several programs apart by the window.
    const xcb_window_t window = xcb_generate_id(connection);
    xcb_create_window(connection, XCB_COPY_FROM_PARENT, window, screen->root, -100, -100, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
    xcb_client_message_event_t event = {};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 8;
    event.window = window;
    event.type = first;
    for (const std::string& piece : PiecesOf(message)) {
        std::memset(event.data.data8, 0, kPieceBytes);
        std::memcpy(event.data.data8, piece.data(), piece.size());
        xcb_send_event(connection, 0, screen->root, XCB_EVENT_MASK_PROPERTY_CHANGE,
                       reinterpret_cast<const char*>(&event));
        event.type = further;
    }
    // Answered when all before it was taken: closing too early would lose it.
    const std::unique_ptr<xcb_get_input_focus_reply_t, decltype(&std::free)> taken(
        xcb_get_input_focus_reply(connection, xcb_get_input_focus(connection), nullptr),
        &std::free);
    return taken != nullptr;
}

bool Send(const std::string& message)
{
    xcb_connection_t* connection = xcb_connect(nullptr, nullptr);
    const bool isSent =
        xcb_connection_has_error(connection) == 0 && SendPieces(connection, message);
    xcb_disconnect(connection);
    return isSent;
}

/// Unlike that of any other start; the desktop reads the time in it.
std::string MakeId()
{
    static std::atomic<uint32> sCount{0};
    char host[256] = "";
    ::gethostname(host, sizeof(host) - 1);
    return "norvane-" + std::to_string(::getpid()) + "-" + std::to_string(sCount++) + "-" + host +
           "_TIME" + std::to_string(sLastInput.load());
}

} // namespace

std::string StartMessage(const StartingProgram& program, const std::string& id)
{
    std::string message = "new: ID=" + Quoted(id) + " NAME=" + Quoted(program.name) +
                          " DESCRIPTION=" + Quoted(program.name) + " SCREEN=0";
    if (!program.icon.empty()) {
        message += " ICON=" + Quoted(program.icon);
    }
    if (!program.windowClass.empty()) {
        message += " WMCLASS=" + Quoted(program.windowClass);
    }
    if (!program.desktopFile.empty()) {
        message += " APPLICATION_ID=" + Quoted(program.desktopFile);
    }
    return message;
}

std::vector<std::string> PiecesOf(const std::string& message)
{
    const std::string whole = message + '\0';
    std::vector<std::string> pieces;
    for (size_t at = 0; at < whole.size(); at += kPieceBytes) {
        pieces.push_back(whole.substr(at, kPieceBytes));
    }
    return pieces;
}

void X11StartNotices::NoteInput(uint32 time)
{
    sLastInput = time;
}

std::string X11StartNotices::Begin(const StartingProgram& program)
{
    const std::string id = MakeId();
    return Send(StartMessage(program, id)) ? id : "";
}

void X11StartNotices::Fail(const std::string& id)
{
    [[maybe_unused]] const bool isSent = Send("remove: ID=" + Quoted(id));
}

} // namespace kits
