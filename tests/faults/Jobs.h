#pragma once

#include "Model.h"

#include <SupportDefs.h>

#include <functional>
#include <string>
#include <vector>

/// What the operation said of itself.
struct JobResult
{
    bool isWhole = false; // that all was done
    bool wasTold = false; // something to the person
};

/// An existing file as an overwrite question showed it.
struct ShownFile
{
    std::string path; // whole
    std::string details;
};

/// One operation of the program, as it is run against every fault.
struct Job
{
    std::string name;
    Task task;
    /// The answer to overwrite questions; none: there is nothing in the way.
    uint32 answer = 0;
    /// Makes the item that is worked on; in the harness. Also called before the operation is
    /// carried out once more, when the first time left nothing of it.
    std::function<void(const Scene&)> makeItem;
    /// Makes what else the operation finds; null: nothing.
    std::function<void(const Scene&)> makeSurroundings;
    /// Carries it out with the program's own code; in a process of its own.
    std::function<JobResult(const Scene&, uint32 answer)> run;

    bool NeedsTwoVolumes() const
    {
        return task.source.starts_with("two/") || task.target.starts_with("two/");
    }
    void Prepare(const Scene& scene) const
    {
        makeItem(scene);
        if (makeSurroundings) {
            makeSurroundings(scene);
        }
    }
};

std::vector<Job> AllJobs();
/// The answer of those who do the same once more.
uint32 AnswerOfSecondTime();
/// What the questions of this process's operations showed, in their order.
const std::vector<ShownFile>& ShownByQuestions();
/// How a question shows such a file.
std::string DetailsOf(const SceneItem& item);

// What AllJobs() is made of.
void AddCopiesAndMoves(std::vector<Job>* jobs);
void AddTrashJobs(std::vector<Job>* jobs);
void AddNameJobs(std::vector<Job>* jobs);
