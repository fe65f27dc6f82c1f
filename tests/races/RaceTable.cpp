#include "RaceTable.h"

#include <algorithm>
#include <cstdio>

namespace {

void AddName(std::vector<std::string>* names, const std::string& name)
{
    if (std::find(names->begin(), names->end(), name) == names->end()) {
        names->push_back(name);
    }
}

void PrintRow(const std::string& name, const RaceTable::Tally& tally)
{
    std::printf("%-30s %8zu %8zu %8zu\n", name.c_str(), tally.points, tally.acted, tally.wrong);
}

} // namespace

void RaceTable::Tally::Add(const Tally& other)
{
    points += other.points;
    acted += other.acted;
    wrong += other.wrong;
}

RaceTable::Tally& RaceTable::At(const std::string& job, const std::string& deed)
{
    AddName(&fJobs, job);
    AddName(&fDeeds, deed);
    return fTallies[{job, deed}];
}

bool RaceTable::Note(const std::string& deed, const std::string& what, const std::string& command)
{
    Kind& kind = fKinds[{deed, what}];
    if (kind.count == 0) {
        kind.command = command;
    }
    return ++kind.count == 1;
}

void RaceTable::Print() const
{
    if (!fKinds.empty()) {
        std::printf("\nkinds of faults, how often, and one of each\n");
    }
    for (const auto& [key, kind] : fKinds) {
        std::printf("%s: %s: %zu\n    %s\n", key.first.c_str(), key.second.c_str(), kind.count,
                    kind.command.c_str());
    }
    Tally all;
    std::printf("\n%-30s %8s %8s %8s\n", "by job", "points", "acted", "wrong");
    for (const std::string& job : fJobs) {
        Tally row;
        for (const auto& [key, tally] : fTallies) {
            row.Add(key.first == job ? tally : Tally());
        }
        PrintRow(job, row);
        all.Add(row);
    }
    std::printf("\n%-30s %8s %8s %8s\n", "by action", "points", "acted", "wrong");
    for (const std::string& deed : fDeeds) {
        Tally row;
        for (const auto& [key, tally] : fTallies) {
            row.Add(key.second == deed ? tally : Tally());
        }
        PrintRow(deed, row);
    }
    PrintRow("all", all);
}
