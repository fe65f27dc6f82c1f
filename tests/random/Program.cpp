#include "Program.h"

#include "Scene.h"
#include "Screen.h"

#include "app/LooperCore.h"
#include "app/LooperRegistry.h"
#include "app/NorvaneApplication.h"
#include "app/NorvaneWindow.h"
#include "app/ProgramEnd.h"
#include "fileops/engine/Operations.h"
#include "panes/DirPane.h"
#include "panes/DirView.h"

#include <Alert.h>
#include <OS.h>
#include <testing/Driver.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <dirent.h>
#include <linux/magic.h>
#include <sys/vfs.h>

using namespace kits::testing;
using kits::LooperCore;
using kits::LooperRegistry;

namespace {

constexpr bigtime_t kRestLimit = 90'000'000;
constexpr bigtime_t kRowsLimit = 6'000'000;
constexpr bigtime_t kKeyPatience = 250'000; // after Escape
constexpr bigtime_t kEnterPatience =
    650'000; // after Enter: dialogs that come unasked wait for quiet

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

std::string Difference(const std::vector<std::string>& rows, const std::vector<std::string>& fresh)
{
    std::string text;
    const auto add = [&](const char* what, const std::vector<std::string>& names,
                         const std::vector<std::string>& others) {
        std::vector<std::string> only;
        std::set_difference(names.begin(), names.end(), others.begin(), others.end(),
                            std::back_inserter(only));
        for (const std::string& name : only) {
            text += what + name + "\"\n";
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
    std::vector<std::string> names;
};

Program::Program(Scene& scene) : fScene(scene) {}

Program::~Program() = default;

std::string Program::Start()
{
    if (fApplication != nullptr && HasWindow()) {
        return {};
    }
    if (fApplication != nullptr) {
        const std::string fault = AwaitEnd();
        if (!fault.empty()) {
            return fault;
        }
        fApplication.reset();
        // What a process that ends takes with it.
        norvane::Operations::Resume();
        kits::ProgramEnd::Forget();
    }
    fStarts++;
    const std::vector<std::string> folders = {fScene.Root(), fScene.Root() + "/many"};
    fApplication = std::make_unique<HeadlessApplication>([&] {
        auto* application = new norvane::NorvaneApplication(folders);
        fCore = LooperRegistry::FindLooper(application->WindowAt(0));
        return application;
    });
    const bool isShown = WaitFor([] { return !SeenWindows().empty(); });
    return isShown ? std::string() : "the main window is not shown";
}

bool Program::HasWindow() const
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
            WaitFor([] { return be_app == nullptr; }, kKeyPatience);
            TypeKey(B_ENTER);
        }
        WaitFor([] { return be_app == nullptr; }, kEnterPatience);
    }
    return be_app == nullptr ? std::string() : "the program does not end: " + DescribeUnrest();
}

std::string Program::ComeToRest()
{
    const bigtime_t end = system_time() + kRestLimit;
    int attempt = 0;
    while (system_time() < end) {
        std::string fault = Start();
        if (!fault.empty()) {
            return fault;
        }
        if (IsDragging()) {
            TypeKey(B_ESCAPE);
            if (!WaitForDrag(false)) {
                return "what is dragged stays so";
            }
        }
        std::vector<SeenWindow> seen = SeenWindows();
        seen.erase(std::remove_if(seen.begin(), seen.end(),
                                  [&](const SeenWindow& window) {
                                      return window.core == fCore.get() && !window.isMenu;
                                  }),
                   seen.end());
        const bool isBusy = norvane::Operations::Count() > 0;
        if (seen.empty() && !isBusy) {
            if (HasWindow() && fCore->Queue().IsEmpty()) {
                return {};
            }
            snooze(1'000);
            continue;
        }
        const auto hasChanged = [&, count = SeenWindows().size()] {
            return SeenWindows().size() != count || (isBusy && norvane::Operations::Count() == 0);
        };
        if (attempt > 3 && !seen.empty()) {
            Activate(seen.back());
        }
        const bool isEnter = attempt % 2 == 1;
        attempt++;
        if (seen.empty() && isEnter) {
            WaitFor(hasChanged, kEnterPatience);
            continue;
        }
        TypeKey(isEnter ? B_ENTER : B_ESCAPE);
        WaitFor(hasChanged, isEnter ? kEnterPatience : kKeyPatience);
    }
    return "it does not come to rest: " + DescribeUnrest();
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
    return text;
}

bool Program::ReadPanes(std::vector<Pane>* panes)
{
    if (fCore->Lock(kRowsLimit) != B_OK) {
        return false;
    }
    const Unlock unlock{*fCore};
    auto* window = dynamic_cast<norvane::NorvaneWindow*>(fCore->Window());
    for (int32 index = 0; window != nullptr && index < window->CountPanes(); index++) {
        const norvane::DirView* list = window->PaneAt(index)->GetDirView();
        Pane pane{list->Mode() == norvane::kLocalMode, list->Path(), {}};
        for (int32 row = 0; row < list->CountItems(); row++) {
            if (!list->RowAt(row)->IsParent()) {
                pane.names.emplace_back(list->RowAt(row)->GetEntryName());
            }
        }
        std::sort(pane.names.begin(), pane.names.end());
        panes->push_back(pane);
    }
    return true;
}

bool Program::Judge(const std::vector<Pane>& panes, std::string* fault, int64* rows) const
{
    fault->clear();
    *rows = 0;
    for (const Pane& pane : panes) {
        std::vector<std::string> fresh;
        if (!pane.isLocal || IsUnwatchable(pane.path)) {
            continue;
        }
        const int error = List(pane.path, &fresh);
        if (error != 0 && error != ENOENT && error != ENOTDIR) {
            *fault += "the pane of " + pane.path + ": " + std::strerror(error) + "\n";
        } else if (pane.names != fresh) {
            *fault += "the pane of " + pane.path + ":\n" + Difference(pane.names, fresh);
        }
        *rows += static_cast<int64>(fresh.size());
    }
    return fault->empty();
}

std::string Program::ComparePanes()
{
    const bigtime_t end = system_time() + kRowsLimit;
    std::string fault;
    do {
        std::vector<Pane> panes;
        if (!ReadPanes(&panes)) {
            return "the main window keeps its lock";
        }
        int64 rows = 0;
        if (Judge(panes, &fault, &rows)) {
            fRowsCompared += rows;
            fPanesCompared += static_cast<int64>(panes.size());
            return {};
        }
        snooze(20'000);
    } while (system_time() < end);
    return "rows differ from what is there:\n" + fault;
}

void Program::LeadBack(uint32 number)
{
    if (number % 4 == 0 || fCore->Lock(kRowsLimit) != B_OK) {
        return;
    }
    const Unlock unlock{*fCore};
    auto* window = dynamic_cast<norvane::NorvaneWindow*>(fCore->Window());
    const std::vector<std::string>& folders = fScene.Folders();
    for (int32 index = 0; window != nullptr && index < window->CountPanes(); index++) {
        norvane::DirPane* pane = window->PaneAt(index);
        if (pane->GetPath().rfind(fScene.Root(), 0) != 0) {
            pane->SetPath(
                folders[(number / 4 + static_cast<uint32>(index)) % folders.size()].c_str());
        }
    }
}
