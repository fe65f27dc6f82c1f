#pragma once

#include "kernel/Mutex.h"

#include <Rect.h>
#include <SupportDefs.h>

#include <optional>

namespace kits {

/// How often a window has asked for a place and for a size. So both sides know which of the two is
/// the later word: what the window asked for, or what the screen tells.
struct FrameAsks
{
    uint32 place = 0;
    uint32 size = 0;
    /// The serial of the news whose size the window could not take and asked to be changed: it
    /// holds only while there is nothing newer. 0: the size is the window's own wish.
    uint32 corrected = 0;
};

/// The frame that the screen gave a window, on its way to the window's thread.
///
/// Only the newest one waits, whole: a window that took no messages for a while, or is dragged
/// about faster than it paints, is told once, where it is now. Thread: any.
class FrameNews
{
public:
    struct News
    {
        BRect frame; // the client area, in screen units
        uint32 serial = 0;
        FrameAsks asks; // that the screen knew of
    };

    /// Takes the place of what waits. True when nothing waited: the window is to be told then.
    bool Put(const News& news)
    {
        MutexLock lock(fMutex);
        const bool isFirst = !fWaiting.has_value();
        fWaiting = news;
        return isFirst;
    }
    /// Takes what waits, which acknowledges it; nothing when it was taken before.
    std::optional<News> Take()
    {
        MutexLock lock(fMutex);
        std::optional<News> taken = fWaiting;
        fWaiting.reset();
        return taken;
    }
    bool IsWaiting() const
    {
        MutexLock lock(fMutex);
        return fWaiting.has_value();
    }

private:
    mutable Mutex fMutex;
    std::optional<News> fWaiting GUARDED_BY(fMutex);
};

} // namespace kits
