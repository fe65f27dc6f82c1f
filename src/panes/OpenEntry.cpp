#include "panes/OpenEntry.h"

#include "DetachedThread.h"
#include "MessageCodes.h"
#include "fileops/engine/ProblemList.h"
#include "settings/MsgBox.h"

#include <Message.h>
#include <OS.h>
#include <Path.h>
#include <Roster.h>

#include <functional>
#include <mutex>
#include <set>
#include <utility>

namespace norvane {

namespace {

constexpr const char* kEditor = "/boot/apps/StyledEdit";
constexpr const char* kTracker = "/boot/beos/system/Tracker";

/// Entries that are being opened.
class BeingOpened
{
public:
    static BeingOpened& Get()
    {
        // Never destroyed: what is being opened may outlive everything.
        static auto* opened = new BeingOpened;
        return *opened;
    }

    /// False when it is being opened already.
    bool Begin(const entry_ref& entry)
    {
        const std::lock_guard lock(fMutex);
        return fEntries.insert(entry).second;
    }

    void End(const entry_ref& entry)
    {
        const std::lock_guard lock(fMutex);
        fEntries.erase(entry);
    }

private:
    std::mutex fMutex; // guards fEntries
    std::set<entry_ref> fEntries;
};

void SendNotOpened(const std::string& name, status_t status, const BMessenger& window)
{
    BMessage message(kNotOpened);
    message.AddString("name", name.c_str());
    message.AddInt32("status", status);
    window.SendMessage(&message);
}

/// Starts one of the platform's own programs with one argument.
status_t LaunchWith(const char* program, const char* argument)
{
    entry_ref ref;
    const status_t status = get_ref_for_path(program, &ref);
    return status == B_OK ? be_roster->Launch(&ref, 1, &argument) : status;
}

status_t LaunchEditor(const entry_ref& entry)
{
    BPath path;
    const status_t status = BEntry(&entry).GetPath(&path);
    return status == B_OK ? LaunchWith(kEditor, path.Path()) : status;
}

/// Does `work` elsewhere; `name` is told of when there is no thread.
bool StartElsewhere(const std::string& name, const BMessenger& window, std::function<void()> work)
{
    const bool isStarted = StartDetached("opening", B_NORMAL_PRIORITY, std::move(work));
    if (!isStarted) {
        SendNotOpened(name, B_NO_MORE_THREADS, window);
    }
    return isStarted;
}

} // namespace

void OpenEntry(const entry_ref& entry, const BMessenger& window)
{
    if (!BeingOpened::Get().Begin(entry)) {
        return;
    }
    const bool isStarted = StartElsewhere(entry.name, window, [entry, window] {
        const status_t status = be_roster->Launch(&entry);
        BeingOpened::Get().End(entry);
        if (status != B_OK && status != B_BAD_TYPE) { // of nodes that nobody opens
            SendNotOpened(entry.name, status, window);
        }
    });
    if (!isStarted) {
        BeingOpened::Get().End(entry);
    }
}

void OpenInEditor(std::vector<entry_ref> entries, const BMessenger& window)
{
    if (entries.empty()) {
        return;
    }
    const std::string first = entries.front().name;
    StartElsewhere(first, window, [entries = std::move(entries), window] {
        for (const entry_ref& entry : entries) {
            const status_t status = LaunchEditor(entry);
            if (status != B_OK) {
                SendNotOpened(entry.name, status, window);
            }
        }
    });
}

void OpenInTracker(const std::string& folder, const BMessenger& window)
{
    StartElsewhere(folder, window, [folder, window] {
        const status_t status = LaunchWith(kTracker, folder.c_str());
        if (status != B_OK) {
            SendNotOpened(folder, status, window);
        }
    });
}

void TellNotOpened(const BMessage& message)
{
    const char* name = nullptr;
    int32 status = B_OK;
    if (message.FindString("name", &name) == B_OK && message.FindInt32("status", &status) == B_OK) {
        const std::string text = "Could not open " + ShownName(name) + ": " + ReasonFor(status);
        MsgBox("Err", text.c_str(), "OK", B_INFO_ALERT);
    }
}

} // namespace norvane
