#pragma once

#include "Faults.h"

#include <cstddef>
#include <map>
#include <string>
#include <vector>

/// How many points were run, and how they ended, by job and kind of call.
class Table
{
public:
    struct Tally
    {
        size_t points = 0;
        size_t killed = 0;
        size_t startedAgain = 0; // over what was left
        size_t faults = 0;

        void Add(const Tally& other);
    };

    void AddJob(const std::string& name) { fOrder.push_back(name); }
    Tally& At(const std::string& job, FaultKind kind) { return fTallies[{job, kind}]; }
    void Print() const;

private:
    std::vector<std::string> fOrder;
    std::map<std::pair<std::string, int>, Tally> fTallies;
};

/// The jobs that were killed at random moments.
class KillTable
{
public:
    struct Row
    {
        std::string job;
        int killed = 0;
        int unchanged = 0; // the disk was as before
        int finished = 0;  // or as after the whole operation
        size_t states = 0; // different ones of the disk
        int startedAgain = 0;
        int withinUs = 0; // the kills were spread over so long
        int faults = 0;
    };

    void Add(Row row) { fRows.push_back(std::move(row)); }
    void Print() const;

private:
    std::vector<Row> fRows;
};
