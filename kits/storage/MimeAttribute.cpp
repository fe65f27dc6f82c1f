#include "MimeAttribute.h"

#include <Mime.h>
#include <Node.h>

#include <cstring>

namespace kits {

namespace {

constexpr type_code kMimeText = 'MIMS';

} // namespace

status_t ReadMimeAttribute(const BNode* node, const char* attribute, char* type)
{
    if (type == nullptr) {
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
    std::memcpy(type, read, std::strlen(read) + 1);
    return B_OK;
}

status_t WriteMimeAttribute(BNode* node, const char* attribute, const char* type)
{
    if (node == nullptr) {
        return B_NO_INIT;
    }
    if (type == nullptr) {
        return node->RemoveAttr(attribute);
    }
    if (!BMimeType::IsValid(type)) {
        return B_BAD_VALUE;
    }
    const ssize_t written = node->WriteAttr(attribute, kMimeText, 0, type, std::strlen(type) + 1);
    return written < 0 ? static_cast<status_t>(written) : status_t(B_OK);
}

} // namespace kits
