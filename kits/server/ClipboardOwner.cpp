#include "ClipboardOwner.h"

#include <OS.h>

#include <xcb/xcb.h>

#include <poll.h>

#include <cstdlib>
#include <cstring>
#include <memory>

namespace kits {

namespace {

template<typename Reply>
using ReplyPointer = std::unique_ptr<Reply, decltype(&std::free)>;

xcb_atom_t Atom(xcb_connection_t* connection, const char* name)
{
    const auto request =
        xcb_intern_atom(connection, 0, static_cast<uint16_t>(std::strlen(name)), name);
    const ReplyPointer<xcb_intern_atom_reply_t> reply(
        xcb_intern_atom_reply(connection, request, nullptr), &std::free);
    return reply != nullptr ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

bool HasOwner(xcb_connection_t* connection, xcb_atom_t selection)
{
    const auto request = xcb_get_selection_owner(connection, selection);
    const ReplyPointer<xcb_get_selection_owner_reply_t> reply(
        xcb_get_selection_owner_reply(connection, request, nullptr), &std::free);
    return reply != nullptr && reply->owner != xcb_window_t{XCB_WINDOW_NONE};
}

// A window of ours, never shown, to which the owner sends its answer.
xcb_window_t MakeAsker(xcb_connection_t* connection, int screen)
{
    xcb_screen_iterator_t screens = xcb_setup_roots_iterator(xcb_get_setup(connection));
    for (int i = 0; i < screen && screens.rem > 1; ++i) {
        xcb_screen_next(&screens);
    }
    const xcb_window_t window = xcb_generate_id(connection);
    xcb_create_window(connection, XCB_COPY_FROM_PARENT, window, screens.data->root, 0, 0, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
    return window;
}

bool AwaitAnswer(xcb_connection_t* connection, bigtime_t deadline)
{
    while (xcb_connection_has_error(connection) == 0) {
        while (xcb_generic_event_t* event = xcb_poll_for_event(connection)) {
            const ReplyPointer<xcb_generic_event_t> owned(event, &std::free);
            constexpr uint8 kSentBit = 0x80;
            if ((event->response_type & ~kSentBit) == XCB_SELECTION_NOTIFY) {
                return true;
            }
        }
        const bigtime_t left = deadline - system_time();
        if (left <= 0) {
            return false;
        }
        pollfd descriptor = {xcb_get_file_descriptor(connection), POLLIN, 0};
        poll(&descriptor, 1, static_cast<int>(left / 1000) + 1);
    }
    return false;
}

} // namespace

OwnerState AskOwner(ClipboardKind kind, bigtime_t limit)
{
    const bigtime_t deadline = system_time() + limit;
    int screen = 0;
    const std::unique_ptr<xcb_connection_t, decltype(&xcb_disconnect)> connection(
        xcb_connect(nullptr, &screen), &xcb_disconnect);
    if (connection == nullptr || xcb_connection_has_error(connection.get()) != 0) {
        return OwnerState::kSilent;
    }
    const xcb_atom_t selection = kind == ClipboardKind::kPrimary
                                     ? xcb_atom_t{XCB_ATOM_PRIMARY}
                                     : Atom(connection.get(), "CLIPBOARD");
    if (!HasOwner(connection.get(), selection)) {
        return OwnerState::kAbsent;
    }
    const xcb_window_t asker = MakeAsker(connection.get(), screen);
    const xcb_atom_t targets = Atom(connection.get(), "TARGETS");
    xcb_convert_selection(connection.get(), asker, selection, targets, targets, XCB_CURRENT_TIME);
    xcb_flush(connection.get());
    return AwaitAnswer(connection.get(), deadline) ? OwnerState::kAnswers : OwnerState::kSilent;
}

} // namespace kits
