#pragma once

#include <SupportDefs.h>

#include <atomic>

class BEntry;

namespace norvane {

/// Whether a walk goes on into file systems that are mounted below its start.
enum class MeasureScope : uint8 {
    kAllVolumes, // what a copy enters; never the kernel's own file systems
    kOneVolume,
};

/// The bytes of all regular files in and below `entry`; a link counts 0 and is never followed.
///
/// What cannot be read counts 0. When `isCancelled` (may be null) turns true the walk ends early
/// and the sum so far is returned. Thread: any.
int64 MeasureEntry(const BEntry& entry, MeasureScope scope,
                   const std::atomic<bool>* isCancelled = nullptr);

} // namespace norvane
