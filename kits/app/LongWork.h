#pragma once

#include <memory>

namespace kits {

class LooperCore;

#ifdef KITS_GUARDS

/// Says that the calling thread, a looper's, knowingly takes no messages while the object lives.
class LongWork
{
public:
    LongWork();
    ~LongWork();
    LongWork(const LongWork&) = delete;
    LongWork& operator=(const LongWork&) = delete;

private:
    const std::shared_ptr<LooperCore> fCore; // null on a thread that is no looper's
};

#else

class LongWork
{
public:
    LongWork() {}
    ~LongWork() {} // not trivial, or its objects would count as unused
};

#endif

} // namespace kits
