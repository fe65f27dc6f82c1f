// The icons of BNodeInfo: those stored in nodes, and those that lists show.

#include "BitmapAccess.h"
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
#include <tuple>
#include <vector>

namespace {

using kits::IconKind;
using kits::IconLook;

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

/// The theme's picture of the first name that it has; null when it has none of them.
QImage ThemePicture(const IconLook& look, icon_size which, int32 sizePx)
{
    const char* ofKind = ThemeName(look.kind);
    const float scale = static_cast<float>(sizePx) / static_cast<float>(which);
    for (const std::string& name :
         {look.typeName, look.genericName, std::string(ofKind != nullptr ? ofKind : "")}) {
        if (name.empty()) {
            continue;
        }
        const QImage theme = kits::WindowServer::Get().ThemeIcon(name, which, scale);
        if (!theme.isNull()) {
            const QImage picture = theme.convertToFormat(QImage::Format_ARGB32);
            return picture.width() == sizePx && picture.height() == sizePx
                       ? picture
                       : picture.scaled(sizePx, sizePx, Qt::IgnoreAspectRatio,
                                        Qt::SmoothTransformation);
        }
    }
    return {};
}

/// The picture of a look, made once for each number of device pixels.
QImage PictureOf(const IconLook* look, icon_size which, int32 sizePx)
{
    using Key = std::tuple<const IconLook*, icon_size, int32>;
    static kits::Mutex mutex;
    // Never destroyed: threads that nobody waits for may ask when main() has ended.
    using Pictures = std::map<Key, QImage>;
    static Pictures& pictures GUARDED_BY(mutex) = *new Pictures;
    const Key key(look, which, sizePx);
    {
        const kits::MutexLock lock(mutex);
        const auto found = pictures.find(key);
        if (found != pictures.end()) {
            return found->second;
        }
    }
    // Unlocked, because the server may be waited for. Two threads that come here at once make the
    // same.
    const kits::WindowServer& server = kits::WindowServer::Get();
    const bool hasTheme = server.IsRunning() && !server.IsServerThread();
    QImage picture = hasTheme ? ThemePicture(*look, which, sizePx) : QImage();
    if (picture.isNull()) {
        picture = kits::DrawIcon(look->kind, sizePx);
    }
    if (hasTheme) {
        const kits::MutexLock lock(mutex);
        pictures.emplace(key, picture);
    }
    return picture;
}

status_t Fill(BBitmap* icon, const IconLook* look, icon_size which)
{
    if (!Fits(icon, which)) {
        return B_BAD_VALUE;
    }
    const bool isFilled = kits::BitmapAccess::SetPicture(
        *icon, [look, which](int32 widthPx, int32) { return PictureOf(look, which, widthPx); });
    return isFilled ? B_OK : B_NO_MEMORY;
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

const IconLook* LookOf(const char* name, const struct stat& st, dev_t folderDevice)
{
    if (!S_ISDIR(st.st_mode)) {
        return kits::LookOfEntry(name, st.st_mode);
    }
    const node_ref node(st.st_dev, st.st_ino);
    if (node == TheKnownFolders().home) {
        return kits::LookOfKind(IconKind::kHome);
    }
    if (node == TheKnownFolders().trash) {
        return kits::LookOfKind(IconKind::kTrash);
    }
    return kits::LookOfKind(st.st_dev != folderDevice ? IconKind::kDisk : IconKind::kFolder);
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
            return Fill(icon, kits::LookOfType(type), which);
        }
    }
    struct stat st;
    const status_t status = fNode->GetStat(&st);
    return status == B_OK ? Fill(icon, LookOf(NameOf(*fNode).c_str(), st, st.st_dev), which)
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
    return status == B_OK ? Fill(icon, LookOf(ref->name, st, ref->device), which) : status;
}

status_t BNodeInfo::GetTrackerIcon(const char* name, mode_t mode, BBitmap* icon, icon_size which)
{
    if (name == nullptr || !Fits(icon, which)) {
        return B_BAD_VALUE;
    }
    return Fill(icon, kits::LookOfEntry(name, mode), which);
}
