#include <Clipboard.h>

#include "ClipboardHooks.h"
#include "HookSlot.h"

#include <Application.h>
#include <Autolock.h>
#include <Beep.h>
#include <Locker.h>
#include <Message.h>
#include <TypeConstants.h>

#include "kernel/Mutex.h"
#include "kernel/WorkerThread.h"

#include <algorithm>
#include <atomic>
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

// What a clipboard holds when that came from another program.
BMessage MessageOf(const ClipboardContent& content)
{
    BMessage message;
    if (content.entries != nullptr) {
        message = *content.entries;
    }
    const std::string_view text = content.text.View();
    if (!text.empty()) {
        message.AddData(kTextField, B_MIME_TYPE, text.data(), static_cast<ssize_t>(text.size()));
    }
    return message;
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
    void TellChanged(const char* name);

    const bool isDesktops; // of all programs
    BLocker lock;
    BMessage data GUARDED_BY(lock);      // what is looked at and changed
    BMessage committed GUARDED_BY(lock); // what this program offered last
    BMessenger source GUARDED_BY(lock);
    uint64 offer GUARDED_BY(lock) = 0;      // its number on the desktop
    bool isFetched GUARDED_BY(lock) = true; // `data` is what was there when the lock was taken
    std::atomic<uint32> count{0};

    // Apart from `lock`, which may be held while another program is waited for.
    kits::Mutex watchLock;
    std::vector<BMessenger> watchers GUARDED_BY(watchLock);
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
    const kits::ClipboardContent content =
        hooks.fetchEntries != nullptr ? hooks.fetchEntries()
                                      : hooks.fetch(kits::ClipboardKind::kClipboard, nullptr);
    if (content.offer != 0 && content.offer == offer) {
        data = committed;
        return;
    }
    source = BMessenger();
    data = kits::MessageOf(content);
}

void BClipboard::Store::TellChanged(const char* name)
{
    count++;
    BMessage change(B_CLIPBOARD_CHANGED);
    change.AddString("be:clipboard", name);
    std::vector<BMessenger> told;
    {
        const kits::MutexLock guard(watchLock);
        told = watchers;
    }
    for (const BMessenger& watcher : told) {
        watcher.SendMessage(&change);
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
    return fStore->count;
}

status_t BClipboard::StartWatching(BMessenger target)
{
    if (!target.IsValid()) {
        return B_BAD_VALUE;
    }
    StopWatching(target);
    const kits::MutexLock guard(fStore->watchLock);
    fStore->watchers.push_back(target);
    return B_OK;
}

status_t BClipboard::StopWatching(BMessenger target)
{
    const kits::MutexLock guard(fStore->watchLock);
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
    const kits::ClipboardHooks& hooks = kits::GetClipboardHooks();
    if (store.isDesktops && hooks.offerEntries != nullptr &&
        store.data.HasData("refs", B_REF_TYPE)) {
        store.offer = hooks.offerEntries(std::make_shared<const BMessage>(store.data));
    } else if (store.isDesktops && hooks.offer != nullptr) {
        store.offer = hooks.offer(kits::ClipboardKind::kClipboard,
                                  kits::SharedText(std::string(kits::TextOf(store.data))));
    }
    store.TellChanged(Name()); // posting takes no lock of ours, and waits for nobody
    return B_OK;
}

status_t BClipboard::SendData(const BMessenger& target, uint32 what) const
{
    if (!target.IsValid()) {
        return B_BAD_VALUE;
    }
    const auto send = [target, what](BMessage data) {
        data.what = what;
        target.SendMessage(&data);
    };
    const kits::ClipboardHooks& hooks = kits::GetClipboardHooks();
    kits::ClipboardContent own;
    const bool isElsewhere = fStore->isDesktops && hooks.fetchEntries != nullptr &&
                             !hooks.peek(kits::ClipboardKind::kClipboard, &own);
    if (isElsewhere) {
        return kits::StartDetached("clipboard", [send, fetch = hooks.fetchEntries] {
            const kits::ClipboardContent content = fetch();
            if (content.isOwnerSilent) {
                beep();
            }
            send(kits::MessageOf(content));
        });
    }
    const BAutolock lock(fStore->lock);
    send(fStore->committed);
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

void BClipboard::Replaced()
{
    fStore->TellChanged(Name());
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

void kits::ClipboardReplaced()
{
    be_clipboard->Replaced();
}
