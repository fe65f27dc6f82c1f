#include <SymLink.h>

#include "SystemCalls.h"

#include <Directory.h>
#include <Entry.h>
#include <Path.h>

#include <cstring>

BSymLink::BSymLink() = default;

BSymLink::BSymLink(const entry_ref* ref) : BNode(ref) {}

BSymLink::BSymLink(const BEntry* entry) : BNode(entry) {}

BSymLink::BSymLink(const char* path) : BNode(path) {}

BSymLink::BSymLink(const BDirectory* directory, const char* path) : BNode(directory, path) {}

ssize_t BSymLink::ReadLink(char* buffer, size_t length) const
{
    if (buffer == nullptr) {
        return B_BAD_VALUE;
    }
    if (InitCheck() != B_OK) {
        return B_NO_INIT;
    }
    std::string text;
    const status_t status = kits::sys::ReadLinkText(Descriptor(), "", &text);
    if (status == B_ENTRY_NOT_FOUND) {
        return B_BAD_VALUE; // the system's word for a node that is no link
    }
    if (status != B_OK) {
        return status;
    }
    if (text.size() >= length) {
        return B_NAME_TOO_LONG;
    }
    std::memcpy(buffer, text.c_str(), text.size() + 1);
    return static_cast<ssize_t>(text.size());
}

ssize_t BSymLink::MakeLinkedPath(const char* directoryPath, BPath* path) const
{
    if (directoryPath == nullptr || path == nullptr) {
        return B_BAD_VALUE;
    }
    char text[4096] = {}; // longer the system makes none
    const ssize_t length = ReadLink(text, sizeof(text));
    if (length < 0) {
        return length;
    }
    const status_t status = text[0] == '/' ? path->SetTo(text) : path->SetTo(directoryPath, text);
    return status == B_OK ? static_cast<ssize_t>(std::strlen(path->Path())) : status;
}

ssize_t BSymLink::MakeLinkedPath(const BDirectory* directory, BPath* path) const
{
    const BPath folder(directory);
    return folder.InitCheck() == B_OK ? MakeLinkedPath(folder.Path(), path) : folder.InitCheck();
}

bool BSymLink::IsAbsolute() const
{
    char text[4096] = {};
    return ReadLink(text, sizeof(text)) > 0 && text[0] == '/';
}
