#include "panes/EntryClipboard.h"

#include "MessageCodes.h"

#include <AppDefs.h>
#include <Clipboard.h>
#include <Entry.h>
#include <Looper.h>
#include <Message.h>
#include <Messenger.h>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <unordered_set>
#include <utility>

namespace norvane {

namespace {

// Names, by the device and number of their folder.
using Folders = std::map<std::pair<dev_t, ino_t>, std::unordered_set<std::string>>;

// Of what was cut here: which change of the clipboard it was.
constexpr char kCutCount[] = "CutCount";

struct CutEntries
{
    std::mutex mutex; // guards the next two
    Folders folders;
    uint32 count = 0;                // of the clipboard's changes, when they were put there
    std::atomic<bool> areAny{false}; // so that rows ask for nothing else most of the time
    std::atomic<uint32> generation{0};

    void Set(Folders cut, uint32 change)
    {
        const std::lock_guard lock(mutex);
        if (!folders.empty() || !cut.empty()) {
            generation++;
        }
        folders.swap(cut);
        count = change;
        areAny = !folders.empty();
    }
};

CutEntries& Known()
{
    static auto* known = new CutEntries; // never destroyed: windows paint to the end
    return *known;
}

Folders FoldersOf(const BMessage& entries)
{
    Folders folders;
    entry_ref ref;
    for (int32 index = 0; entries.FindRef("refs", index, &ref) == B_OK; index++) {
        folders[{ref.device, ref.directory}].insert(ref.name);
    }
    return folders;
}

/// What a look at the clipboard finds, for whoever waits for it.
class ClipboardLook
{
public:
    void Found(bool areThere)
    {
        const std::lock_guard lock(fMutex);
        fAreThere = areThere;
        fIsKnown.notify_all();
    }
    std::optional<bool> WaitFor(std::chrono::milliseconds patience)
    {
        std::unique_lock lock(fMutex);
        fIsKnown.wait_for(lock, patience, [this] { return fAreThere.has_value(); });
        return fAreThere;
    }

private:
    std::mutex fMutex; // guards fAreThere
    std::condition_variable fIsKnown;
    std::optional<bool> fAreThere;
};

/// Is sent what the clipboard holds, and ends.
class ClipboardReader : public BLooper
{
public:
    explicit ClipboardReader(std::shared_ptr<ClipboardLook> look)
        : BLooper("clipboard look"), fLook(std::move(look))
    {
    }
    void MessageReceived(BMessage* message) override
    {
        if (message->what == kEntriesToPaste) {
            fLook->Found(message->HasRef("refs"));
            Quit();
        } else {
            BLooper::MessageReceived(message);
        }
    }

private:
    const std::shared_ptr<ClipboardLook> fLook;
};

void Put(const BMessage& entries, int32 action)
{
    BMessage data(entries);
    data.AddInt32("be:actions", action);
    if (!be_clipboard->Lock()) {
        return;
    }
    const uint32 change = be_clipboard->SystemCount() + 1;
    data.AddInt32(kCutCount, static_cast<int32>(change));
    be_clipboard->Clear();
    *be_clipboard->Data() = data;
    be_clipboard->Commit();
    Known().Set(action == B_MOVE_TARGET ? FoldersOf(entries) : Folders(), change);
    be_clipboard->Unlock();
}

} // namespace

void EntryClipboard::Copy(const BMessage& entries)
{
    Put(entries, B_COPY_TARGET);
}

void EntryClipboard::Cut(const BMessage& entries)
{
    Put(entries, B_MOVE_TARGET);
}

void EntryClipboard::Ask(const BMessenger& list)
{
    be_clipboard->SendData(list, kEntriesToPaste);
}

bool EntryClipboard::MayHoldEntries()
{
    constexpr std::chrono::milliseconds kPatience(100);
    const auto look = std::make_shared<ClipboardLook>();
    auto* reader = new ClipboardReader(look); // deletes itself
    const BMessenger messenger(reader);
    if (reader->Run() < B_OK) {
        reader->Quit();
        return true;
    }
    if (be_clipboard->SendData(messenger, kEntriesToPaste) != B_OK) {
        messenger.SendMessage(B_QUIT_REQUESTED);
        return true;
    }
    return look->WaitFor(kPatience).value_or(true);
}

void EntryClipboard::Pasted(const BMessage& entries)
{
    const auto count = static_cast<uint32>(entries.GetInt32(kCutCount, 0));
    if (entries.GetInt32("be:actions", B_COPY_TARGET) != B_MOVE_TARGET ||
        count != be_clipboard->SystemCount() || !be_clipboard->Lock()) {
        return;
    }
    be_clipboard->Clear();
    be_clipboard->Commit();
    be_clipboard->Unlock();
}

void EntryClipboard::Changed()
{
    CutEntries& known = Known();
    {
        const std::lock_guard lock(known.mutex);
        if (known.count == be_clipboard->SystemCount()) {
            return;
        }
    }
    known.Set(Folders(), be_clipboard->SystemCount());
}

uint32 EntryClipboard::Generation()
{
    return Known().generation;
}

bool EntryClipboard::IsCut(const entry_ref& ref)
{
    CutEntries& known = Known();
    if (!known.areAny || ref.name == nullptr) {
        return false;
    }
    const std::lock_guard lock(known.mutex);
    const auto folder = known.folders.find({ref.device, ref.directory});
    return folder != known.folders.end() && folder->second.count(ref.name) != 0;
}

} // namespace norvane
