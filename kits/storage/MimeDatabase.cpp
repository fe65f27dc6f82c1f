// What BMimeType asks of the shared MIME database.

#include "MimeDatabase.h"
#include "DesktopChoice.h"

#include <Entry.h>
#include <File.h>
#include <Mime.h>

#include <QByteArray>
#include <QMimeDatabase>
#include <QMimeType>
#include <QString>

#include <algorithm>
#include <cstring>

namespace {

// As much of a file as the database's rules look at, nearly always.
constexpr size_t kLookedAtBytes = size_t{16} * 1024;

status_t SetType(BMimeType* type, const QMimeType& found)
{
    return type->SetTo(found.name().toUtf8().constData());
}

const char* TypeOfKind(mode_t mode)
{
    switch (mode & S_IFMT) {
    case S_IFDIR:
        return B_DIRECTORY_MIME_TYPE;
    case S_IFLNK:
        return B_SYMLINK_MIME_TYPE;
    case S_IFCHR:
        return "inode/chardevice";
    case S_IFBLK:
        return "inode/blockdevice";
    case S_IFIFO:
        return "inode/fifo";
    case S_IFSOCK:
        return "inode/socket";
    }
    return nullptr;
}

} // namespace

namespace kits {

TypeIconNames IconNamesOfType(const std::string& type)
{
    const QMimeType found = QMimeDatabase().mimeTypeForName(QString::fromStdString(type));
    if (!found.isValid()) {
        return {};
    }
    return {found.iconName().toStdString(), found.genericIconName().toStdString()};
}

} // namespace kits

bool BMimeType::Inherits(const char* type) const
{
    if (fStatus != B_OK || type == nullptr) {
        return false;
    }
    const QMimeType mine = QMimeDatabase().mimeTypeForName(QString::fromStdString(fType));
    return *this == type || (mine.isValid() && mine.inherits(QString::fromUtf8(type)));
}

bool BMimeType::IsInstalled() const
{
    return fStatus == B_OK &&
           (QMimeDatabase().mimeTypeForName(QString::fromStdString(fType)).isValid() ||
            !kits::FileOfSignature(fType).empty());
}

status_t BMimeType::GetShortDescription(char* buffer) const
{
    if (buffer == nullptr) {
        return B_BAD_VALUE;
    }
    if (fStatus != B_OK) {
        return B_NO_INIT;
    }
    const QMimeType found = QMimeDatabase().mimeTypeForName(QString::fromStdString(fType));
    const QByteArray words =
        found.isValid() ? found.comment().toUtf8()
                        : QByteArray::fromStdString(kits::NameOfProgram(kits::ProgramOf(fType)));
    if (words.isEmpty()) {
        return B_ENTRY_NOT_FOUND;
    }
    size_t length = std::min<size_t>(static_cast<size_t>(words.size()), B_MIME_TYPE_LENGTH - 1);
    // Not in the middle of a character.
    while (length < static_cast<size_t>(words.size()) && length > 0 &&
           (words[static_cast<qsizetype>(length)] & 0xc0) == 0x80) {
        --length;
    }
    std::memcpy(buffer, words.constData(), length);
    buffer[length] = '\0';
    return B_OK;
}

status_t BMimeType::GuessMimeType(const entry_ref* ref, BMimeType* type)
{
    if (ref == nullptr || type == nullptr) {
        return B_BAD_VALUE;
    }
    const BEntry entry(ref);
    struct stat st;
    status_t status = entry.InitCheck() == B_OK ? entry.GetStat(&st) : entry.InitCheck();
    if (status != B_OK) {
        return status;
    }
    const char* kind = TypeOfKind(st.st_mode);
    if (kind != nullptr) {
        return type->SetTo(kind);
    }
    status = GuessMimeType(ref->name, type);
    if (status != B_OK || *type != B_FILE_MIME_TYPE) {
        return status;
    }
    BFile file(ref, B_READ_ONLY | B_NO_TRAVERSE);
    char start[kLookedAtBytes];
    const ssize_t length = file.InitCheck() == B_OK ? file.Read(start, sizeof(start)) : 0;
    // A file that may not be read still has the type of its name.
    return length > 0 ? GuessMimeType(start, static_cast<int32>(length), type) : status_t(B_OK);
}

status_t BMimeType::GuessMimeType(const char* fileName, BMimeType* type)
{
    if (fileName == nullptr || type == nullptr) {
        return B_BAD_VALUE;
    }
    return type->SetTo(kits::MimeTypeOfName(fileName).c_str());
}

status_t BMimeType::GuessMimeType(const void* buffer, int32 length, BMimeType* type)
{
    if (buffer == nullptr || length < 0 || type == nullptr) {
        return B_BAD_VALUE;
    }
    return SetType(type, QMimeDatabase().mimeTypeForData(
                             QByteArray::fromRawData(static_cast<const char*>(buffer), length)));
}
