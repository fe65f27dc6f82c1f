#include <Message.h>

#include "app/MessageScalar.h"

// Truth values, numbers and pointers.

status_t BMessage::AddBool(const char* name, bool value)
{
    return kits::AddScalar(*this, name, B_BOOL_TYPE, static_cast<uint8>(value ? 1 : 0));
}

status_t BMessage::FindBool(const char* name, bool* value) const
{
    return FindBool(name, 0, value);
}

status_t BMessage::FindBool(const char* name, int32 index, bool* value) const
{
    if (value == nullptr) {
        return B_BAD_VALUE;
    }
    uint8 byte = 0; // not read as a bool, which may not hold anything but 0 and 1
    const status_t status = kits::FindScalar(*this, name, B_BOOL_TYPE, index, &byte);
    *value = byte != 0;
    return status;
}

bool BMessage::GetBool(const char* name, bool fallback) const
{
    return GetBool(name, 0, fallback);
}

bool BMessage::GetBool(const char* name, int32 index, bool fallback) const
{
    bool value = false;
    return FindBool(name, index, &value) == B_OK ? value : fallback;
}

status_t BMessage::ReplaceBool(const char* name, bool value)
{
    return ReplaceBool(name, 0, value);
}

status_t BMessage::ReplaceBool(const char* name, int32 index, bool value)
{
    const uint8 byte = value ? 1 : 0;
    return kits::ReplaceScalar(*this, name, B_BOOL_TYPE, index, byte);
}

bool BMessage::HasBool(const char* name, int32 index) const
{
    return HasData(name, B_BOOL_TYPE, index);
}

status_t BMessage::AddInt8(const char* name, int8 value)
{
    return kits::AddScalar(*this, name, B_INT8_TYPE, value);
}

status_t BMessage::FindInt8(const char* name, int8* value) const
{
    return FindInt8(name, 0, value);
}

status_t BMessage::FindInt8(const char* name, int32 index, int8* value) const
{
    return kits::FindScalar(*this, name, B_INT8_TYPE, index, value);
}

status_t BMessage::ReplaceInt8(const char* name, int8 value)
{
    return ReplaceInt8(name, 0, value);
}

status_t BMessage::ReplaceInt8(const char* name, int32 index, int8 value)
{
    return kits::ReplaceScalar(*this, name, B_INT8_TYPE, index, value);
}

status_t BMessage::AddInt16(const char* name, int16 value)
{
    return kits::AddScalar(*this, name, B_INT16_TYPE, value);
}

status_t BMessage::FindInt16(const char* name, int16* value) const
{
    return FindInt16(name, 0, value);
}

status_t BMessage::FindInt16(const char* name, int32 index, int16* value) const
{
    return kits::FindScalar(*this, name, B_INT16_TYPE, index, value);
}

status_t BMessage::ReplaceInt16(const char* name, int16 value)
{
    return ReplaceInt16(name, 0, value);
}

status_t BMessage::ReplaceInt16(const char* name, int32 index, int16 value)
{
    return kits::ReplaceScalar(*this, name, B_INT16_TYPE, index, value);
}

status_t BMessage::AddInt32(const char* name, int32 value)
{
    return kits::AddScalar(*this, name, B_INT32_TYPE, value);
}

status_t BMessage::FindInt32(const char* name, int32* value) const
{
    return FindInt32(name, 0, value);
}

status_t BMessage::FindInt32(const char* name, int32 index, int32* value) const
{
    return kits::FindScalar(*this, name, B_INT32_TYPE, index, value);
}

int32 BMessage::GetInt32(const char* name, int32 index, int32 fallback) const
{
    int32 value = 0;
    return FindInt32(name, index, &value) == B_OK ? value : fallback;
}

status_t BMessage::ReplaceInt32(const char* name, int32 value)
{
    return ReplaceInt32(name, 0, value);
}

status_t BMessage::ReplaceInt32(const char* name, int32 index, int32 value)
{
    return kits::ReplaceScalar(*this, name, B_INT32_TYPE, index, value);
}

bool BMessage::HasInt32(const char* name, int32 index) const
{
    return HasData(name, B_INT32_TYPE, index);
}

status_t BMessage::AddInt64(const char* name, int64 value)
{
    return kits::AddScalar(*this, name, B_INT64_TYPE, value);
}

status_t BMessage::FindInt64(const char* name, int64* value) const
{
    return FindInt64(name, 0, value);
}

status_t BMessage::FindInt64(const char* name, int32 index, int64* value) const
{
    return kits::FindScalar(*this, name, B_INT64_TYPE, index, value);
}

int64 BMessage::GetInt64(const char* name, int32 index, int64 fallback) const
{
    int64 value = 0;
    return FindInt64(name, index, &value) == B_OK ? value : fallback;
}

status_t BMessage::ReplaceInt64(const char* name, int64 value)
{
    return ReplaceInt64(name, 0, value);
}

status_t BMessage::ReplaceInt64(const char* name, int32 index, int64 value)
{
    return kits::ReplaceScalar(*this, name, B_INT64_TYPE, index, value);
}

status_t BMessage::AddFloat(const char* name, float value)
{
    return kits::AddScalar(*this, name, B_FLOAT_TYPE, value);
}

status_t BMessage::FindFloat(const char* name, float* value) const
{
    return FindFloat(name, 0, value);
}

status_t BMessage::FindFloat(const char* name, int32 index, float* value) const
{
    return kits::FindScalar(*this, name, B_FLOAT_TYPE, index, value);
}

float BMessage::GetFloat(const char* name, int32 index, float fallback) const
{
    float value = 0;
    return FindFloat(name, index, &value) == B_OK ? value : fallback;
}

status_t BMessage::ReplaceFloat(const char* name, float value)
{
    return ReplaceFloat(name, 0, value);
}

status_t BMessage::ReplaceFloat(const char* name, int32 index, float value)
{
    return kits::ReplaceScalar(*this, name, B_FLOAT_TYPE, index, value);
}

status_t BMessage::AddDouble(const char* name, double value)
{
    return kits::AddScalar(*this, name, B_DOUBLE_TYPE, value);
}

status_t BMessage::FindDouble(const char* name, double* value) const
{
    return FindDouble(name, 0, value);
}

status_t BMessage::FindDouble(const char* name, int32 index, double* value) const
{
    return kits::FindScalar(*this, name, B_DOUBLE_TYPE, index, value);
}

status_t BMessage::ReplaceDouble(const char* name, double value)
{
    return ReplaceDouble(name, 0, value);
}

status_t BMessage::ReplaceDouble(const char* name, int32 index, double value)
{
    return kits::ReplaceScalar(*this, name, B_DOUBLE_TYPE, index, value);
}

status_t BMessage::AddPointer(const char* name, const void* value)
{
    return kits::AddScalar(*this, name, B_POINTER_TYPE, value);
}

status_t BMessage::FindPointer(const char* name, void** value) const
{
    return FindPointer(name, 0, value);
}

status_t BMessage::FindPointer(const char* name, int32 index, void** value) const
{
    return kits::FindScalar(*this, name, B_POINTER_TYPE, index, value);
}

status_t BMessage::ReplacePointer(const char* name, const void* value)
{
    return ReplacePointer(name, 0, value);
}

status_t BMessage::ReplacePointer(const char* name, int32 index, const void* value)
{
    return kits::ReplaceScalar(*this, name, B_POINTER_TYPE, index, value);
}
