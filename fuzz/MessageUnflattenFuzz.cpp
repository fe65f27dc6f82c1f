// Bytes from outside taken for a message: damage is refused, and what is taken is sound.

#include <Message.h>
#include <Rect.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <vector>

namespace {

constexpr int kMaxDepth = 8;

void Require(bool condition, const char* what)
{
    if (!condition) {
        std::fprintf(stderr, "Broken: %s\n", what);
        std::abort();
    }
}

std::vector<char> Flat(const BMessage& message)
{
    std::vector<char> bytes(static_cast<size_t>(message.FlattenedSize()));
    Require(message.Flatten(bytes.data(), message.FlattenedSize()) == B_OK, "it flattens");
    return bytes;
}

/// Looks at one value in every way there is.
void ReadValue(const BMessage& message, const char* name, type_code type, int32 index, int depth);

void ReadAll(const BMessage& message, int depth)
{
    const char* name = nullptr;
    type_code type = 0;
    int32 count = 0;
    for (int32 i = 0; message.GetInfo(B_ANY_TYPE, i, &name, &type, &count) == B_OK; i++) {
        Require(count > 0, "a name has values");
        for (int32 j = 0; j < count && j < 1000; j++) {
            ReadValue(message, name, type, j, depth);
        }
    }
}

void ReadValue(const BMessage& message, const char* name, type_code type, int32 index, int depth)
{
    const void* data = nullptr;
    ssize_t size = 0;
    Require(message.FindData(name, type, index, &data, &size) == B_OK, "a counted value is found");
    // Copying reads every byte, which is what the sanitizer watches.
    const char* bytes = static_cast<const char*>(data);
    const std::vector<char> copy(bytes, bytes + size);
    Require(copy.size() == static_cast<size_t>(size), "a value has its size");

    const char* text = nullptr;
    if (message.FindString(name, index, &text) == B_OK) {
        Require(BString(text).Length() < size, "a text ends inside its value");
    }
    bool truth = false;
    message.FindBool(name, index, &truth);
    int32 number = 0;
    message.FindInt32(name, index, &number);
    BRect rect;
    message.FindRect(name, index, &rect);
    BMessage inner;
    if (depth < kMaxDepth && message.FindMessage(name, index, &inner) == B_OK) {
        ReadAll(inner, depth + 1);
    }
}

void Change(BMessage message)
{
    const char* name = nullptr;
    type_code type = 0;
    while (message.GetInfo(B_ANY_TYPE, 0, &name, &type) == B_OK) {
        message.ReplaceData(name, type, "replaced", 8);
        message.AddData(name, type, "added", 5, false);
        Require(message.RemoveData(name) == B_OK, "a value is removed");
        if (message.GetInfo(B_ANY_TYPE, 0, &name, &type) == B_OK) {
            message.RemoveName(name);
        }
    }
    Require(message.IsEmpty(), "nothing is left");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    BMessage message('keep');
    message.AddInt32("kept", 1);
    const char* bytes = reinterpret_cast<const char*>(data);
    if (message.Unflatten(bytes, static_cast<ssize_t>(size)) != B_OK) {
        Require(message.what == 'keep' && message.GetInt32("kept", 0) == 1, "it stayed as it was");
        return 0;
    }
    ReadAll(message, 0);
    message.PrintToStream();

    BMessage again;
    const std::vector<char> flat = Flat(message);
    Require(again.Unflatten(flat.data(), static_cast<ssize_t>(flat.size())) == B_OK,
            "it comes back");
    Require(Flat(again) == flat, "it comes back the same");
    Change(message);
    return 0;
}
