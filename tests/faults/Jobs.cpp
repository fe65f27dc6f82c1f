#include "Jobs.h"

#include "fileops/engine/Copy.h"
#include "fileops/engine/Delete.h"
#include "fileops/engine/Move.h"
#include "fileops/engine/NorvaneEntry.h"
#include "fileops/engine/OverwriteDetails.h"
#include "fileops/engine/Trash.h"
#include "settings/MsgBox.h"

#include <ScriptedUI.h>

// No window opens here: what the program would say is not looked at.
bool norvane::MsgBox(const char*, alert_type)
{
    return true;
}
bool norvane::MsgBox(const char*, const char*, const char*, alert_type)
{
    return true;
}

namespace {

using norvane::NorvaneEntry;

using Work = std::function<bool(NorvaneEntry& item, const std::string& target, ScriptedUI& ui)>;

struct AnswerCase
{
    const char* name;
    uint32 answer;
    std::set<std::string> replaced;
    Task::Agreement agreement = Task::kNothing;
};

const std::set<std::string> kAllClashes = {"item/a", "item/big", "item/run", "item/sub/b"};

const AnswerCase kAnswers[] = {
    {"overwrite", norvane::kAnswerOverwrite, kAllClashes, Task::kWhatIsShown},
    {"overwrite all", norvane::kAnswerOverwriteAll, kAllClashes, Task::kAll},
    {"overwrite older",
     norvane::kAnswerOverwriteOlder,
     {"item/a", "item/run", "item/sub/b"},
     Task::kOlder},
    {"skip", norvane::kAnswerSkip, {}},
    {"skip all", norvane::kAnswerSkipAll, {}},
    {"cancel", norvane::kAnswerCancel, {}},
};

std::vector<ShownFile> gShown;

const std::string kTrashFiles = std::string(kHomeTrash) + "/files";

std::vector<entry_ref> RefsOf(const NorvaneEntry& item)
{
    std::vector<entry_ref> refs(1);
    return item.GetRef(&refs.front()) == B_OK ? refs : std::vector<entry_ref>();
}

/// Whether it says that all of its item was done.
bool Run(norvane::Operation& operation)
{
    operation.Run();
    const auto& items = operation.Results().Items();
    return !items.empty() && items.front().ending == norvane::ItemResult::Ending::kWhole;
}

bool Copy(NorvaneEntry& item, const std::string& target, ScriptedUI& ui)
{
    norvane::Copy operation(RefsOf(item), target.c_str(), ui);
    return Run(operation);
}

bool Move(NorvaneEntry& item, const std::string& target, ScriptedUI& ui)
{
    norvane::Move operation(RefsOf(item), target.c_str(), ui);
    return Run(operation);
}

bool CopyKeepingAll(NorvaneEntry& item, const std::string& target, ScriptedUI& ui)
{
    norvane::Copy operation(RefsOf(item), target.c_str(), ui, true);
    return Run(operation);
}

bool MoveByRenaming(NorvaneEntry& item, const std::string& target, ScriptedUI& ui)
{
    norvane::Move operation(RefsOf(item), target.c_str(), ui, true);
    return Run(operation);
}

bool MoveToTrash(NorvaneEntry& item, const std::string&, ScriptedUI& ui)
{
    norvane::Trash(RefsOf(item), ui).Run();
    return ui.problems.empty() && ui.notices.empty() && ui.summaries.empty();
}

bool Delete(NorvaneEntry& item, const std::string&, ScriptedUI& ui)
{
    norvane::Delete operation(RefsOf(item), ui);
    return Run(operation);
}

Job MakeJob(std::string name, const Task& task, const Work& work)
{
    Job job;
    job.name = std::move(name);
    job.task = task;
    job.makeItem = [task](const Scene& scene) {
        scene.MakeItem(task.source);
    };
    job.run = [task, work](const Scene& scene, uint32 answer) -> JobResult {
        ScriptedUI ui;
        ui.answers.assign(20, answer);
        ui.onQuestion = [](const norvane::OverwriteQuestion& question) {
            gShown.push_back({question.targetPath, question.targetDetails});
        };
        entry_ref ref;
        if (get_ref_for_path(scene.Path(task.source).c_str(), &ref) != B_OK) {
            return {false, true}; // a pane has its row from a listing, and says so if it cannot
        }
        NorvaneEntry item(&ref);
        const bool isWhole = work(item, scene.Path(task.target), ui);
        return {isWhole, !ui.problems.empty() || !ui.notices.empty() || !ui.summaries.empty()};
    };
    return job;
}

/// The item holds a link that leads out of it.
Job WithLinkOut(Job job)
{
    job.makeItem = [source = job.task.source](const Scene& scene) {
        scene.MakeItemWithLinkOut(source);
    };
    return job;
}

void AddWithAnswers(std::vector<Job>* jobs, const std::string& name, const Task& task,
                    const Work& work)
{
    for (const AnswerCase& each : kAnswers) {
        Job job = MakeJob(name + ", " + each.name, task, work);
        job.answer = each.answer;
        job.task.replaced = each.replaced;
        job.task.agreement = each.agreement;
        job.makeSurroundings = [task](const Scene& scene) {
            scene.MakeClashes(task.target);
        };
        jobs->push_back(std::move(job));
    }
}

/// The item is one file of several blocks.
Job MakeLargeJob(std::string name, const Task& task, const Work& work)
{
    Job job = MakeJob(std::move(name), task, work);
    job.makeItem = [task](const Scene& scene) {
        scene.MakeLarge(task.source);
    };
    return job;
}

Job MakeLargeJobOver(std::string name, const Task& task, const Work& work)
{
    Job job = MakeLargeJob(std::move(name), task, work);
    job.answer = norvane::kAnswerOverwrite;
    job.task.replaced = {"item"};
    job.task.agreement = Task::kWhatIsShown;
    job.makeSurroundings = [task](const Scene& scene) {
        scene.MakeFile(task.target + "/item", 300'000, 0600);
    };
    return job;
}

/// The item holds two files whose names may be one where it goes to; whatever lies in the way may
/// be replaced.
Job MakeJobOfTwoCases(std::string name, const Task& task, const Work& work)
{
    Job job = MakeJob(std::move(name), task, work);
    job.answer = norvane::kAnswerOverwriteAll;
    job.task.agreement = Task::kAll;
    job.makeItem = [task](const Scene& scene) {
        scene.MakeItemOfTwoCases(task.source);
    };
    return job;
}

/// Something of the same name lies in the Trash already.
Job MakeJobWithTakenName(std::string name, const Task& task, const Work& work)
{
    Job job = MakeJob(std::move(name), task, work);
    job.makeSurroundings = [](const Scene& scene) {
        scene.MakeTrashed("item");
    };
    return job;
}

} // namespace

void AddCopiesAndMoves(std::vector<Job>* jobs)
{
    const Task copy{Task::kCopy, "one/source/item", "one/target", {}};
    const Task move{Task::kMove, "one/source/item", "one/target", {}};
    const Task away{Task::kMove, "one/source/item", "two/target", {}};
    const Task back{Task::kMove, "two/source/item", "one/target", {}};
    jobs->push_back(MakeJob("copy", copy, Copy));
    AddWithAnswers(jobs, "copy", copy, Copy);
    jobs->push_back(MakeJob("move", move, Move));
    AddWithAnswers(jobs, "move", move, Move);
    jobs->push_back(MakeJob("move to a volume", away, Move));
    jobs->push_back(MakeJob("move from a volume", back, Move));
    Task kept = copy;
    kept.keepsAll = true;
    jobs->push_back(MakeJob("copy keeping all", kept, CopyKeepingAll));
    AddWithAnswers(jobs, "copy keeping all", kept, CopyKeepingAll);
    Task renamed = move;
    renamed.isByRenaming = true;
    jobs->push_back(WithLinkOut(MakeJob("move by renaming", renamed, MoveByRenaming)));
    AddWithAnswers(jobs, "move by renaming", renamed, MoveByRenaming);
    jobs->push_back(MakeJob("rename to a volume", away, MoveByRenaming));
    jobs->push_back(MakeJobOfTwoCases("copy, two cases",
                                      {Task::kCopy, "one/source/item", "two/target", {}}, Copy));
    jobs->push_back(MakeJobOfTwoCases("move, two cases", away, Move));
    jobs->push_back(MakeLargeJob("copy, large", copy, Copy));
    jobs->push_back(MakeLargeJobOver("copy, large over", copy, Copy));
    jobs->push_back(MakeLargeJob("move, large", away, Move));
    jobs->push_back(MakeLargeJobOver("move, large over", back, Move));
}

void AddTrashJobs(std::vector<Job>* jobs)
{
    const Task trash{Task::kTrash, "one/source/item", "", {}};
    const Task fromVolume{Task::kTrash, "two/source/item", "", {}};
    jobs->push_back(MakeJob("trash", trash, MoveToTrash));
    jobs->push_back(MakeJobWithTakenName("trash, name taken", trash, MoveToTrash));
    jobs->push_back(MakeJob("trash from a volume", fromVolume, MoveToTrash));

    jobs->push_back(MakeJobWithTakenName("copy into the Trash",
                                         {Task::kCopy, "one/source/item", kTrashFiles, {}}, Copy));
    jobs->push_back(MakeJobWithTakenName("move into the Trash",
                                         {Task::kMove, "one/source/item", kTrashFiles, {}}, Move));
    jobs->push_back(
        MakeJob("volume to the Trash", {Task::kMove, "two/source/item", kTrashFiles, {}}, Move));
    Job out = MakeJob("move out of the Trash",
                      {Task::kMove, kTrashFiles + "/item", "one/target", {}}, Move);
    Job erase =
        MakeJob("delete in the Trash", {Task::kDelete, kTrashFiles + "/item", "", {}}, Delete);
    out.makeItem = erase.makeItem = [](const Scene& scene) {
        scene.MakeTrashed("item");
    };
    jobs->push_back(std::move(out));
    jobs->push_back(std::move(erase));
    jobs->push_back(MakeJob("delete", {Task::kDelete, "one/source/item", "", {}}, Delete));
}

std::vector<Job> AllJobs()
{
    std::vector<Job> jobs;
    AddCopiesAndMoves(&jobs);
    AddTrashJobs(&jobs);
    AddNameJobs(&jobs);
    return jobs;
}

const std::vector<ShownFile>& ShownByQuestions()
{
    return gShown;
}

std::string DetailsOf(const SceneItem& item)
{
    return norvane::OverwriteDetails(static_cast<int64>(item.text.size()),
                                     item.modifiedNs / 1'000'000'000);
}

uint32 AnswerOfSecondTime()
{
    return norvane::kAnswerOverwriteAll;
}
