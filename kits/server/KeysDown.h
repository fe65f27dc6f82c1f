#pragma once

#include <SupportDefs.h>

#include <deque>
#include <map>
#include <vector>

namespace kits {

/// Which keys are down, by what the system tells of each key before any window is chosen for it:
/// releases too that reach no window of ours, or one that is gone by then. So it knows the first
/// press of a key from its repeats however late the press is dispatched.
///
/// The system must send no releases between repeats. Codes are scan codes; times are the system's
/// time of events, in milliseconds. Thread: the server's.
class KeysDown
{
public:
    void Pressed(int32 code, uint32 time);
    void Released(int32 code);
    /// A window got the focus while exactly these keys were down: others were released unseen.
    void Found(const std::vector<int32>& codes);
    /// Whether the press of that time was no repeat. Presses of a key are asked for in their order.
    bool IsFirst(int32 code, uint32 time);

private:
    struct Key
    {
        bool isDown = false;
        std::deque<uint32> firstPresses; // that nobody asked for yet, and the last that was
    };
    std::map<int32, Key> fKeys;
};

} // namespace kits
