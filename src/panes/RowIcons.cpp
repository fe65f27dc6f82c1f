#include "panes/RowIcons.h"

#include <Autolock.h>
#include <Bitmap.h>
#include <Entry.h>
#include <Locker.h>
#include <Mime.h>
#include <Node.h>
#include <NodeInfo.h>

#include <map>
#include <string>

namespace norvane {

namespace {

const BRect kIconBounds(0, 0, 15, 15);

/// The icon that is stored in the very node; null when there is none, as nearly always.
std::unique_ptr<BBitmap> StoredIcon(const entry_ref& ref)
{
    BNode node(&ref);
    if (node.InitCheck() != B_OK || node.CountAttrs() == 0) {
        return nullptr;
    }
    auto icon = std::make_unique<BBitmap>(kIconBounds, B_CMAP8);
    if (BNodeInfo(&node).GetTrackerIcon(icon.get(), B_MINI_ICON) != B_OK) {
        return nullptr;
    }
    return icon;
}

/// What all entries with the same picture have in common.
std::string KindOf(const entry_ref& ref, mode_t mode)
{
    if (!S_ISREG(mode)) {
        return S_ISDIR(mode) ? "folder" : "link";
    }
    BMimeType type;
    BMimeType::GuessMimeType(ref.name, &type);
    std::string kind = type.Type() != nullptr ? type.Type() : "";
    if ((mode & S_IXUSR) != 0) {
        kind += " executable";
    }
    return kind;
}

const BBitmap* SharedIcon(const entry_ref& ref, mode_t mode)
{
    static BLocker lock("row icons");
    static std::map<std::string, std::unique_ptr<BBitmap>> icons GUARDED_BY(lock);
    const std::string kind = KindOf(ref, mode);
    const BAutolock hold(lock);
    std::unique_ptr<BBitmap>& icon = icons[kind];
    if (icon == nullptr) {
        icon = std::make_unique<BBitmap>(kIconBounds, B_CMAP8);
        BNodeInfo::GetTrackerIcon(ref.name, mode, icon.get(), B_MINI_ICON);
    }
    return icon.get();
}

} // namespace

RowIcon FindRowIcon(const entry_ref& ref, mode_t mode)
{
    entry_ref target = ref;
    mode_t targetMode = mode;
    if (S_ISLNK(mode)) {
        const BEntry entry(&ref, true);
        struct stat st = {};
        if (entry.GetStat(&st) == B_OK && entry.GetRef(&target) == B_OK) {
            targetMode = st.st_mode;
        }
    }
    RowIcon icon;
    icon.own = S_ISLNK(targetMode) ? nullptr : StoredIcon(target);
    if (icon.own == nullptr) {
        icon.shared = SharedIcon(target, targetMode);
    }
    return icon;
}

} // namespace norvane
