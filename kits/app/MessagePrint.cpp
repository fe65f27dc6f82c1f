#include <Message.h>

#include <Rect.h>

#include <algorithm>
#include <cinttypes>
#include <cstdio>

namespace {

// What is shown of a value that is nothing but bytes.
constexpr size_t kShownBytes = 32;

/// A code as its four letters, or in hexadecimal when some of them cannot be shown.
BString CodeText(uint32 code)
{
    char letters[4];
    bool isReadable = true;
    for (int i = 0; i < 4; i++) {
        letters[i] = static_cast<char>(code >> (24 - 8 * i) & 0xff);
        isReadable = isReadable && letters[i] >= ' ' && letters[i] <= '~';
    }
    BString text;
    if (isReadable) {
        return text.SetToFormat("'%.4s'", letters);
    }
    return text.SetToFormat("0x%08" PRIx32, code);
}

BString BytesText(const void* data, ssize_t size)
{
    BString text;
    text.SetToFormat("%zd bytes", size);
    const unsigned char* bytes = static_cast<const unsigned char*>(data);
    const size_t shown = std::min(static_cast<size_t>(size), kShownBytes);
    for (size_t i = 0; i < shown; i++) {
        BString byte;
        text << byte.SetToFormat(" %02x", bytes[i]);
    }
    return text << (shown < static_cast<size_t>(size) ? " ..." : "");
}

/// The value in words; empty when it is of a type, or has bytes, that have none.
BString ValueText(const BMessage& message, const char* name, type_code type, int32 index)
{
    BString text;
    switch (type) {
    case B_BOOL_TYPE:
        return message.GetBool(name, index, false) ? "true" : "false";
    case B_INT8_TYPE: {
        int8 value = 0;
        message.FindInt8(name, index, &value);
        return text << int32{value};
    }
    case B_INT16_TYPE: {
        int16 value = 0;
        message.FindInt16(name, index, &value);
        return text << int32{value};
    }
    case B_INT32_TYPE:
        return text << message.GetInt32(name, index, 0);
    case B_INT64_TYPE:
        return text << message.GetInt64(name, index, 0);
    case B_FLOAT_TYPE:
        return text << message.GetFloat(name, index, 0);
    case B_DOUBLE_TYPE: {
        double value = 0;
        message.FindDouble(name, index, &value);
        return text.SetToFormat("%g", value);
    }
    case B_STRING_TYPE:
        return text << "\"" << message.GetString(name, index, "") << "\"";
    case B_POINT_TYPE: {
        BPoint value;
        message.FindPoint(name, index, &value);
        return text << "(" << value.x << ", " << value.y << ")";
    }
    case B_RECT_TYPE: {
        BRect value;
        message.FindRect(name, index, &value);
        return text << "(" << value.left << ", " << value.top << ", " << value.right << ", "
                    << value.bottom << ")";
    }
    default:
        return text;
    }
}

void PrintValue(const BMessage& message, const char* name, type_code type, int32 index)
{
    BString text = ValueText(message, name, type, index);
    if (text.IsEmpty()) {
        const void* data = nullptr;
        ssize_t size = 0;
        message.FindData(name, type, index, &data, &size);
        text = BytesText(data, size);
    }
    std::printf("%s%s", index == 0 ? " " : ", ", text.String());
}

} // namespace

void BMessage::PrintToStream() const
{
    std::printf("BMessage(%s)\n", CodeText(what).String());
    const char* name = nullptr;
    type_code type = 0;
    int32 count = 0;
    for (int32 i = 0; GetInfo(B_ANY_TYPE, i, &name, &type, &count) == B_OK; i++) {
        std::printf("    %s \"%s\" =", CodeText(type).String(), name);
        for (int32 j = 0; j < count; j++) {
            PrintValue(*this, name, type, j);
        }
        std::printf("\n");
    }
}
