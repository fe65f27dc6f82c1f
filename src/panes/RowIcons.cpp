#include "panes/RowIcons.h"

#include "MessageCodes.h"
#include "panes/DiskErrands.h"

#include <Autolock.h>
#include <Bitmap.h>
#include <Entry.h>
#include <Locker.h>
#include <Message.h>
#include <Mime.h>
#include <Node.h>
#include <NodeInfo.h>

#include <map>
#include <string>
#include <utility>

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
    // Never destroyed: threads that wait for a disk go on when main() has ended.
    using Icons = std::map<std::string, std::unique_ptr<BBitmap>>;
    static BLocker& lock = *new BLocker("row icons");
    static Icons& icons GUARDED_BY(lock) = *new Icons;
    const std::string kind = KindOf(ref, mode);
    const BAutolock hold(lock);
    std::unique_ptr<BBitmap>& icon = icons[kind];
    if (icon == nullptr) {
        icon = std::make_unique<BBitmap>(kIconBounds, B_CMAP8);
        BNodeInfo::GetTrackerIcon(ref.name, mode, icon.get(), B_MINI_ICON);
    }
    return icon.get();
}

/// Icons on their way from the thread that found them to a list, by number. What no list takes, as
/// it is gone, stays: such icons are few.
class FoundIcons
{
public:
    int32 Put(RowIcon icon)
    {
        const BAutolock hold(fLock);
        fIcons[++fLast] = std::move(icon);
        return fLast;
    }

    RowIcon Take(int32 number)
    {
        const BAutolock hold(fLock);
        const auto found = fIcons.find(number);
        RowIcon icon;
        if (found != fIcons.end()) {
            icon = std::move(found->second);
            fIcons.erase(found);
        }
        return icon;
    }

private:
    BLocker fLock{"found icons"};
    std::map<int32, RowIcon> fIcons GUARDED_BY(fLock);
    int32 fLast GUARDED_BY(fLock) = 0;
};

FoundIcons& Found()
{
    static auto* icons = new FoundIcons; // for threads that outlive everything
    return *icons;
}

} // namespace

const BBitmap* LikelyRowIcon(const entry_ref& ref, mode_t mode)
{
    return SharedIcon(ref, mode);
}

void FindRowIconLater(const entry_ref& ref, const node_ref& node, mode_t mode,
                      const BBitmap* likely, const BMessenger& list)
{
    DiskErrands::Get().Do([ref, node, mode, likely, list] {
        RowIcon icon = FindRowIcon(ref, mode);
        if (icon.own == nullptr && icon.shared == likely) {
            return;
        }
        BMessage found(kIconFound);
        found.AddString("name", ref.name);
        found.AddInt64("device", static_cast<int64>(node.device));
        found.AddInt64("node", static_cast<int64>(node.node));
        found.AddInt32("number", Found().Put(std::move(icon)));
        list.SendMessage(&found);
    });
}

bool FoundIcon::Read(const BMessage& message)
{
    int64 device = 0;
    int64 number = 0;
    int32 iconNumber = 0;
    const char* found = nullptr;
    if (message.what != kIconFound || message.FindString("name", &found) != B_OK ||
        message.FindInt64("device", &device) != B_OK ||
        message.FindInt64("node", &number) != B_OK ||
        message.FindInt32("number", &iconNumber) != B_OK) {
        return false;
    }
    name = found;
    node = node_ref(static_cast<dev_t>(device), static_cast<ino_t>(number));
    icon = Found().Take(iconNumber);
    return icon.own != nullptr || icon.shared != nullptr;
}

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
