#include "outside/AddOnRun.h"

#include "DetachedThread.h"
#include "MessageCodes.h"
#include "outside/AddOns.h"

#include <Application.h>
#include <Directory.h>
#include <Entry.h>
#include <TrackerAddOn.h>
#include <image.h>

#include <algorithm>
#include <exception>
#include <mutex>
#include <utility>

namespace norvane {

namespace {

/// What all threads of add-ons share.
class Table
{
public:
    static Table& Get()
    {
        // Never destroyed: an add-on may be at work when the program ends.
        static auto* table = new Table;
        return *table;
    }

    void Begin(const std::string& name)
    {
        const std::lock_guard lock(fMutex);
        fNames.push_back(name);
    }

    void End(const std::string& name)
    {
        bool isToTell = false;
        {
            const std::lock_guard lock(fMutex);
            fNames.erase(std::find(fNames.begin(), fNames.end(), name));
            isToTell = fNames.empty() && std::exchange(fIsAwaited, false);
        }
        if (isToTell) {
            TellApplication();
        }
    }

    void Await()
    {
        {
            const std::lock_guard lock(fMutex);
            fIsAwaited = !fNames.empty();
            if (fIsAwaited) {
                return;
            }
        }
        TellApplication();
    }

    std::vector<std::string> Names()
    {
        const std::lock_guard lock(fMutex);
        return fNames;
    }

private:
    static void TellApplication() { be_app_messenger.SendMessage(kAddOnsEnded); }

    std::mutex fMutex; // guards all below
    std::vector<std::string> fNames;
    bool fIsAwaited = false;
};

using Work = void (*)(entry_ref, BMessage*, void*);

/// Null when there is no such add-on.
Work Load(const std::string& name)
{
    std::string path;
    void* found = nullptr;
    if (!FindAddOnPath(name.c_str(), &path)) {
        return nullptr;
    }
    const image_id image = load_add_on(path.c_str());
    if (image < B_OK ||
        get_image_symbol(image, "process_refs", B_SYMBOL_TYPE_TEXT, &found) != B_OK) {
        return nullptr;
    }
    return reinterpret_cast<Work>(found);
}

entry_ref FolderOf(const AddOnTask& task)
{
    entry_ref folder;
    entry_ref first;
    BDirectory parent;
    BEntry entry(task.folder.c_str(), true);
    if (!entry.IsDirectory() && task.selected.FindRef("refs", &first) == B_OK &&
        BEntry(&first).GetParent(&parent) == B_OK) {
        parent.GetEntry(&entry);
    }
    entry.GetRef(&folder);
    return folder;
}

/// Calls what others wrote: whatever it throws ends here. Returns what went wrong; empty: nothing.
std::string Call(Work work, AddOnTask& task)
{
    try {
        work(FolderOf(task), &task.selected, nullptr);
    } catch (const std::exception& failure) {
        return failure.what();
    } catch (...) {
        return "it does not say why";
    }
    return {};
}

void Run(AddOnTask& task, const BMessenger& window)
{
    BMessage ended(kAddOnEnded);
    ended.AddString("name", task.name.c_str());
    if (const Work work = Load(task.name)) {
        if (!task.selected.HasRef("refs")) {
            ended.AddBool("unselected", true);
        } else {
            const std::string reason = Call(work, task);
            if (!reason.empty()) {
                ended.AddString("reason", reason.c_str());
            }
        }
    }
    window.SendMessage(&ended);
}

} // namespace

bool AddOnRun::Start(AddOnTask task, const BMessenger& window)
{
    const std::string name = task.name;
    Table::Get().Begin(name);
    const bool isStarted =
        StartDetached("add-on", B_NORMAL_PRIORITY, [task = std::move(task), window]() mutable {
            Run(task, window);
            Table::Get().End(task.name);
        });
    if (!isStarted) {
        Table::Get().End(name);
    }
    return isStarted;
}

std::vector<std::string> AddOnRun::AtWork()
{
    return Table::Get().Names();
}

void AddOnRun::TellWhenEnded()
{
    Table::Get().Await();
}

} // namespace norvane
