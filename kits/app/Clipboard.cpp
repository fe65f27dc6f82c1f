#include <Clipboard.h>

#include "ClipboardHooks.h"
#include "HookSlot.h"

#include <Application.h>
#include <Autolock.h>
#include <Locker.h>
#include <Message.h>
#include <TypeConstants.h>

#include "kernel/Mutex.h"

#include <algorithm>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace kits {

namespace {

constexpr char kTextField[] = "text/plain";

HookSlot<ClipboardHooks>& Slot()
{
    static HookSlot<ClipboardHooks> slot; // made when first asked for: registrars run before main()
    return slot;
}

// Lent by the message.
std::string_view TextOf(const BMessage& message)
{
    const void* data = nullptr;
    ssize_t size = 0;
    if (message.FindData(kTextField, B_MIME_TYPE, &data, &size) != B_OK) {
        return {};
    }
    return {static_cast<const char*>(data), static_cast<size_t>(size)};
}

} // namespace

void SetClipboardHooks(const ClipboardHooks& hooks)
{
    Slot().Set(hooks);
}

const ClipboardHooks& GetClipboardHooks()
{
    return Slot().Get();
}

} // namespace kits

/// What the clipboards of one name share.
struct BClipboard::Store
{
    explicit Store(bool isShared) : isDesktops(isShared) {}

    static std::shared_ptr<Store> Get(const std::string& name);
    void Fetch() REQUIRES(lock);

    const bool isDesktops; // of all programs
    BLocker lock;
    BMessage data GUARDED_BY(lock);      // what is looked at and changed
    BMessage committed GUARDED_BY(lock); // what this program offered last
    BMessenger source GUARDED_BY(lock);
    uint64 offer GUARDED_BY(lock) = 0;      // its number on the desktop
    bool isFetched GUARDED_BY(lock) = true; // `data` is what was there when the lock was taken
    uint32 count GUARDED_BY(lock) = 0;
    std::vector<BMessenger> watchers GUARDED_BY(lock);
};

std::shared_ptr<BClipboard::Store> BClipboard::Store::Get(const std::string& name)
{
    static kits::Mutex lock;
    static std::map<std::string, std::shared_ptr<Store>> stores;
    const kits::MutexLock guard(lock);
    std::shared_ptr<Store>& store = stores[name];
    if (store == nullptr) {
        store = std::make_shared<Store>(name == "system");
    }
    return store;
}

// Only when somebody looks: copying never asks another program for what it is about to replace.
void BClipboard::Store::Fetch()
{
    if (isFetched) {
        return;
    }
    isFetched = true;
    const kits::ClipboardHooks& hooks = kits::GetClipboardHooks();
    if (!isDesktops || hooks.fetch == nullptr) {
        data = committed;
        return;
    }
    const kits::ClipboardContent content = hooks.fetch(kits::ClipboardKind::kClipboard, nullptr);
    if (content.offer != 0 && content.offer == offer) {
        data = committed;
        return;
    }
    const std::string_view text = content.text.View();
    if (text != kits::TextOf(data)) {
        count++;
    }
    source = BMessenger();
    data.MakeEmpty();
    if (!text.empty()) {
        data.AddData(kits::kTextField, B_MIME_TYPE, text.data(), static_cast<ssize_t>(text.size()));
    }
}

BClipboard::BClipboard(const char* name, bool)
    : fName(name != nullptr ? name : ""), fStore(Store::Get(fName))
{
}

BClipboard::~BClipboard() = default;

uint32 BClipboard::LocalCount() const
{
    return SystemCount();
}

uint32 BClipboard::SystemCount() const
{
    const BAutolock lock(fStore->lock);
    return fStore->count;
}

status_t BClipboard::StartWatching(BMessenger target)
{
    if (!target.IsValid()) {
        return B_BAD_VALUE;
    }
    StopWatching(target);
    const BAutolock lock(fStore->lock);
    fStore->watchers.push_back(target);
    return B_OK;
}

status_t BClipboard::StopWatching(BMessenger target)
{
    const BAutolock lock(fStore->lock);
    return std::erase(fStore->watchers, target) > 0 ? B_OK : B_BAD_VALUE;
}

// The caller holds the lock between these two, which the analysis does not follow.
bool BClipboard::Lock() NO_THREAD_SAFETY_ANALYSIS
{
    fStore->lock.Lock();
    if (fStore->lock.CountLocks() == 1) {
        fStore->isFetched = false;
    }
    return true;
}

void BClipboard::Unlock() NO_THREAD_SAFETY_ANALYSIS
{
    fStore->lock.Unlock();
}

bool BClipboard::IsLocked() const
{
    return fStore->lock.IsLocked();
}

status_t BClipboard::Clear()
{
    if (!IsLocked()) {
        return B_NOT_ALLOWED;
    }
    const BAutolock lock(fStore->lock); // nests
    fStore->data.MakeEmpty();
    fStore->isFetched = true;
    return B_OK;
}

status_t BClipboard::Commit()
{
    if (!IsLocked()) {
        return B_NOT_ALLOWED;
    }
    Store& store = *fStore;
    const BAutolock lock(store.lock); // nests
    store.Fetch();
    store.committed = store.data;
    store.source = be_app_messenger;
    store.count++;
    const kits::ClipboardHooks& hooks = kits::GetClipboardHooks();
    if (store.isDesktops && hooks.offer != nullptr) {
        store.offer = hooks.offer(kits::ClipboardKind::kClipboard,
                                  kits::SharedText(std::string(kits::TextOf(store.data))));
    }
    BMessage change(B_CLIPBOARD_CHANGED);
    change.AddString("be:clipboard", Name());
    // Posting takes no lock of ours, and waits for nobody.
    for (const BMessenger& watcher : store.watchers) {
        watcher.SendMessage(&change);
    }
    return B_OK;
}

status_t BClipboard::Revert()
{
    if (!IsLocked()) {
        return B_NOT_ALLOWED;
    }
    const BAutolock lock(fStore->lock); // nests
    fStore->isFetched = false;
    fStore->Fetch();
    return B_OK;
}

BMessenger BClipboard::DataSource() const
{
    if (!IsLocked()) {
        return BMessenger();
    }
    const BAutolock lock(fStore->lock);
    fStore->Fetch();
    return fStore->source;
}

BMessage* BClipboard::Data() const
{
    if (!IsLocked()) {
        return nullptr;
    }
    const BAutolock lock(fStore->lock);
    fStore->Fetch();
    return &fStore->data;
}

// Never destroyed: other statics may use it to the end.
BClipboard* const be_clipboard = new BClipboard("system");
