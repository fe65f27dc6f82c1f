#include "Jobs.h"

#include "fileops/ItemOperations.h"
#include "fileops/NorvaneEntry.h"
#include "settings/MsgBox.h"
#include "settings/SettingsWriter.h"

#include <Directory.h>
#include <Entry.h>

#include <ScriptedUI.h>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

// No window opens here: what the program would say is not looked at.
void norvane::MsgBox(const char*, alert_type) {}
void norvane::MsgBox(const char*, const char*, const char*, alert_type) {}

namespace {

using norvane::NorvaneEntry;

using Operation =
    std::function<bool(NorvaneEntry& item, const std::string& target, ScriptedUI& ui)>;

struct AnswerCase
{
    const char* name;
    uint32 answer;
    std::set<std::string> replaced;
};

const std::set<std::string> kAllClashes = {"item/a", "item/big", "item/sub/b"};

const AnswerCase kAnswers[] = {
    {"overwrite", norvane::kAnswerOverwrite, kAllClashes},
    {"overwrite all", norvane::kAnswerOverwriteAll, kAllClashes},
    {"overwrite older", norvane::kAnswerOverwriteOlder, {"item/a", "item/sub/b"}},
    {"skip", norvane::kAnswerSkip, {}},
    {"skip all", norvane::kAnswerSkipAll, {}},
    {"cancel", norvane::kAnswerCancel, {}},
};

bool WithItem(const Scene& scene, const Task& task, uint32 answer, const Operation& operation)
{
    ScriptedUI ui;
    ui.answers.assign(20, answer);
    entry_ref ref;
    if (get_ref_for_path(scene.Path(task.source).c_str(), &ref) != B_OK) {
        return false;
    }
    NorvaneEntry item(&ref);
    return operation(item, task.target.empty() ? std::string() : scene.Path(task.target), ui);
}

bool Copy(NorvaneEntry& item, const std::string& target, ScriptedUI& ui)
{
    norvane::ItemOperations(target.c_str(), ui).Copy(item);
    return item.IsWhole();
}

bool Move(NorvaneEntry& item, const std::string& target, ScriptedUI& ui)
{
    norvane::ItemOperations(target.c_str(), ui).Move(item);
    return item.IsWhole();
}

bool MoveToTrash(NorvaneEntry& item, const std::string&, ScriptedUI& ui)
{
    norvane::ItemOperations("/", ui).Trash(item);
    return ui.problems.empty();
}

bool Delete(NorvaneEntry& item, const std::string&, ScriptedUI& ui)
{
    return item.DeleteEntry(ui);
}

Job MakeJob(std::string name, Task task, uint32 answer, const Operation& operation)
{
    Job job;
    job.name = std::move(name);
    job.task = task;
    job.needsTwoVolumes = task.source.starts_with("two/") || task.target.starts_with("two/");
    const bool hasClashes = answer != norvane::kAnswerNone;
    job.prepare = [task, hasClashes](const Scene& scene) {
        scene.MakeItem(task.source);
        if (hasClashes) {
            scene.MakeClashes(task.target);
        }
    };
    job.run = [task, answer, operation](const Scene& scene) {
        return WithItem(scene, task, answer, operation);
    };
    return job;
}

void AddCopies(std::vector<Job>* jobs)
{
    const Task copy{Task::kCopy, "one/source/item", "one/target", {}, false};
    jobs->push_back(MakeJob("copy", copy, norvane::kAnswerNone, Copy));
    for (const AnswerCase& each : kAnswers) {
        Task task = copy;
        task.replaced = each.replaced;
        task.asksOrSkips = each.replaced != kAllClashes;
        jobs->push_back(MakeJob(std::string("copy, ") + each.name, task, each.answer, Copy));
    }
}

void AddMoves(std::vector<Job>* jobs)
{
    const Task move{Task::kMove, "one/source/item", "one/target", {}, false};
    jobs->push_back(MakeJob("move", move, norvane::kAnswerNone, Move));
    for (const AnswerCase& each : kAnswers) {
        Task task = move;
        task.replaced = each.replaced;
        task.asksOrSkips = each.replaced != kAllClashes;
        jobs->push_back(MakeJob(std::string("move, ") + each.name, task, each.answer, Move));
    }
    Task away = move;
    away.target = "two/target";
    jobs->push_back(MakeJob("move to a volume", away, norvane::kAnswerNone, Move));
    away.source = "two/source/item";
    away.target = "one/target";
    jobs->push_back(MakeJob("move from a volume", away, norvane::kAnswerNone, Move));
}

void AddRemovals(std::vector<Job>* jobs)
{
    const Task trash{Task::kTrash, "one/source/item", "", {}, false};
    jobs->push_back(MakeJob("trash", trash, norvane::kAnswerNone, MoveToTrash));
    Task away = trash;
    away.source = "two/source/item";
    jobs->push_back(MakeJob("trash from a volume", away, norvane::kAnswerNone, MoveToTrash));

    const Task erase{Task::kDelete, "one/source/item", "", {}, false};
    jobs->push_back(MakeJob("delete", erase, norvane::kAnswerNone, Delete));

    const std::string inTrash = "one/home/.local/share/Trash/files/item";
    Job empty = MakeJob("delete in the Trash", {Task::kDelete, inTrash, "", {}, false},
                        norvane::kAnswerNone, Delete);
    empty.prepare = [inTrash](const Scene& scene) {
        scene.MakeItem(inTrash);
        scene.MakeFile("one/home/.local/share/Trash/info/item.trashinfo", 30);
    };
    jobs->push_back(empty);
}

void AddRename(std::vector<Job>* jobs)
{
    Job rename;
    rename.name = "rename";
    rename.task = {Task::kRename, "one/source/item", "one/source/renamed", {}, false};
    rename.prepare = [](const Scene& scene) {
        scene.MakeItem("one/source/item");
    };
    rename.run = [](const Scene& scene) {
        BEntry entry(scene.Path("one/source/item").c_str());
        return entry.Rename("renamed") == B_OK;
    };
    jobs->push_back(rename);
}

void AddSettings(std::vector<Job>* jobs)
{
    Job settings;
    settings.name = "settings";
    settings.task = {Task::kSettings, "one/home/.config", "", {}, false};
    settings.prepare = [](const Scene& scene) {
        const std::string folder = scene.Path("one/home/.config");
        mkdir(folder.c_str(), 0700);
        mkdir((folder + "/Norvane").c_str(), 0700);
        const int file =
            open((folder + "/Norvane/Norvane.pref").c_str(), O_WRONLY | O_CREAT | O_EXCL, 0600);
        constexpr char kText[] = "First=short\nKept=here\nLast=there\n";
        [[maybe_unused]] const ssize_t written = write(file, kText, sizeof(kText) - 1);
        close(file);
    };
    settings.run = [](const Scene&) {
        norvane::SettingsWriter writer("Norvane", "Norvane.pref", {"First", "Kept", "Last"});
        writer.Set("First", "a value that is longer");
        return writer.Write();
    };
    jobs->push_back(settings);
}

} // namespace

std::vector<Job> AllJobs()
{
    std::vector<Job> jobs;
    AddCopies(&jobs);
    AddMoves(&jobs);
    AddRemovals(&jobs);
    AddRename(&jobs);
    AddSettings(&jobs);
    return jobs;
}
