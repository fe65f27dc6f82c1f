#include "Program.h"

#include "MessageCodes.h"
#include "Sandbox.h"
#include "Scene.h"
#include "Screen.h"

#include "app/LooperCore.h"
#include "app/LooperRegistry.h"
#include "app/NorvaneApplication.h"
#include "app/NorvaneWindow.h"
#include "fileops/engine/Operations.h"
#include "panes/DirPane.h"
#include "panes/DirView.h"
#include "panes/NamePart.h"

#include <Alert.h>
#include <OS.h>
#include <Path.h>
#include <testing/Driver.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstring>
#include <dirent.h>
#include <filesystem>
#include <linux/magic.h>
#include <sys/stat.h>
#include <sys/vfs.h>
#include <unistd.h>

using namespace kits::testing;
using kits::LooperCore;
using kits::LooperRegistry;

namespace {

constexpr bigtime_t kRestLimit = 90'000'000;
constexpr bigtime_t kRowsLimit = 6'000'000;
constexpr bigtime_t kLockPatience = 500'000;
constexpr bigtime_t kShortPatience = 250'000;
constexpr bigtime_t kPatience = 600'000; // dialogs that come unasked wait for quiet

struct Unlock
{
    LooperCore& core;
    ~Unlock() { core.Unlock(); }
};

/// Nobody tells of changes there, and they never end.
bool IsUnwatchable(const std::string& folder)
{
    struct statfs volume = {};
    return statfs(folder.c_str(), &volume) == 0 && volume.f_type == PROC_SUPER_MAGIC;
}

/// The names in a folder, sorted; an error of opening it, or 0.
int List(const std::string& folder, std::vector<std::string>* names)
{
    DIR* entries = opendir(folder.c_str());
    if (entries == nullptr) {
        return errno;
    }
    while (const dirent* entry = readdir(entries)) {
        const std::string name = entry->d_name;
        if (name != "." && name != "..") {
            names->push_back(name);
        }
    }
    closedir(entries);
    std::sort(names->begin(), names->end());
    return 0;
}

/// What an entry is, for a report.
std::string KindOf(const std::string& path)
{
    struct stat st = {};
    if (lstat(path.c_str(), &st) != 0) {
        return "gone";
    }
    if (!S_ISLNK(st.st_mode)) {
        return S_ISDIR(st.st_mode) ? "a folder" : S_ISREG(st.st_mode) ? "a file" : "something else";
    }
    char target[PATH_MAX] = "";
    [[maybe_unused]] const ssize_t length = readlink(path.c_str(), target, sizeof(target) - 1);
    return std::string("a link to ") + target;
}

std::string Difference(const std::string& folder, const std::vector<std::string>& rows,
                       const std::vector<std::string>& fresh)
{
    std::string text;
    const auto add = [&](const char* what, const std::vector<std::string>& names,
                         const std::vector<std::string>& others) {
        std::vector<std::string> only;
        std::set_difference(names.begin(), names.end(), others.begin(), others.end(),
                            std::back_inserter(only));
        for (const std::string& name : only) {
            text += what + name + "\": " + KindOf(folder + "/" + name) + "\n";
        }
    };
    add("  a row without an entry: \"", rows, fresh);
    add("  an entry without a row: \"", fresh, rows);
    return text;
}

} // namespace

struct Program::Pane
{
    bool isLocal = false;
    std::string path;
    std::string inside; // the path of some row
    node_ref node;
    std::string filter; // what its rows' names hold
    std::vector<std::string> names;

    bool IsAt(const std::string& folder) const
    {
        struct stat st = {};
        return stat(folder.c_str(), &st) == 0 && st.st_ino == static_cast<ino_t>(node.node) &&
               st.st_dev == static_cast<dev_t>(node.device);
    }

    /// A folder outside the home folder is found by what a row refers to.
    std::string PlaceOfRows() const
    {
        const std::string folder = inside.substr(0, inside.rfind('/'));
        return !inside.empty() && IsAt(folder) ? folder : std::string();
    }

    /// Where the folder shown is; empty when it is gone.
    std::string Place() const
    {
        if (IsAt(path)) {
            return path;
        }
        std::error_code error;
        const auto options = std::filesystem::directory_options::skip_permission_denied;
        for (std::filesystem::recursive_directory_iterator entry(kSandboxHome, options, error), end;
             !error && entry != end; entry.increment(error)) {
            if (entry->is_directory(error) && !entry->is_symlink(error) &&
                IsAt(entry->path().string())) {
                return entry->path().string();
            }
        }
        return PlaceOfRows();
    }
};

Program::Program(Scene& scene) : fScene(scene) {}

Program::~Program() = default;

std::string Program::Start()
{
    const std::vector<std::string> folders = {fScene.Root(), fScene.Root() + "/many"};
    fApplication = std::make_unique<HeadlessApplication>([&] {
        auto* application = new norvane::NorvaneApplication(folders);
        fCore = LooperRegistry::FindLooper(application->WindowAt(0));
        return application;
    });
    const bool isShown = WaitFor([] { return !SeenWindows().empty(); });
    return isShown ? std::string() : "the main window is not shown";
}

bool Program::IsRunning() const
{
    return fCore != nullptr && fCore->IsAlive();
}

std::string Program::AwaitEnd()
{
    // Operations go on, and so may their alerts.
    const bigtime_t end = system_time() + kRestLimit;
    while (be_app != nullptr && system_time() < end) {
        const std::vector<SeenWindow> seen = SeenWindows();
        if (!seen.empty()) {
            Activate(seen.back());
            TypeKey(B_ESCAPE);
            WaitFor([] { return be_app == nullptr; }, kShortPatience);
            TypeKey(B_ENTER);
        }
        WaitFor([] { return be_app == nullptr; }, kPatience);
    }
    return be_app == nullptr ? std::string() : "the program does not end: " + DescribeUnrest();
}

std::string Program::ComeToRest()
{
    const bigtime_t end = system_time() + kRestLimit;
    for (int attempt = 0; system_time() < end;) {
        if (!IsRunning()) {
            return {};
        }
        if (IsDragging()) {
            TypeKey(B_ESCAPE);
            if (!WaitForDrag(false)) {
                return "what is dragged stays so: " + DescribeInput();
            }
        }
        const std::vector<SeenWindow> others = OtherWindows();
        if (!others.empty() || norvane::Operations::Count() > 0) {
            fDismissed[others.empty() ? "(hidden)" : others.back().title]++;
            Dismiss(others, attempt++);
        } else if (fCore->Queue().IsEmpty()) {
            return {};
        } else {
            snooze(1'000);
        }
    }
    return "it does not come to rest: " + DescribeUnrest();
}

std::vector<SeenWindow> Program::OtherWindows() const
{
    std::vector<SeenWindow> seen = SeenWindows();
    seen.erase(std::remove_if(seen.begin(), seen.end(),
                              [this](const SeenWindow& window) {
                                  return window.core == fCore.get() && !window.isMenu;
                              }),
               seen.end());
    return seen;
}

/// Escape closes menus and prompts and has operations ask whether they are to stop; that question
/// and those that are asked for every entry are answered by the button that ends it all.
void Program::Dismiss(const std::vector<SeenWindow>& others, int attempt) const
{
    const auto hasChanged = [&] {
        const std::vector<SeenWindow> now = OtherWindows();
        return now.size() != others.size() || now.empty() ||
               now.back().token != others.back().token;
    };
    if (attempt > 5 && !others.empty()) {
        Activate(others.back());
    }
    const std::string title = others.empty() || attempt % 5 == 4 ? "" : others.back().title;
    if (title == "Item Exists") {
        TypeKey(B_TAB, B_SHIFT_KEY); // to "Cancel"
    } else if (title == "Sir?") {
        TypeKey(B_TAB); // to "Stop"
    } else if (attempt % 3 == 2) {
        TypeKey('w', B_COMMAND_KEY); // viewers close by it, and nothing else takes it
    } else {
        TypeKey(B_ESCAPE);
    }
    // Most take keys at once, those that come unasked when none was typed for a while.
    if (!WaitFor(hasChanged, attempt == 0 ? kShortPatience : kPatience) && !others.empty()) {
        TypeKey(B_ENTER);
        WaitFor(hasChanged, kShortPatience);
    }
}

std::string Program::DescribeUnrest() const
{
    std::string text = std::to_string(norvane::Operations::Count()) + " operations run; shown are";
    for (const SeenWindow& window : SeenWindows()) {
        text += " \"" + window.title + "\"" + (window.isMenu ? " (menu)" : "");
        const auto* alert = window.core != nullptr && window.core != fCore.get() && !window.isMenu
                                ? dynamic_cast<const BAlert*>(window.core->Window())
                                : nullptr;
        text += alert != nullptr ? std::string(" saying \"") + alert->Text() + "\"" : "";
    }
    return text + "; " + DescribeInput();
}

/// What was moved in from elsewhere is listed when the window is activated, not before; so is the
/// path known then of a folder below one that was moved.
bool Program::ReadPanes(std::vector<Pane>* panes) const
{
    if (fCore->Lock(kLockPatience) != B_OK) {
        return false;
    }
    const Unlock unlock{*fCore};
    auto* window = dynamic_cast<norvane::NorvaneWindow*>(fCore->Window());
    for (int32 index = 0; window != nullptr && index < window->CountPanes(); index++) {
        norvane::DirView* list = window->PaneAt(index)->GetDirView();
        list->WindowActivated(true);
        Pane pane;
        pane.isLocal = list->Mode() == norvane::kLocalMode;
        pane.path = list->Path();
        pane.node = list->FolderNode();
        pane.filter = list->Rows().FilterText();
        for (int32 row = 0; row < list->CountItems(); row++) {
            if (!list->RowAt(row)->IsParent()) {
                pane.names.emplace_back(list->RowAt(row)->GetEntryName());
                const BPath path(list->RowAt(row)->GetRef());
                pane.inside = path.InitCheck() == B_OK ? path.Path() : "";
            }
        }
        std::sort(pane.names.begin(), pane.names.end());
        panes->push_back(pane);
    }
    return true;
}

/// What is wrong with a pane; empty when nothing is.
std::string Program::Judge(const Pane& pane, Tally* tally)
{
    std::string place = pane.Place();
    std::vector<std::string> fresh;
    const int error = List(place.empty() ? pane.path : place, &fresh);
    if (place.empty() && error == 0) {
        return "the pane of " + pane.path + " shows one that is gone, and another is there\n";
    }
    if (!place.empty() && error != 0) {
        return "the pane of " + pane.path + ": " + std::strerror(error) + "\n";
    }
    if (!place.empty() && place != pane.path) {
        return "the pane of " + pane.path + " shows what is at " + place + " by now\n";
    }
    const norvane::NamePart filter(pane.filter);
    std::erase_if(fresh, [&](const std::string& name) { return !filter.IsIn(name.c_str()); });
    tally->panes++;
    tally->rows += static_cast<int64>(fresh.size());
    tally->gone += place.empty() ? 1 : 0;
    return pane.names == fresh
               ? std::string()
               : "the pane of " + pane.path + ":\n" + Difference(place, pane.names, fresh);
}

std::string Program::ComparePanes()
{
    const bigtime_t end = system_time() + kRowsLimit;
    std::string fault;
    do {
        std::vector<Pane> panes;
        if (!IsRunning()) {
            return {};
        }
        if (!ReadPanes(&panes)) {
            // An alert may have come up since.
            fault = ComeToRest();
            if (!fault.empty()) {
                return fault;
            }
            fault = "the main window keeps its lock: " + DescribeUnrest();
            continue;
        }
        fault.clear();
        Tally tally = fTally;
        for (const Pane& pane : panes) {
            fault += pane.isLocal && !IsUnwatchable(pane.path) ? Judge(pane, &tally) : "";
        }
        if (fault.empty()) {
            fTally = tally;
            return {};
        }
        snooze(20'000);
    } while (system_time() < end);
    return "what panes show does not become what is there:\n" + fault;
}

void Program::LeadBack(uint32 number)
{
    if (number % 4 == 0 || fCore->Lock(kLockPatience) != B_OK) {
        return;
    }
    const Unlock unlock{*fCore};
    auto* window = dynamic_cast<norvane::NorvaneWindow*>(fCore->Window());
    const std::vector<std::string>& folders = fScene.Folders();
    for (int32 index = 0; window != nullptr && index < window->CountPanes(); index++) {
        if (window->PaneAt(index)->GetPath().rfind(fScene.Root(), 0) == 0) {
            continue;
        }
        // By messages: an alert about a folder that cannot be read waits in the window's thread.
        BMessage folder(norvane::kFolderToGoTyped);
        folder.AddString(
            "text", folders[(number / 4 + static_cast<uint32>(index)) % folders.size()].c_str());
        window->PostMessage(norvane::kFocusPane + static_cast<uint32>(index));
        window->PostMessage(&folder);
    }
}
