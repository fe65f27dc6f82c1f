#include <Message.h>

#include <cstring>
#include <new>
#include <vector>

// Texts and messages inside messages: values of different sizes.

status_t BMessage::AddString(const char* name, const char* value)
{
    if (value == nullptr) {
        return B_BAD_VALUE;
    }
    const ssize_t size = static_cast<ssize_t>(std::strlen(value)) + 1;
    return AddData(name, B_STRING_TYPE, value, size, false);
}

status_t BMessage::AddString(const char* name, const BString& value)
{
    return AddString(name, value.String());
}

status_t BMessage::FindString(const char* name, const char** value) const
{
    return FindString(name, 0, value);
}

status_t BMessage::FindString(const char* name, int32 index, const char** value) const
{
    if (value == nullptr) {
        return B_BAD_VALUE;
    }
    *value = nullptr;
    const void* data = nullptr;
    ssize_t size = 0;
    const status_t status = FindData(name, B_STRING_TYPE, index, &data, &size);
    if (status != B_OK) {
        return status;
    }
    const char* text = static_cast<const char*>(data);
    if (size == 0 || text[size - 1] != '\0') {
        return B_BAD_VALUE; // bytes from outside that nobody closed
    }
    *value = text;
    return B_OK;
}

status_t BMessage::FindString(const char* name, BString* value) const
{
    return FindString(name, 0, value);
}

status_t BMessage::FindString(const char* name, int32 index, BString* value) const
{
    if (value == nullptr) {
        return B_BAD_VALUE;
    }
    const char* text = nullptr;
    const status_t status = FindString(name, index, &text);
    value->SetTo(text); // the empty text for null
    return status;
}

const char* BMessage::GetString(const char* name, const char* fallback) const
{
    return GetString(name, 0, fallback);
}

const char* BMessage::GetString(const char* name, int32 index, const char* fallback) const
{
    const char* text = nullptr;
    return FindString(name, index, &text) == B_OK ? text : fallback;
}

status_t BMessage::ReplaceString(const char* name, const char* value)
{
    return ReplaceString(name, 0, value);
}

status_t BMessage::ReplaceString(const char* name, int32 index, const char* value)
{
    if (value == nullptr) {
        return B_BAD_VALUE;
    }
    const ssize_t size = static_cast<ssize_t>(std::strlen(value)) + 1;
    return ReplaceData(name, B_STRING_TYPE, index, value, size);
}

bool BMessage::HasString(const char* name, int32 index) const
{
    return HasData(name, B_STRING_TYPE, index);
}

namespace {

/// Hands the flattened form of `message` to `use`.
template<class Use>
status_t WithFlattened(const BMessage* message, Use use)
{
    if (message == nullptr) {
        return B_BAD_VALUE;
    }
    try {
        std::vector<char> bytes(static_cast<size_t>(message->FlattenedSize()));
        const ssize_t size = static_cast<ssize_t>(bytes.size());
        const status_t status = message->Flatten(bytes.data(), size);
        return status == B_OK ? use(bytes.data(), size) : status;
    } catch (const std::bad_alloc&) {
        return B_NO_MEMORY;
    }
}

} // namespace

status_t BMessage::AddMessage(const char* name, const BMessage* value)
{
    return WithFlattened(value, [&](const char* bytes, ssize_t size) {
        return AddData(name, B_MESSAGE_TYPE, bytes, size, false);
    });
}

status_t BMessage::FindMessage(const char* name, BMessage* value) const
{
    return FindMessage(name, 0, value);
}

status_t BMessage::FindMessage(const char* name, int32 index, BMessage* value) const
{
    if (value == nullptr) {
        return B_BAD_VALUE;
    }
    const void* data = nullptr;
    ssize_t size = 0;
    status_t status = FindData(name, B_MESSAGE_TYPE, index, &data, &size);
    if (status == B_OK) {
        status = value->Unflatten(static_cast<const char*>(data), size);
    }
    if (status != B_OK) {
        value->MakeEmpty();
        value->what = 0;
    }
    return status;
}

status_t BMessage::ReplaceMessage(const char* name, const BMessage* value)
{
    return ReplaceMessage(name, 0, value);
}

status_t BMessage::ReplaceMessage(const char* name, int32 index, const BMessage* value)
{
    return WithFlattened(value, [&](const char* bytes, ssize_t size) {
        return ReplaceData(name, B_MESSAGE_TYPE, index, bytes, size);
    });
}
