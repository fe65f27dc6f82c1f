// The icons of BNodeInfo: those stored in nodes, and those that lists show.

#include "IconDrawings.h"
#include "IconKinds.h"
#include "kernel/Mutex.h"
#include "server/WindowServer.h"
#include "storage/SystemCalls.h"

#include <Bitmap.h>
#include <Directory.h>
#include <Entry.h>
#include <FindDirectory.h>
#include <Node.h>
#include <NodeInfo.h>
#include <Path.h>

#include <map>
#include <string>
#include <utility>
#include <vector>

namespace {

using kits::IconKind;

constexpr type_code kMiniIconType = 'MICN';
constexpr type_code kLargeIconType = 'ICON';

const char* AttributeOf(icon_size which)
{
    return which == B_MINI_ICON ? "BEOS:M:STD_ICON" : "BEOS:L:STD_ICON";
}

bool Fits(const BBitmap* icon, icon_size which)
{
    return icon != nullptr && (which == B_MINI_ICON || which == B_LARGE_ICON) &&
           icon->InitCheck() == B_OK && icon->Bounds() == BRect(0, 0, which - 1, which - 1);
}

/// The names of the desktop's icon theme, in the order of IconKind; null where a theme has nothing
/// like it.
const char* ThemeName(IconKind kind)
{
    static constexpr const char* kNames[kits::kIconKinds] = {
        nullptr,
        "folder",
        "user-home",
        "user-trash",
        "text-x-generic",
        "image-x-generic",
        "audio-x-generic",
        "video-x-generic",
        "package-x-generic",
        "application-x-executable",
        nullptr,
        "drive-harddisk",
    };
    return kNames[static_cast<size_t>(kind)];
}

/// One icon at one size, with a drawing of twice the size for dense screens.
struct Picture
{
    QImage plain;
    QImage dense;
};

QImage PictureAt(IconKind kind, icon_size which, int32 scale)
{
    const int32 size = which * scale;
    kits::WindowServer& server = kits::WindowServer::Get();
    if (ThemeName(kind) != nullptr && server.IsRunning() && !server.IsServerThread()) {
        const QImage theme = server.ThemeIcon(ThemeName(kind), which, static_cast<float>(scale));
        if (!theme.isNull()) {
            return theme.convertToFormat(QImage::Format_ARGB32)
                .scaled(size, size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
        }
    }
    return kits::DrawIcon(kind, size);
}

/// The picture of a kind, made once. Ownership: lent for ever.
const Picture& PictureOf(IconKind kind, icon_size which)
{
    static kits::Mutex mutex;
    static std::map<std::pair<IconKind, icon_size>, Picture> pictures; // guarded by mutex
    const std::pair key(kind, which);
    {
        const kits::MutexLock lock(mutex);
        const auto found = pictures.find(key);
        if (found != pictures.end()) {
            return found->second;
        }
    }
    // Unlocked, because the server may be waited for. Two threads that come here at once make the
    // same.
    Picture made{PictureAt(kind, which, 1), PictureAt(kind, which, 2)};
    const kits::MutexLock lock(mutex);
    return pictures.emplace(key, std::move(made)).first->second;
}

status_t Fill(BBitmap* icon, IconKind kind, icon_size which)
{
    if (!Fits(icon, which)) {
        return B_BAD_VALUE;
    }
    const Picture& picture = PictureOf(kind, which);
    const QImage& plain = picture.plain;
    const status_t status =
        icon->ImportBits(plain.constBits(), static_cast<int32>(plain.sizeInBytes()),
                         static_cast<int32>(plain.bytesPerLine()), 0, B_RGBA32);
    if (status != B_OK) {
        return status;
    }
    return icon->SetDoubleBits(picture.dense.constBits(),
                               static_cast<int32>(picture.dense.sizeInBytes()), B_RGBA32);
}

struct KnownFolders
{
    node_ref home;
    node_ref trash;
};

const KnownFolders& TheKnownFolders()
{
    static const KnownFolders known = [] {
        KnownFolders found;
        BPath path;
        if (find_directory(B_USER_DIRECTORY, &path) == B_OK) {
            BEntry(path.Path(), true).GetNodeRef(&found.home);
        }
        if (find_directory(B_TRASH_DIRECTORY, &path) == B_OK) {
            BEntry(path.Path(), true).GetNodeRef(&found.trash);
        }
        return found;
    }();
    return known;
}

IconKind KindOf(const char* name, const struct stat& st, dev_t folderDevice)
{
    if (!S_ISDIR(st.st_mode)) {
        return kits::IconKindOfEntry(name, st.st_mode);
    }
    const node_ref node(st.st_dev, st.st_ino);
    if (node == TheKnownFolders().home) {
        return IconKind::kHome;
    }
    if (node == TheKnownFolders().trash) {
        return IconKind::kTrash;
    }
    return st.st_dev != folderDevice ? IconKind::kDisk : IconKind::kFolder;
}

/// The name by which an open node is reached now; "" when it is not.
std::string NameOf(const BNode& node)
{
    const kits::UniqueFd copy(node.Dup());
    std::string path;
    if (!copy.IsOpen() || kits::sys::PathOf(copy.Get(), &path) != B_OK) {
        return {};
    }
    return path.substr(path.rfind('/') + 1);
}

} // namespace

status_t BNodeInfo::GetIcon(BBitmap* icon, icon_size which) const
{
    if (!Fits(icon, which)) {
        return B_BAD_VALUE;
    }
    if (fNode == nullptr) {
        return B_NO_INIT;
    }
    std::vector<uint8> pixels(static_cast<size_t>(which) * which);
    const ssize_t length =
        fNode->ReadAttr(AttributeOf(which), which == B_MINI_ICON ? kMiniIconType : kLargeIconType,
                        0, pixels.data(), pixels.size());
    if (length < 0) {
        return length == B_UNSUPPORTED ? status_t(B_ENTRY_NOT_FOUND)
                                       : static_cast<status_t>(length);
    }
    if (static_cast<size_t>(length) != pixels.size()) {
        return B_BAD_VALUE; // others write attributes too
    }
    return icon->ImportBits(pixels.data(), static_cast<int32>(length), which, 0, B_CMAP8);
}

status_t BNodeInfo::SetIcon(const BBitmap* icon, icon_size which)
{
    if (fNode == nullptr) {
        return B_NO_INIT;
    }
    if (icon == nullptr) {
        return fNode->RemoveAttr(AttributeOf(which));
    }
    if (!Fits(icon, which) || icon->ColorSpace() != B_CMAP8 || icon->BytesPerRow() != which) {
        return B_BAD_VALUE;
    }
    const ssize_t written =
        fNode->WriteAttr(AttributeOf(which), which == B_MINI_ICON ? kMiniIconType : kLargeIconType,
                         0, icon->Bits(), static_cast<size_t>(which) * which);
    return written < 0 ? static_cast<status_t>(written) : status_t(B_OK);
}

status_t BNodeInfo::GetTrackerIcon(BBitmap* icon, icon_size which) const
{
    if (!Fits(icon, which)) {
        return B_BAD_VALUE;
    }
    if (fNode == nullptr) {
        return B_NO_INIT;
    }
    if (fNode->CountAttrs() > 0) {
        if (GetIcon(icon, which) == B_OK) {
            return B_OK;
        }
        char type[B_MIME_TYPE_LENGTH];
        if (GetType(type) == B_OK) {
            return Fill(icon, kits::IconKindOfType(type), which);
        }
    }
    struct stat st;
    const status_t status = fNode->GetStat(&st);
    return status == B_OK ? Fill(icon, KindOf(NameOf(*fNode).c_str(), st, st.st_dev), which)
                          : status;
}

status_t BNodeInfo::GetTrackerIcon(const entry_ref* ref, BBitmap* icon, icon_size which)
{
    if (ref == nullptr || !Fits(icon, which)) {
        return B_BAD_VALUE;
    }
    const BEntry entry(ref);
    struct stat st;
    status_t status = entry.InitCheck();
    if (status == B_OK) {
        status = entry.GetStat(&st);
    }
    return status == B_OK ? Fill(icon, KindOf(ref->name, st, ref->device), which) : status;
}

status_t BNodeInfo::GetTrackerIcon(const char* name, mode_t mode, BBitmap* icon, icon_size which)
{
    if (name == nullptr || !Fits(icon, which)) {
        return B_BAD_VALUE;
    }
    return Fill(icon, kits::IconKindOfEntry(name, mode), which);
}
