#pragma once

#include <vector>

class Visit;

/// Something that a person does with a server.
struct Job
{
    const char* name;
    void (*run)(Visit& visit);
};

/// In the order in which they are done. Each begins and ends logged in, but for the first.
std::vector<Job> AllJobs();

// JobsOfFiles.cpp
void MoveSizes(Visit& visit);
void MoveNames(Visit& visit);
void MoveFiles(Visit& visit);
void MoveText(Visit& visit);
void MoveMany(Visit& visit);

// JobsOfLists.cpp
void ListKnown(Visit& visit);
void ListOne(Visit& visit);
void ListMany(Visit& visit);

// JobsOfEnds.cpp
void CancelDownload(Visit& visit);
void CancelUpload(Visit& visit);
void AbandonDownload(Visit& visit);
void KeepFiles(Visit& visit);
