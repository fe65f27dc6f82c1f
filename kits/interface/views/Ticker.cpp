#include "Ticker.h"

#include <Message.h>

#include <algorithm>
#include <atomic>

namespace kits {

namespace {

int32 NewId()
{
    static std::atomic<int32> last{0};
    return ++last;
}

} // namespace

Ticker::Ticker(const BMessenger& target, bigtime_t delay, bigtime_t interval)
    : fTarget(target), fInterval(interval), fId(NewId())
{
    Order(delay);
}

void Ticker::NextTick()
{
    Order(fInterval);
}

void Ticker::Order(bigtime_t delay)
{
    BMessage tick(kTick);
    tick.AddInt32("ticker", fId);
    fNext.emplace(fTarget, &tick, std::max<bigtime_t>(delay, 1), 1);
}

} // namespace kits
