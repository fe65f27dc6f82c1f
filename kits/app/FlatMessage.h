#pragma once

#include <SupportDefs.h>

namespace kits {

class MessageFields;

/// A message as bytes, the same on every machine; all numbers have their lowest byte first.
///
///     header   mark (4), version (4), size of everything (8), code (4), number of names (4)
///     a name   type (4), flags (1), length of the name (1), zeros (2), number of values (4),
///              size of each value (4), the name's bytes, the values
///     values   flag kFixedSize and a size above 0: one behind the other; else each after its size
///     (4)
///
/// The bytes of a value are those it has in memory.
class FlatMessage
{
public:
    static constexpr size_t kHeaderBytes = 24;

    /// How many bytes Write() makes of `fields`, which may be null.
    static size_t SizeOf(const MessageFields* fields);
    static void Write(uint32 command, const MessageFields* fields, char* buffer);

    /// Whether the four bytes a message begins with are at `bytes`.
    static bool HasMark(const char* bytes);
    /// The size of the whole message that begins with `bytes`; 0 when that is no message of ours.
    static size_t TotalSize(const char* bytes, size_t size);
    /// Takes a message apart, trusting none of the bytes. `*fields` becomes null for one without
    /// data. Errors: B_BAD_VALUE; std::bad_alloc. The outputs are untouched then. Ownership:
    /// `*fields` is returned to the caller.
    [[nodiscard]] static status_t Read(const char* bytes, size_t size, uint32* command,
                                       MessageFields** fields);
};

} // namespace kits
