#pragma once

#include <MessageRunner.h>
#include <Messenger.h>
#include <SupportDefs.h>

#include <optional>

namespace kits {

/// The message that tickers send; "ticker" (int32) is Ticker::Id().
constexpr uint32 kTick = 'kTic';

/// Sends kTick to a handler again and again while it lives: what a held scroll arrow repeats with.
///
/// At most one tick waits: the next one is due an interval after NextTick(). So a slow window is
/// not flooded, and nothing goes on by itself when the target forgets. Thread: that of the target.
class Ticker
{
public:
    /// The first tick comes after `delay` microseconds, later ones `interval` after NextTick().
    Ticker(const BMessenger& target, bigtime_t delay, bigtime_t interval);
    ~Ticker() = default;
    Ticker(const Ticker&) = delete;
    Ticker& operator=(const Ticker&) = delete;

    int32 Id() const { return fId; }
    /// Orders the next tick; called when one was handled.
    void NextTick();

private:
    void Order(bigtime_t delay);

    const BMessenger fTarget;
    const bigtime_t fInterval;
    const int32 fId;
    std::optional<BMessageRunner> fNext; // sends one
};

} // namespace kits
