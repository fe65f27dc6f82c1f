#pragma once

#include <SupportDefs.h>

/// What texts are encoded as, besides UTF-8. The numbers are the platform's.
enum {
    B_ISO1_CONVERSION = 0,    ///< ISO 8859-1: each byte is the character of that number
    B_UNICODE_CONVERSION = 17 ///< UTF-16, the higher byte first
};

/// What stands for a character that has none in the other encoding.
constexpr char B_SUBSTITUTE = 0x1a;

/// Converts as much of `source` to UTF-8 as there is room for in `target`; a character is never
/// cut.
///
/// Half of a surrogate pair without the other half becomes `substitute`; other control characters,
/// also NUL, are characters like any other. What the end of `source` cuts is left for the next
/// call. Thread: any. Ownership: borrows all; `state`, 0 before the first call, may be null and is
/// not needed here. Units: `*sourceLength` and `*targetLength` are bytes: before what there is,
/// after what was taken and written. Errors: B_BAD_VALUE for an encoding that is not named above,
/// or null; nothing is changed then.
status_t convert_to_utf8(uint32 sourceEncoding, const char* source, int32* sourceLength,
                         char* target, int32* targetLength, int32* state,
                         char substitute = B_SUBSTITUTE);
