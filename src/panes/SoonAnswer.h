#pragma once

#include <Messenger.h>

#include <functional>
#include <optional>

class BMessage;

namespace norvane {

/// Has `ask`, which may wait for a disk, make its answer on a thread of its own, and waits for it a
/// tenth of a second. An answer that comes later is sent to `asker` instead; without a thread to be
/// had it is waited for. `ask` keeps what it needs.
///
/// Thread: any, a window's for one.
std::optional<BMessage> AnswerSoon(const std::function<BMessage()>& ask, const BMessenger& asker);

} // namespace norvane
