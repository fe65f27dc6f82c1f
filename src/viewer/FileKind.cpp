#include "viewer/FileKind.h"

#include <Entry.h>
#include <Mime.h>
#include <Node.h>
#include <NodeInfo.h>

#include <cstring>
#include <sys/stat.h>

namespace norvane {

namespace {

bool BeginsWith(const char* text, const char* start)
{
    return std::strncmp(text, start, std::strlen(start)) == 0;
}

/// The type that is stored with the file, else that of its name, else that of its contents.
status_t ReadType(const BEntry& entry, BNodeInfo& info, char* type)
{
    if (info.GetType(type) == B_OK) {
        return B_OK;
    }
    entry_ref ref;
    status_t status = entry.GetRef(&ref);
    BMimeType guessed;
    if (status == B_OK) {
        status = BMimeType::GuessMimeType(&ref, &guessed);
    }
    if (status == B_OK) {
        std::strncpy(type, guessed.Type(), B_MIME_TYPE_LENGTH - 1);
    }
    return status;
}

ViewedKind KindOf(const char* type)
{
    if (BeginsWith(type, "image/")) {
        return ViewedKind::kImage;
    }
    const bool isText = BeginsWith(type, "text/") || BMimeType(type).Inherits("text/plain");
    return isText ? ViewedKind::kText : ViewedKind::kUnknown;
}

/// An empty file whose name says nothing is an empty text.
bool IsEmpty(const BNode& node)
{
    off_t size = -1;
    return node.GetSize(&size) == B_OK && size == 0;
}

bool IsRegular(const BEntry& entry)
{
    struct stat st;
    return entry.GetStat(&st) == B_OK && S_ISREG(st.st_mode);
}

} // namespace

FileKind FindFileKind(const std::string& path)
{
    FileKind found;
    if (path.empty()) {
        return found;
    }
    const BEntry entry(path.c_str(), true);
    found.isFile = IsRegular(entry);
    BNode node(&entry);
    if (node.InitCheck() != B_OK) {
        found.complaints.push_back("Error opening node!");
    }
    BNodeInfo info(&node);
    char type[B_MIME_TYPE_LENGTH] = "";
    if (info.InitCheck() != B_OK) {
        found.complaints.push_back("Error opening node info!");
        found.kind = ViewedKind::kError;
    } else if (ReadType(entry, info, type) != B_OK) {
        found.complaints.push_back("Error getting file type!");
        found.kind = ViewedKind::kError;
    } else {
        found.kind = KindOf(type);
        if (found.kind == ViewedKind::kUnknown && found.isFile && IsEmpty(node)) {
            found.kind = ViewedKind::kText;
        }
        if (found.kind == ViewedKind::kUnknown) {
            found.complaints.push_back("Unknown file type!");
        }
    }
    return found;
}

} // namespace norvane
