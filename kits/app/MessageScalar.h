#pragma once

#include <Message.h>

#include <cstring>
#include <type_traits>

namespace kits {

// Values that are held as the bytes of a plain type.

template<class Value>
status_t AddScalar(BMessage& message, const char* name, type_code type, const Value& value)
{
    static_assert(std::is_trivially_copyable_v<Value>);
    return message.AddData(name, type, &value, sizeof(value));
}

template<class Value>
status_t ReplaceScalar(BMessage& message, const char* name, type_code type, int32 index,
                       const Value& value)
{
    return message.ReplaceData(name, type, index, &value, sizeof(value));
}

/// Errors: those of FindData; B_BAD_VALUE for bytes that cannot be such a value. `*value` is
/// `fallback` then.
template<class Value>
status_t FindScalar(const BMessage& message, const char* name, type_code type, int32 index,
                    Value* value, const Value& fallback = Value())
{
    static_assert(std::is_trivially_copyable_v<Value>);
    if (value == nullptr) {
        return B_BAD_VALUE;
    }
    *value = fallback;
    const void* data = nullptr;
    ssize_t size = 0;
    const status_t status = message.FindData(name, type, index, &data, &size);
    if (status != B_OK) {
        return status;
    }
    if (size != ssize_t{sizeof(Value)}) {
        return B_BAD_VALUE;
    }
    std::memcpy(value, data, sizeof(Value));
    return B_OK;
}

} // namespace kits
