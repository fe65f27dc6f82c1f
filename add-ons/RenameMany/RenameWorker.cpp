#include "RenameMany/RenameWorker.h"

#include <Autolock.h>
#include <Directory.h>
#include <Entry.h>
#include <LetterCase.h>

#include <algorithm>
#include <map>
#include <utility>

namespace rename_many {

namespace {

using FolderNumber = std::pair<dev_t, ino_t>;

status_t OpenFolderOf(const entry_ref& ref, BDirectory* folder)
{
    const BEntry entry(&ref);
    return entry.InitCheck() == B_OK ? entry.GetParent(folder) : entry.InitCheck();
}

/// Whether the volume takes small letters and capitals for one: tried with a name that the folder
/// has, in letters in which it has not.
bool FoldsCase(const BDirectory& folder, const std::unordered_set<std::string>& names)
{
    for (const std::string& name : names) {
        std::string other = to_upper_case(name);
        if (other == name) {
            other = to_lower_case(name);
        }
        if (other == name || names.find(other) != names.end()) {
            continue; // says nothing
        }
        struct stat st;
        return folder.GetStatFor(other.c_str(), &st) == B_OK;
    }
    return false;
}

FolderNames NamesIn(BDirectory& folder)
{
    FolderNames found;
    const char* name = nullptr;
    while (folder.GetNextName(&name) == B_OK) {
        found.keys.emplace(name);
    }
    found.foldsCase = FoldsCase(folder, found.keys);
    if (found.foldsCase) {
        std::unordered_set<std::string> folded;
        for (const std::string& one : found.keys) {
            folded.insert(KeyOf(found, one));
        }
        found.keys = std::move(folded);
    }
    return found;
}

/// What the entries are called once these steps are taken.
std::shared_ptr<const Entries> Renamed(const Entries& entries, const Steps& steps)
{
    auto renamed = std::make_shared<Entries>(entries);
    for (const Step& step : steps) {
        (*renamed)[step.entry].name = step.to;
    }
    return renamed;
}

} // namespace

RenameWorker::RenameWorker(const std::vector<entry_ref>& refs, const BMessenger& target)
    : fTarget(target), fLock("RenameMany")
{
    auto entries = std::make_shared<Entries>();
    entries->reserve(refs.size());
    std::map<FolderNumber, uint32> folders;
    for (const entry_ref& ref : refs) {
        const auto next = static_cast<uint32>(fFolders.size());
        const auto [folder, isNew] = folders.emplace(FolderNumber(ref.device, ref.directory), next);
        if (isNew) {
            fFolders.push_back(ref);
        }
        Entry entry;
        entry.name = ref.name != nullptr ? ref.name : "";
        entry.folder = folder->second;
        entries->push_back(std::move(entry));
    }
    fEntries = std::move(entries);
    fNames.resize(fFolders.size());
}

RenameWorker::~RenameWorker()
{
    End();
}

void RenameWorker::End()
{
    {
        const BAutolock lock(fLock);
        fTask = Task::kEnd;
    }
    fIsOutdated = true;
    fArrival.Signal();
    if (fThread >= B_OK) {
        wait_for_thread(fThread, nullptr);
        fThread = -1;
    }
}

status_t RenameWorker::Start()
{
    fThread = spawn_thread(&Run, "RenameMany", B_NORMAL_PRIORITY, this);
    if (fThread < B_OK) {
        return fThread;
    }
    const status_t status = resume_thread(fThread);
    fThread = status == B_OK ? fThread : -1;
    return status;
}

void RenameWorker::AskForPreview(const Rules& rules, bool looks)
{
    Ask(Task::kPreview, &rules, looks);
}

void RenameWorker::AskToRename(const Rules& rules)
{
    Ask(Task::kRename, &rules, true);
}

void RenameWorker::AskToUndo()
{
    Ask(Task::kUndo, nullptr, true);
}

void RenameWorker::Ask(Task task, const Rules* rules, bool looks)
{
    {
        const BAutolock lock(fLock);
        // What was asked for before is done first, but for previews; the window asks for no more.
        if (fTask == Task::kNone || fTask == Task::kPreview) {
            fTask = task;
        }
        fLooks = fLooks || looks;
        if (task != Task::kPreview) {
            fStops = false;
        }
        if (rules != nullptr) {
            fAskedRules = *rules;
        }
    }
    fIsOutdated = true;
    fArrival.Signal();
}

std::shared_ptr<const Preview> RenameWorker::LastPreview() const
{
    const BAutolock lock(fLock);
    return fPreview;
}

std::optional<RenameWorker::Report> RenameWorker::TakeReport()
{
    const BAutolock lock(fLock);
    return std::exchange(fReport, std::nullopt);
}

bool RenameWorker::IsIdle() const
{
    const BAutolock lock(fLock);
    return fTask == Task::kNone && !fIsBusy;
}

// The thread

status_t RenameWorker::Run(void* self)
{
    static_cast<RenameWorker*>(self)->Loop();
    return B_OK;
}

RenameWorker::Task RenameWorker::NextTask()
{
    const BAutolock lock(fLock);
    fIsBusy = false;
    while (fTask == Task::kNone) {
        fArrival.Wait(fLock);
    }
    fIsBusy = true;
    fRules = fAskedRules;
    fHasLooked = fHasLooked && !fLooks;
    fLooks = false;
    fIsOutdated = fTask == Task::kEnd;
    return std::exchange(fTask, fTask == Task::kEnd ? Task::kEnd : Task::kNone);
}

void RenameWorker::Loop()
{
    for (Task task = NextTask(); task != Task::kEnd; task = NextTask()) {
        if (!fHasLooked) {
            Look();
        }
        switch (task) {
        case Task::kPreview:
            MakeNewPreview();
            break;
        case Task::kRename:
            DoRename();
            break;
        case Task::kUndo:
            DoUndo();
            break;
        case Task::kNone:
        case Task::kEnd:
            break;
        }
    }
}

void RenameWorker::Look()
{
    fHasLooked = true;
    for (uint32 folder = 0; folder < fFolders.size(); folder++) {
        fNames[folder] = {};
    }
    auto entries = std::make_shared<Entries>(*fEntries);
    BDirectory open;
    uint32 opened = UINT32_MAX;
    status_t status = B_NO_INIT;
    for (Entry& entry : *entries) {
        if (entry.folder != opened) {
            opened = entry.folder;
            status = OpenFolderOf(fFolders[opened], &open);
            // A folder that is opened again has its names already.
            if (status == B_OK && fNames[opened].keys.empty()) {
                fNames[opened] = NamesIn(open);
            }
        }
        struct stat st = {};
        entry.isGone = status != B_OK || open.GetStatFor(entry.name.c_str(), &st) != B_OK;
        entry.isFolder = S_ISDIR(st.st_mode);
        entry.modified = st.st_mtime;
    }
    fEntries = std::move(entries);
}

void RenameWorker::MakeNewPreview()
{
    std::shared_ptr<const Preview> preview = MakePreview(fEntries, fNames, fRules, fIsOutdated);
    if (preview != nullptr) {
        Publish(std::move(preview));
    }
}

void RenameWorker::DoRename()
{
    const std::atomic<bool> isStopped = false;
    const std::shared_ptr<const Preview> preview = MakePreview(fEntries, fNames, fRules, isStopped);
    Publish(preview);
    if (!preview->CanRename()) {
        Finish(Report::Kind::kRefused, {});
        return;
    }
    Steps steps;
    Outcome outcome;
    outcome.status = MakePlan(*preview, fNames, &steps);
    if (outcome.status == B_OK) {
        DiskChanger changer(fFolders);
        fCount = 0;
        outcome = TakeSteps(steps, changer, fStops, &fCount);
    }
    fDone = outcome.status == B_OK ? outcome.done : Steps();
    Finish(Report::Kind::kRenamed, std::move(outcome));
}

void RenameWorker::DoUndo()
{
    DiskChanger changer(fFolders);
    fCount = 0;
    Outcome outcome = TakeSteps(Reversed(fDone), changer, fStops, &fCount);
    if (outcome.status == B_OK || !outcome.stuck.empty()) {
        fDone.clear();
    }
    Finish(Report::Kind::kUndone, std::move(outcome));
}

void RenameWorker::Finish(Report::Kind kind, Outcome outcome)
{
    const std::shared_ptr<const Entries> before =
        std::exchange(fEntries, Renamed(*fEntries, outcome.done));
    fHasLooked = false;
    {
        const BAutolock lock(fLock);
        fReport = Report{kind, std::move(outcome), before};
    }
    Tell();
}

void RenameWorker::Publish(std::shared_ptr<const Preview> preview)
{
    {
        const BAutolock lock(fLock);
        fPreview = std::move(preview);
    }
    Tell();
}

void RenameWorker::Tell()
{
    fTarget.SendMessage(kRenameNews);
}

} // namespace rename_many
