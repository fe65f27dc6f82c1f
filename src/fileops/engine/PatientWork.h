#pragma once

#include <OS.h>
#include <SupportDefs.h>

#include <functional>

namespace norvane {

class OperationUI;

/// Carries out a call that may take long and cannot be broken off, on a thread of its own, while
/// the operation goes on showing that it is alive.
///
/// Returns what `work` returns; B_CANCELED once the person asked to stop: then `work` goes on by
/// itself, so it owns all that it uses; B_TIMED_OUT, likewise, after `patience` microseconds.
/// Without a thread to be had the work is done by the caller. Thread: the operation's.
status_t DoPatiently(OperationUI& ui, std::function<status_t()> work,
                     bigtime_t patience = B_INFINITE_TIMEOUT);

} // namespace norvane
