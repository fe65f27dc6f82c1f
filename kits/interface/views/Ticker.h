#pragma once

#include <Messenger.h>
#include <SupportDefs.h>

namespace kits {

/// The message that tickers send; "ticker" (int32) is Ticker::Id().
constexpr uint32 kTick = 'kTic';

/// Sends kTick to a handler again and again while it lives: what a held scroll arrow repeats with.
///
/// At most one tick waits: the next one is due an interval after NextTick(). So a slow window is
/// not flooded, and nothing goes on by itself when the target forgets. Thread: that of the target.
/// One thread of the program serves all tickers.
class Ticker
{
public:
    /// The first tick comes after `delay` microseconds, later ones `interval` after NextTick().
    Ticker(const BMessenger& target, bigtime_t delay, bigtime_t interval);
    ~Ticker();
    Ticker(const Ticker&) = delete;
    Ticker& operator=(const Ticker&) = delete;

    int32 Id() const { return fId; }
    /// Orders the next tick; called when one was handled.
    void NextTick();

private:
    BMessenger fTarget;
    bigtime_t fInterval;
    int32 fId;
};

} // namespace kits
