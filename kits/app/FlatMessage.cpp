#include "app/FlatMessage.h"

#include "app/MessageFields.h"
#include "support/ScopeGuard.h"

#include <algorithm>
#include <cstring>
#include <string_view>
#include <vector>

namespace kits {

namespace {

constexpr uint32 kMark = 0x47534d4e; // "NMSG"
constexpr uint32 kVersion = 1;
constexpr size_t kFieldHeaderBytes = 16;
constexpr uint8 kFixedSize = 0x01;

/// Writes numbers and bytes one behind the other; the room was measured before.
class Writer
{
public:
    explicit Writer(char* buffer) : fNext(buffer) {}

    void Number(uint64 value, size_t byteCount)
    {
        for (size_t i = 0; i < byteCount; i++) {
            *fNext++ = static_cast<char>(value >> (8 * i) & 0xff);
        }
    }

    void Bytes(const void* bytes, size_t size)
    {
        if (size > 0) {
            std::memcpy(fNext, bytes, size);
            fNext += size;
        }
    }

private:
    char* fNext;
};

/// Reads numbers and bytes and never beyond the end: from the first failure on everything fails.
class Reader
{
public:
    Reader(const char* bytes, size_t size) : fNext(bytes), fLeft(size) {}

    bool HasFailed() const { return fHasFailed; }
    size_t Left() const { return fLeft; }

    uint64 Number(size_t byteCount)
    {
        const char* bytes = Bytes(byteCount);
        uint64 value = 0;
        for (size_t i = 0; bytes != nullptr && i < byteCount; i++) {
            value |= uint64{static_cast<unsigned char>(bytes[i])} << (8 * i);
        }
        return value;
    }

    uint32 Number32() { return static_cast<uint32>(Number(4)); }

    /// Null when there are not that many left.
    const char* Bytes(size_t size)
    {
        if (fHasFailed || size > fLeft) {
            fHasFailed = true;
            return nullptr;
        }
        const char* bytes = fNext;
        fNext += size;
        fLeft -= size;
        return bytes;
    }

private:
    const char* fNext;
    size_t fLeft;
    bool fHasFailed = false;
};

/// Values without bytes are written with their sizes even when these are fixed: so a count is never
/// believed without bytes that stand for it.
bool IsDense(bool isFixedSize, size_t valueSize)
{
    return isFixedSize && valueSize > 0;
}

size_t FieldSize(const MessageField& field)
{
    size_t size = kFieldHeaderBytes + field.Name().size();
    const size_t count = static_cast<size_t>(field.CountValues());
    const size_t firstSize = field.At(0).size;
    if (IsDense(field.IsFixedSize(), firstSize)) {
        return size + count * firstSize;
    }
    for (int32 i = 0; i < field.CountValues(); i++) {
        size += sizeof(uint32) + field.At(i).size;
    }
    return size;
}

void WriteField(Writer& writer, const MessageField& field)
{
    const size_t fixedSize = field.IsFixedSize() ? field.At(0).size : 0;
    writer.Number(field.Type(), 4);
    writer.Number(field.IsFixedSize() ? kFixedSize : 0, 1);
    writer.Number(field.Name().size(), 1);
    writer.Number(0, 2);
    writer.Number(static_cast<uint32>(field.CountValues()), 4);
    writer.Number(fixedSize, 4);
    writer.Bytes(field.Name().data(), field.Name().size());
    const bool isDense = IsDense(field.IsFixedSize(), fixedSize);
    for (int32 i = 0; i < field.CountValues(); i++) {
        const MessageValue value = field.At(i);
        if (!isDense) {
            writer.Number(value.size, 4);
        }
        writer.Bytes(value.data, value.size);
    }
}

status_t ReadValues(Reader& reader, MessageField& field, uint32 count, uint32 fixedSize)
{
    const bool isDense = IsDense(field.IsFixedSize(), fixedSize);
    // What is left bounds the count: a damaged one costs no memory.
    const size_t leastBytes = isDense ? fixedSize : sizeof(uint32);
    if (count == 0 || count > reader.Left() / leastBytes) {
        return B_BAD_VALUE;
    }
    if (isDense) {
        field.Reserve(static_cast<int32>(std::min<uint32>(count, INT32_MAX)), fixedSize);
    }
    for (uint32 i = 0; i < count; i++) {
        const uint32 size = isDense ? fixedSize : reader.Number32();
        const char* bytes = reader.Bytes(size);
        if (bytes == nullptr || field.Add(bytes, size) != B_OK) {
            return B_BAD_VALUE;
        }
    }
    return B_OK;
}

status_t ReadField(Reader& reader, MessageFields& fields)
{
    const uint32 type = reader.Number32();
    const uint64 flags = reader.Number(1);
    const size_t nameSize = static_cast<size_t>(reader.Number(1));
    const uint64 zeros = reader.Number(2);
    const uint32 count = reader.Number32();
    const uint32 fixedSize = reader.Number32();
    const char* name = reader.Bytes(nameSize);
    const bool isFixedSize = (flags & kFixedSize) != 0;
    if (name == nullptr || (flags & ~uint64{kFixedSize}) != 0 || zeros != 0 ||
        (!isFixedSize && fixedSize != 0)) {
        return B_BAD_VALUE;
    }
    if (nameSize > 0 && std::memchr(name, '\0', nameSize) != nullptr) {
        return B_BAD_VALUE;
    }
    MessageField field(std::string_view(name, nameSize), type, isFixedSize);
    const status_t status = ReadValues(reader, field, count, fixedSize);
    if (status == B_OK) {
        fields.Add(std::move(field));
    }
    return status;
}

/// One pass over sorted names, however many there are.
bool HasNameTwice(const MessageFields& fields)
{
    std::vector<std::string_view> names;
    names.reserve(fields.All().size());
    for (const MessageField& field : fields.All()) {
        names.push_back(field.Name());
    }
    std::sort(names.begin(), names.end());
    return std::adjacent_find(names.begin(), names.end()) != names.end();
}

} // namespace

size_t FlatMessage::SizeOf(const MessageFields* fields)
{
    size_t size = kHeaderBytes;
    if (fields != nullptr) {
        for (const MessageField& field : fields->All()) {
            size += FieldSize(field);
        }
    }
    return size;
}

void FlatMessage::Write(uint32 command, const MessageFields* fields, char* buffer)
{
    Writer writer(buffer);
    writer.Number(kMark, 4);
    writer.Number(kVersion, 4);
    writer.Number(SizeOf(fields), 8);
    writer.Number(command, 4);
    writer.Number(fields == nullptr ? 0 : fields->All().size(), 4);
    if (fields != nullptr) {
        for (const MessageField& field : fields->All()) {
            WriteField(writer, field);
        }
    }
}

bool FlatMessage::HasMark(const char* bytes)
{
    return Reader(bytes, 4).Number32() == kMark;
}

size_t FlatMessage::TotalSize(const char* bytes, size_t size)
{
    Reader reader(bytes, size);
    const uint32 mark = reader.Number32();
    const uint32 version = reader.Number32();
    const uint64 total = reader.Number(8);
    if (reader.HasFailed() || mark != kMark || version != kVersion || total < kHeaderBytes ||
        total > static_cast<uint64>(PTRDIFF_MAX)) {
        return 0;
    }
    return static_cast<size_t>(total);
}

status_t FlatMessage::Read(const char* bytes, size_t size, uint32* command, MessageFields** fields)
{
    const size_t total = TotalSize(bytes, size);
    if (total == 0 || total > size) {
        return B_BAD_VALUE;
    }
    Reader reader(bytes, total);
    reader.Bytes(16); // mark, version and size
    const uint32 what = reader.Number32();
    const uint32 nameCount = reader.Number32();
    if (reader.HasFailed() || nameCount > reader.Left() / kFieldHeaderBytes) {
        return B_BAD_VALUE;
    }
    MessageFields* made = nullptr;
    if (nameCount > 0) {
        made = new MessageFields;
    }
    ScopeGuard undo([&made] {
        if (made != nullptr) {
            made->Release();
        }
    });
    for (uint32 i = 0; i < nameCount; i++) {
        const status_t status = ReadField(reader, *made);
        if (status != B_OK) {
            return status;
        }
    }
    if (reader.Left() != 0 || (made != nullptr && HasNameTwice(*made))) {
        return B_BAD_VALUE;
    }
    undo.Dismiss();
    *command = what;
    *fields = made;
    return B_OK;
}

} // namespace kits
