#pragma once

#include <Errors.h>

#include <cstddef>
#include <cstdint>
#include <sys/types.h>

/// Whole numbers of 8 and 16 bits.
using int8 = std::int8_t;
using uint8 = std::uint8_t;
using int16 = std::int16_t;
using uint16 = std::uint16_t;

/// Whole numbers of 32 and 64 bits.
using int32 = std::int32_t;
using uint32 = std::uint32_t;
using int64 = std::int64_t;
using uint64 = std::uint64_t;

/// The result of a call: B_OK, or one of the negative codes of Errors.h.
using status_t = int32;
/// Microseconds; as a point in time, since the machine started.
using bigtime_t = int64;
/// The name of a piece of data: a multi-character constant such as 'CSTR'.
using type_code = uint32;
/// The name of a hook called through Perform().
using perform_code = uint32;

/// Waits for ever, where a call takes a time-out.
constexpr bigtime_t B_INFINITE_TIMEOUT = INT64_MAX;
