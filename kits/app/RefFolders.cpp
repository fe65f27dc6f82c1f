#include "app/RefFolders.h"

#include "app/FlatMessage.h"
#include "app/MessageFields.h"

#include <TypeConstants.h>

#include <string_view>
#include <utility>

namespace kits {

namespace {

// Deeper messages in messages come from outside, if at all: they must not exhaust the stack.
constexpr int32 kDeepest = 8;

FindRefFolder& Hook()
{
    static FindRefFolder hook = nullptr;
    return hook;
}

// Most messages inside hold no entry: those are not taken apart.
bool MayHoldRefs(std::string_view flat)
{
    char code[4];
    for (size_t i = 0; i < sizeof(code); ++i) {
        code[i] = static_cast<char>(B_REF_TYPE >> (8 * i) & 0xff);
    }
    return flat.find(std::string_view(code, sizeof(code))) != std::string_view::npos;
}

std::shared_ptr<const std::vector<FolderHold>> FoldersInside(const char* bytes, size_t size)
{
    static thread_local int32 depth = 0;
    if (depth >= kDeepest || !MayHoldRefs(std::string_view(bytes, size))) {
        return nullptr;
    }
    struct Deeper
    {
        Deeper() { depth++; }
        ~Deeper() { depth--; }
    };
    const Deeper deeper;
    uint32 command = 0;
    MessageFields* fields = nullptr;
    if (FlatMessage::Read(bytes, size, &command, &fields) != B_OK || fields == nullptr) {
        return nullptr;
    }
    const auto release = [](MessageFields* held) {
        held->Release();
    };
    const std::unique_ptr<MessageFields, decltype(release)> owned(fields, release);
    auto folders = std::make_shared<std::vector<FolderHold>>();
    for (const MessageField& field : fields->All()) {
        field.CollectFolders(*folders);
    }
    return folders->empty() ? nullptr : std::move(folders);
}

} // namespace

void SetRefFolderHook(FindRefFolder hook)
{
    Hook() = hook;
}

bool MayNameFolders(type_code type)
{
    return type == B_REF_TYPE || type == B_MESSAGE_TYPE;
}

ValueFolders FoldersOf(type_code type, const void* data, size_t size)
{
    ValueFolders folders;
    if (Hook() == nullptr || size == 0) {
        return folders;
    }
    if (type == B_REF_TYPE) {
        folders.own = Hook()(data, size);
    } else if (type == B_MESSAGE_TYPE) {
        folders.inner = FoldersInside(static_cast<const char*>(data), size);
    }
    return folders;
}

} // namespace kits
