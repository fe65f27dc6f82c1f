#pragma once

#include <SupportDefs.h>

#include <algorithm>

namespace kits {

/// How many bytes to take on at a time, so that progress and stopping stay alive: fewer when the
/// last took long, more when they went fast.
class PieceSize
{
public:
    static constexpr off_t kLeastBytes = off_t{64} << 10;

    /// `mostBytes`: no more than this however fast it goes; a power of two, at most 1 TiB.
    explicit PieceSize(off_t mostBytes) : fMostBytes(mostBytes) {}

    off_t Bytes() const { return fBytes; }
    /// Takes note that `bytes` took `duration` microseconds.
    void Took(off_t bytes, bigtime_t duration)
    {
        if (duration > kLongUs) {
            // In multiples of the least: what volumes share or copy by blocks begins with one.
            const off_t fitting = bytes * kLongUs / duration;
            fBytes = std::clamp(fitting / kLeastBytes * kLeastBytes, kLeastBytes, fBytes);
        } else if (duration < kShortUs) {
            fBytes = std::min(2 * fBytes, fMostBytes);
        }
    }

private:
    static constexpr bigtime_t kShortUs = 10'000;
    static constexpr bigtime_t kLongUs = 25'000;

    off_t fMostBytes;
    off_t fBytes = off_t{1} << 20;
};

} // namespace kits
