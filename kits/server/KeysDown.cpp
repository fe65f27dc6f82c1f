#include "KeysDown.h"

#include <algorithm>

namespace kits {

namespace {

// Presses that are never dispatched (another program's input method took them) are never asked for.
constexpr size_t kMostRemembered = 256;

} // namespace

void KeysDown::Pressed(int32 code, uint32 time)
{
    Key& key = fKeys[code];
    if (key.isDown) {
        return;
    }
    key.isDown = true;
    key.firstPresses.push_back(time);
    if (key.firstPresses.size() > kMostRemembered) {
        key.firstPresses.pop_front();
    }
}

void KeysDown::Released(int32 code)
{
    const auto found = fKeys.find(code);
    if (found != fKeys.end()) {
        found->second.isDown = false;
    }
}

void KeysDown::Found(const std::vector<int32>& codes)
{
    for (auto& [code, key] : fKeys) {
        key.isDown = false;
    }
    for (const int32 code : codes) {
        fKeys[code].isDown = true;
    }
}

bool KeysDown::IsFirst(int32 code, uint32 time)
{
    const auto found = fKeys.find(code);
    if (found == fKeys.end()) {
        return false;
    }
    std::deque<uint32>& presses = found->second.firstPresses;
    const auto press = std::find(presses.begin(), presses.end(), time);
    if (press == presses.end()) {
        return false;
    }
    // The press itself stays: another one of the same millisecond may come.
    presses.erase(presses.begin(), press);
    return true;
}

} // namespace kits
