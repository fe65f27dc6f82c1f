#include "Table.h"

#include <cstdio>

void Table::Tally::Add(const Tally& other)
{
    points += other.points;
    killed += other.killed;
    startedAgain += other.startedAgain;
    faults += other.faults;
}

void Table::Print() const
{
    std::printf("\n%-22s", "points");
    for (const char* name : kFaultNames) {
        std::printf(" %8.8s", name);
    }
    std::printf(" %8s %8s %8s %8s\n", "all", "killed", "again", "faults");
    Tally all;
    for (const std::string& job : fOrder) {
        std::printf("%-22s", job.c_str());
        Tally row;
        for (int kind = 0; kind < kFaultKinds; ++kind) {
            const auto found = fTallies.find({job, kind});
            const Tally cell = found == fTallies.end() ? Tally() : found->second;
            std::printf(" %8zu", cell.points);
            row.Add(cell);
        }
        std::printf(" %8zu %8zu %8zu %8zu\n", row.points, row.killed, row.startedAgain, row.faults);
        all.Add(row);
    }
    std::printf("%zu points, %zu of them killed, %zu started again over what was left; %zu with "
                "faults\n",
                all.points, all.killed, all.startedAgain, all.faults);
}

void KillTable::Print() const
{
    std::printf("\n%-22s %8s %8s %10s %8s %8s %8s %8s\n", "killed at random", "killed", "within",
                "unchanged", "finished", "states", "again", "faults");
    Row all;
    for (const Row& row : fRows) {
        std::printf("%-22s %8d %5d us %10d %8d %8zu %8d %8d\n", row.job.c_str(), row.killed,
                    row.withinUs, row.unchanged, row.finished, row.states, row.startedAgain,
                    row.faults);
        all.killed += row.killed;
        all.startedAgain += row.startedAgain;
        all.faults += row.faults;
    }
    std::printf("%d killed, %d started again over what was left; %d with faults\n", all.killed,
                all.startedAgain, all.faults);
}
