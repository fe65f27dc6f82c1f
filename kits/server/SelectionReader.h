#pragma once

#include "app/ClipboardHooks.h"

#include <SupportDefs.h>

#include <atomic>
#include <string>

namespace kits {

/// How long another program is waited for.
struct SelectionLimits
{
    bigtime_t firstBytes = 1'000'000;
    bigtime_t all = 5'000'000;
};

struct SelectionText
{
    enum class State : uint8 {
        kRead,
        kNone,   // there is no owner, or it has no text
        kSilent, // the owner did not answer in time, or stopped in the middle
        kCancelled,
    };

    State state = State::kNone;
    std::string bytes; // UTF-8; empty unless kRead
};

/// What another program's file manager put there.
struct SelectionFiles
{
    SelectionText::State state = SelectionText::State::kNone;
    std::string addresses; // lines; some may be no addresses
    bool areCut = false;   // they are to be moved
    std::string text;      // where there are no files; UTF-8
};

/// Reads the text of an X selection over a connection of its own, so that only the calling thread
/// waits for the owner: the toolkit's way stops the thread of all windows. `display` as
/// xcb_connect() takes it; null for the usual one. `isCancelled` may be null. Thread: any.
SelectionText ReadSelection(const char* display, ClipboardKind kind, const SelectionLimits& limits,
                            const std::atomic<bool>* isCancelled);

/// The same for files, or text where there are none.
SelectionFiles ReadSelectionFiles(const char* display, ClipboardKind kind,
                                  const SelectionLimits& limits);

} // namespace kits
