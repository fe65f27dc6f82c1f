// Emptying the Trash, names, and settings: what is done by code of its own in panes and windows.

#include "Jobs.h"

#include "fileops/engine/NorvaneEntry.h"
#include "panes/NewName.h"
#include "settings/SettingsWriter.h"

#include <Directory.h>
#include <Entry.h>

#include <ScriptedUI.h>

namespace {

const std::string kTrashFiles = std::string(kHomeTrash) + "/files";

/// As the operation window does it: all that is listed goes, one after the other.
JobResult EmptyTrash(const Scene& scene, uint32)
{
    ScriptedUI ui;
    BDirectory folder(scene.Path(kTrashFiles).c_str());
    std::vector<entry_ref> items;
    entry_ref ref;
    status_t status = folder.GetNextRef(&ref);
    for (; status == B_OK; status = folder.GetNextRef(&ref)) {
        items.push_back(ref);
    }
    for (const entry_ref& item : items) {
        norvane::NorvaneEntry(&item).DeleteEntry(ui);
    }
    const bool isWhole = ui.problems.empty() && status == B_ENTRY_NOT_FOUND;
    return {isWhole, !isWhole};
}

Job MakeRename(std::string name, const std::string& source, const std::string& newName)
{
    Job job;
    job.name = std::move(name);
    job.task = {Task::kRename, source, source.substr(0, source.rfind('/') + 1) + newName, {}};
    job.makeItem = [source](const Scene& scene) {
        scene.MakeItem(source);
    };
    // As a pane renames a row.
    job.run = [source, newName](const Scene& scene, uint32) -> JobResult {
        entry_ref ref;
        if (get_ref_for_path(scene.Path(source).c_str(), &ref) != B_OK) {
            return {false, true};
        }
        BEntry entry(&ref);
        const bool isDone =
            entry.InitCheck() == B_OK && entry.Rename(newName.c_str(), false) == B_OK;
        return {isDone, !isDone};
    };
    return job;
}

void AddRenames(std::vector<Job>* jobs)
{
    jobs->push_back(MakeRename("rename", "one/source/item", "renamed"));
    Job taken = MakeRename("rename to a taken name", "one/source/item", "renamed");
    taken.makeSurroundings = [](const Scene& scene) {
        scene.MakeFile("one/source/renamed", 30);
    };
    jobs->push_back(std::move(taken));
    Job inTrash = MakeRename("rename in the Trash", kTrashFiles + "/item", "renamed");
    inTrash.makeItem = [](const Scene& scene) {
        scene.MakeTrashed("item");
    };
    jobs->push_back(std::move(inTrash));
}

void AddNewFolder(std::vector<Job>* jobs)
{
    Job job;
    job.name = "new folder";
    job.task = {Task::kMakeFolder, "one/source", "one/source/New Folder 2", {}};
    job.makeItem = [](const Scene& scene) {
        scene.MakeFolder("one/source/New Folder");
    };
    // As a pane does it, which tells what kept it from being made.
    job.run = [](const Scene& scene, uint32) -> JobResult {
        BDirectory folder(scene.Path("one/source").c_str());
        status_t status = folder.InitCheck() == B_OK ? B_FILE_EXISTS : folder.InitCheck();
        for (int32 number = 1; status == B_FILE_EXISTS; number++) {
            status = folder.CreateDirectory(norvane::NewFolderName(number).c_str(), nullptr);
        }
        return {status == B_OK, status != B_OK};
    };
    jobs->push_back(std::move(job));
}

void AddSettings(std::vector<Job>* jobs)
{
    Job job;
    job.name = "settings";
    job.task = {Task::kSettings, "one/home/.config", "", {}};
    job.makeItem = [](const Scene& scene) {
        scene.MakeFolder("one/home/.config", 0700);
        scene.MakeFolder("one/home/.config/Norvane", 0700);
        scene.MakeText("one/home/.config/Norvane/Norvane.pref",
                       "First=short\nKept=here\nLast=there\n", 0600);
    };
    job.run = [](const Scene&, uint32) -> JobResult {
        norvane::SettingsWriter writer("Norvane", "Norvane.pref", {"First", "Kept", "Last"});
        writer.Set("First", "a value that is longer");
        const bool isDone = writer.Write() == B_OK;
        return {isDone, !isDone};
    };
    jobs->push_back(std::move(job));
}

} // namespace

void AddNameJobs(std::vector<Job>* jobs)
{
    Job empty;
    empty.name = "empty the Trash";
    empty.task = {Task::kEmptyTrash, kTrashFiles, "", {}};
    empty.makeItem = [](const Scene& scene) {
        scene.MakeTrashed("item");
        scene.MakeFile(kTrashFiles + "/unknown", 60); // nobody wrote a record for it
    };
    empty.run = EmptyTrash;
    jobs->push_back(std::move(empty));
    AddRenames(jobs);
    AddNewFolder(jobs);
    AddSettings(jobs);
}
