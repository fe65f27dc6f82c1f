#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <vector>

/// How many points were run, by job and by what somebody else did, and the kinds of faults found.
class RaceTable
{
public:
    struct Tally
    {
        size_t points = 0;
        size_t acted = 0; // there was something to do it to
        size_t wrong = 0;

        void Add(const Tally& other);
    };

    Tally& At(const std::string& job, const std::string& deed);
    /// Counts a fault of a kind; true for the first one, whose command line is kept.
    bool Note(const std::string& deed, const std::string& what, const std::string& command);
    void Print() const;

private:
    struct Kind
    {
        size_t count = 0;
        std::string command;
    };

    std::vector<std::string> fJobs;
    std::vector<std::string> fDeeds;
    std::map<std::pair<std::string, std::string>, Tally> fTallies;
    std::map<std::pair<std::string, std::string>, Kind> fKinds; // by deed, and what is wrong
};
