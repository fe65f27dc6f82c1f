#include "PowerJudgement.h"

#include <algorithm>

namespace {

constexpr size_t kFewBytes = 9; // may be the same in several files

bool IsAtOrBelow(std::string_view path, const std::string& folder)
{
    return path.starts_with(folder) && (path.size() == folder.size() || path[folder.size()] == '/');
}

} // namespace

bool PowerJudgement::IsDeleted(const std::string& path) const
{
    const bool isDeletion = fTask.kind == Task::kDelete || fTask.kind == Task::kEmptyTrash;
    // Records tell of entries that may go or change their names.
    return (isDeletion && IsAtOrBelow(path, fTask.source)) || path.ends_with(".trashinfo");
}

PowerJudgement::PowerJudgement(const Task& task, const Snapshot& before, const Disk& disk)
    : fTask(task), fDisk(disk)
{
    for (const auto& [path, item] : before) {
        if (item.kind != 'f' || item.text.size() < kFewBytes || IsDeleted(path)) {
            continue;
        }
        Wanted wanted{path, disk.NumberOf(item.text), disk.NumberOf(item.text), false};
        if (!task.target.empty() && IsAtOrBelow(path, task.target) &&
            task.replaced.count(path.substr(std::min(path.size(), task.target.size() + 1))) > 0) {
            const std::string leaf = task.source.substr(task.source.rfind('/') + 1);
            const auto source =
                before.find(task.source + path.substr(task.target.size() + 1 + leaf.size()));
            wanted.isReplaced = true;
            wanted.other =
                source == before.end() ? wanted.text : disk.NumberOf(source->second.text);
        }
        fWanted.push_back(wanted);
    }
}

std::string PowerJudgement::WhatIsLost(const Disk::State& state) const
{
    const auto contents = fDisk.Contents(state);
    for (const Wanted& wanted : fWanted) {
        const bool isThere = std::any_of(contents.begin(), contents.end(), [&](const auto& each) {
            const auto& [path, text] = each;
            return (text == wanted.text || text == wanted.other) &&
                   !(wanted.isReplaced && IsAtOrBelow(path, fTask.source));
        });
        if (!isThere) {
            return wanted.path;
        }
    }
    return std::string();
}
