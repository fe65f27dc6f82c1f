#include "SelectionReader.h"

#include <OS.h>

#include <xcb/xcb.h>

#include <poll.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <optional>

namespace kits {

namespace {

// How soon a reader that is cancelled notices.
constexpr bigtime_t kCancelInterval = 50'000;
// Read of a property at once, in its units of four bytes.
constexpr uint32_t kChunkUnits = 256 * 1024;
// More is no paste any more: it would only fill the memory.
constexpr size_t kMostBytes = size_t{1} << 30;

template<typename Type>
using Pointer = std::unique_ptr<Type, decltype(&std::free)>;

template<typename Type>
Pointer<Type> Owned(Type* allocated)
{
    return Pointer<Type>(allocated, &std::free);
}

// Text that names no encoding is Latin-1.
std::string Utf8FromLatin1(const std::string& bytes)
{
    std::string text;
    text.reserve(bytes.size());
    for (const char byte : bytes) {
        const auto code = static_cast<uint8>(byte);
        if (code < 0x80) {
            text += byte;
        } else {
            text += static_cast<char>(0xc0 | code >> 6);
            text += static_cast<char>(0x80 | (code & 0x3f));
        }
    }
    return text;
}

/// One reading: asks, waits and takes what comes.
class Reading
{
public:
    using State = SelectionText::State;

    Reading(const char* display, const SelectionLimits& limits, const std::atomic<bool>* cancelled)
        : fConnection(xcb_connect(display, &fScreen), &xcb_disconnect), fCancelled(cancelled),
          fFirstDeadline(system_time() + limits.firstBytes), fDeadline(system_time() + limits.all)
    {
    }

    SelectionText Read(ClipboardKind kind)
    {
        SelectionText text;
        if (!Begin(kind)) {
            return text;
        }
        for (const char* type : {"UTF8_STRING", "text/plain;charset=utf-8", "STRING"}) {
            text.state = TakeType(type);
            if (text.state == State::kNone) {
                continue; // it has nothing of that type
            }
            if (text.state == State::kRead) {
                text.bytes =
                    std::strcmp(type, "STRING") == 0 ? Utf8FromLatin1(fBytes) : std::move(fBytes);
            }
            break;
        }
        return text;
    }

    SelectionFiles ReadFiles(ClipboardKind kind)
    {
        SelectionFiles files;
        if (!Begin(kind)) {
            return files;
        }
        files.state = TakeType("x-special/gnome-copied-files");
        if (files.state == State::kRead) {
            files.addresses = std::move(fBytes);
            files.areCut = files.addresses.starts_with("cut");
            return files;
        }
        if (files.state == State::kNone) {
            files.state = TakeType("text/uri-list");
        }
        if (files.state == State::kRead) {
            files.addresses = std::move(fBytes);
            files.areCut = TakeType("application/x-kde-cutselection") == State::kRead &&
                           fBytes.starts_with('1');
        }
        return files;
    }

private:
    xcb_connection_t* Connection() const { return fConnection.get(); }

    // Whether there is anybody to ask.
    bool Begin(ClipboardKind kind)
    {
        if (xcb_connection_has_error(Connection()) != 0) {
            return false;
        }
        fSelection =
            kind == ClipboardKind::kPrimary ? xcb_atom_t{XCB_ATOM_PRIMARY} : Atom("CLIPBOARD");
        if (!HasOwner(fSelection)) {
            return false;
        }
        if (fWindow == xcb_window_t{XCB_WINDOW_NONE}) {
            fProperty = Atom("NORVANE_TEXT");
            fIncremental = Atom("INCR");
            MakeWindow();
        }
        return true;
    }

    State TakeType(const char* type)
    {
        fBytes.clear();
        return Take(fSelection, Atom(type));
    }

    xcb_atom_t Atom(const char* name)
    {
        const auto request =
            xcb_intern_atom(Connection(), 0, static_cast<uint16_t>(std::strlen(name)), name);
        const auto reply = Owned(xcb_intern_atom_reply(Connection(), request, nullptr));
        return reply != nullptr ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
    }

    bool HasOwner(xcb_atom_t selection)
    {
        const auto request = xcb_get_selection_owner(Connection(), selection);
        const auto reply = Owned(xcb_get_selection_owner_reply(Connection(), request, nullptr));
        return reply != nullptr && reply->owner != xcb_window_t{XCB_WINDOW_NONE};
    }

    // A window that is never shown: the owner puts the text into a property of it.
    void MakeWindow()
    {
        xcb_screen_iterator_t screens = xcb_setup_roots_iterator(xcb_get_setup(Connection()));
        for (int i = 0; i < fScreen && screens.rem > 1; ++i) {
            xcb_screen_next(&screens);
        }
        fWindow = xcb_generate_id(Connection());
        const uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE;
        xcb_create_window(Connection(), XCB_COPY_FROM_PARENT, fWindow, screens.data->root, 0, 0, 1,
                          1, 0, XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT,
                          XCB_CW_EVENT_MASK, &mask);
    }

    State Take(xcb_atom_t selection, xcb_atom_t target)
    {
        xcb_delete_property(Connection(), fWindow, fProperty);
        xcb_convert_selection(Connection(), fWindow, selection, target, fProperty,
                              XCB_CURRENT_TIME);
        const State answer = AwaitAnswer(target);
        if (answer != State::kRead) {
            return answer;
        }
        const std::optional<xcb_atom_t> type = TakeProperty();
        if (!type) {
            return State::kSilent;
        }
        if (*type == fIncremental) {
            fBytes.clear(); // it held the expected size
            return TakeParts();
        }
        return *type == XCB_ATOM_NONE ? State::kNone : State::kRead;
    }

    // kRead: the property is there. kNone: the owner has nothing of the type.
    State AwaitAnswer(xcb_atom_t target)
    {
        for (;;) {
            State state = State::kRead;
            const auto event = NextEvent(&state);
            if (event == nullptr) {
                return state;
            }
            if ((event->response_type & 0x7f) != XCB_SELECTION_NOTIFY) {
                continue;
            }
            const auto* answer = reinterpret_cast<const xcb_selection_notify_event_t*>(event.get());
            if (answer->target == target) {
                return answer->property == XCB_ATOM_NONE ? State::kNone : State::kRead;
            }
        }
    }

    // Each part comes when the one before was removed; an empty one is the last.
    State TakeParts()
    {
        for (;;) {
            State state = State::kRead;
            const auto event = NextEvent(&state);
            if (event == nullptr) {
                return state;
            }
            if ((event->response_type & 0x7f) != XCB_PROPERTY_NOTIFY) {
                continue;
            }
            const auto* change = reinterpret_cast<const xcb_property_notify_event_t*>(event.get());
            if (change->atom != fProperty || change->state != XCB_PROPERTY_NEW_VALUE) {
                continue;
            }
            const size_t before = fBytes.size();
            const std::optional<xcb_atom_t> type = TakeProperty();
            if (!type) {
                return State::kSilent;
            }
            // Without a type the property is gone already: the event was that of the announcement.
            if (*type != XCB_ATOM_NONE && fBytes.size() == before) {
                return State::kRead;
            }
        }
    }

    // Appends the property's bytes and removes it; its type, or nothing when that fails.
    std::optional<xcb_atom_t> TakeProperty()
    {
        uint32_t offset = 0;
        xcb_atom_t type = XCB_ATOM_NONE;
        uint32_t left = 0;
        do {
            const auto request = xcb_get_property(Connection(), 1, fWindow, fProperty,
                                                  XCB_GET_PROPERTY_TYPE_ANY, offset, kChunkUnits);
            const auto reply = Owned(xcb_get_property_reply(Connection(), request, nullptr));
            if (reply == nullptr || fBytes.size() > kMostBytes) {
                return std::nullopt;
            }
            type = reply->type;
            left = reply->bytes_after;
            const int length = xcb_get_property_value_length(reply.get());
            fBytes.append(static_cast<const char*>(xcb_get_property_value(reply.get())),
                          static_cast<size_t>(length));
            offset += static_cast<uint32_t>(length) / 4;
        } while (left > 0);
        fHasBytes = fHasBytes || (type != fIncremental && !fBytes.empty());
        return type;
    }

    // Null when the time is over, the connection broke or nobody waits any more: `*state` says so.
    Pointer<xcb_generic_event_t> NextEvent(State* state)
    {
        xcb_flush(Connection());
        for (;;) {
            if (xcb_generic_event_t* event = xcb_poll_for_event(Connection())) {
                return Owned(event);
            }
            const bigtime_t left = (fHasBytes ? fDeadline : fFirstDeadline) - system_time();
            if (fCancelled != nullptr && *fCancelled) {
                *state = State::kCancelled;
                return Owned<xcb_generic_event_t>(nullptr);
            }
            if (left <= 0 || xcb_connection_has_error(Connection()) != 0) {
                *state = State::kSilent;
                return Owned<xcb_generic_event_t>(nullptr);
            }
            pollfd descriptor = {xcb_get_file_descriptor(Connection()), POLLIN, 0};
            poll(&descriptor, 1, static_cast<int>(std::min(left, kCancelInterval) / 1000) + 1);
        }
    }

    int fScreen = 0;
    const std::unique_ptr<xcb_connection_t, decltype(&xcb_disconnect)> fConnection;
    const std::atomic<bool>* const fCancelled;
    const bigtime_t fFirstDeadline;
    const bigtime_t fDeadline;
    xcb_atom_t fSelection = XCB_ATOM_NONE;
    xcb_window_t fWindow = XCB_WINDOW_NONE;
    xcb_atom_t fProperty = XCB_ATOM_NONE;
    xcb_atom_t fIncremental = XCB_ATOM_NONE;
    std::string fBytes;
    bool fHasBytes = false;
};

} // namespace

SelectionText ReadSelection(const char* display, ClipboardKind kind, const SelectionLimits& limits,
                            const std::atomic<bool>* isCancelled)
{
    return Reading(display, limits, isCancelled).Read(kind);
}

SelectionFiles ReadSelectionFiles(const char* display, ClipboardKind kind,
                                  const SelectionLimits& limits)
{
    Reading reading(display, limits, nullptr);
    SelectionFiles files = reading.ReadFiles(kind);
    if (files.state == SelectionText::State::kNone) {
        SelectionText text = reading.Read(kind);
        files.state = text.state;
        files.text = std::move(text.bytes);
    }
    return files;
}

} // namespace kits
