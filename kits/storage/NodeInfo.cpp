#include <NodeInfo.h>

#include <Node.h>

#include <cstring>

namespace {

constexpr const char* kTypeAttribute = "BEOS:TYPE";
constexpr const char* kPreferredAppAttribute = "BEOS:PREF_APP";
constexpr type_code kMimeText = 'MIMS';

status_t ReadText(const BNode* node, const char* attribute, char* text)
{
    if (text == nullptr) {
        return B_BAD_VALUE;
    }
    if (node == nullptr) {
        return B_NO_INIT;
    }
    char read[B_MIME_TYPE_LENGTH];
    const ssize_t length = node->ReadAttr(attribute, kMimeText, 0, read, sizeof(read) - 1);
    if (length < 0) {
        // Without attributes there is none of this name either.
        return length == B_UNSUPPORTED ? status_t(B_ENTRY_NOT_FOUND)
                                       : static_cast<status_t>(length);
    }
    read[length] = '\0';
    if (!BMimeType::IsValid(read)) {
        return B_BAD_VALUE; // others write attributes too
    }
    std::memcpy(text, read, std::strlen(read) + 1);
    return B_OK;
}

status_t WriteText(BNode* node, const char* attribute, const char* text)
{
    if (node == nullptr) {
        return B_NO_INIT;
    }
    if (text == nullptr) {
        return node->RemoveAttr(attribute);
    }
    if (!BMimeType::IsValid(text)) {
        return B_BAD_VALUE;
    }
    const ssize_t written = node->WriteAttr(attribute, kMimeText, 0, text, std::strlen(text) + 1);
    return written < 0 ? static_cast<status_t>(written) : status_t(B_OK);
}

} // namespace

BNodeInfo::BNodeInfo(BNode* node)
{
    SetTo(node);
}

status_t BNodeInfo::SetTo(BNode* node)
{
    fNode = node != nullptr && node->InitCheck() == B_OK ? node : nullptr;
    fStatus = fNode != nullptr ? B_OK : B_BAD_VALUE;
    return fStatus;
}

status_t BNodeInfo::GetType(char* type) const
{
    return ReadText(fNode, kTypeAttribute, type);
}

status_t BNodeInfo::SetType(const char* type)
{
    return WriteText(fNode, kTypeAttribute, type);
}

status_t BNodeInfo::GetPreferredApp(char* signature, app_verb) const
{
    return ReadText(fNode, kPreferredAppAttribute, signature);
}

status_t BNodeInfo::SetPreferredApp(const char* signature, app_verb)
{
    return WriteText(fNode, kPreferredAppAttribute, signature);
}
