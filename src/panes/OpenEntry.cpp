#include "panes/OpenEntry.h"

#include "DetachedThread.h"
#include "MessageCodes.h"
#include "fileops/engine/ProblemList.h"
#include "settings/MsgBox.h"

#include <Message.h>
#include <Mime.h>
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

BMessage NotOpened(const std::string& name, status_t status)
{
    BMessage message(kNotOpened);
    message.AddString("name", name.c_str());
    message.AddInt32("status", status);
    return message;
}

void SendNotOpened(const std::string& name, status_t status, const BMessenger& window)
{
    BMessage message = NotOpened(name, status);
    window.SendMessage(&message);
}

/// Those that say that they open the type, then all others.
void AddPrograms(const BMimeType& type, BMessage* message)
{
    BMessage some;
    BMessage all;
    type.GetSupportingApps(&some);
    BMimeType::GetWildcardApps(&all);
    std::set<std::string> added;
    for (const BMessage* list : {&some, &all}) {
        const char* signature = nullptr;
        for (int32 index = 0; list->FindString("applications", index, &signature) == B_OK;
             index++) {
            char name[B_MIME_TYPE_LENGTH];
            if (added.insert(signature).second &&
                BMimeType(signature).GetShortDescription(name) == B_OK) {
                message->AddString("signature", signature);
                message->AddString("program", name);
            }
        }
    }
}

/// Tells of a file that no program is set for, and of the programs that there are.
void SendWithoutProgram(const entry_ref& entry, const BMessenger& window)
{
    BMessage message = NotOpened(entry.name, B_LAUNCH_FAILED_NO_PREFERRED_APP);
    entry_ref file;
    BMimeType type;
    char kind[B_MIME_TYPE_LENGTH];
    if (BEntry(&entry, true).GetRef(&file) == B_OK &&
        BMimeType::GuessMimeType(&file, &type) == B_OK) {
        message.AddRef("refs", &file);
        message.AddString("type", type.Type());
        if (type.GetShortDescription(kind) == B_OK) {
            message.AddString("kind", kind);
        }
        AddPrograms(type, &message);
    }
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
        if (status == B_LAUNCH_FAILED_NO_PREFERRED_APP) {
            SendWithoutProgram(entry, window);
        } else if (status != B_OK && status != B_BAD_TYPE) { // of nodes that nobody opens
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

void OfferPrograms(const entry_ref& entry, const BMessenger& window)
{
    StartElsewhere(entry.name, window, [entry, window] { SendWithoutProgram(entry, window); });
}

void OpenByProgram(const entry_ref& entry, const std::string& signature,
                   const std::string& typeToKeep, const BMessenger& window)
{
    StartElsewhere(entry.name, window, [entry, signature, typeToKeep, window] {
        BPath path;
        status_t status = BEntry(&entry).GetPath(&path);
        if (status == B_OK) {
            const char* argument = path.Path();
            status = be_roster->Launch(signature.c_str(), 1, &argument);
        }
        if (status == B_OK && !typeToKeep.empty() &&
            BMimeType(typeToKeep.c_str()).SetPreferredApp(signature.c_str()) != B_OK) {
            MsgBox("Err", "The program could not be set for all files of this kind.", "OK",
                   B_INFO_ALERT);
        }
        if (status != B_OK) {
            SendNotOpened(entry.name, status, window);
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
