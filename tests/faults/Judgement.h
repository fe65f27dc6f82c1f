#pragma once

#include "Model.h"

/// One look at the disk after an operation: collects what is wrong.
class Judgement
{
public:
    /// Ownership: borrows all for its own life.
    Judgement(const Task& task, const Ending& ending, const Scene& scene, const Snapshot& before,
              const Snapshot& after);

    std::vector<std::string> Result();

private:
    void Say(const std::string& path, const char* what) { fFaults.push_back(path + ": " + what); }

    // Judgement.cpp
    bool IsConcerned(const std::string& path) const;
    bool IsConcernedInTrash(const std::string& path, const std::string& trash) const;
    void CheckByKind();
    void CheckOthers();
    void CheckWord();
    void CheckRenamed();
    void CheckFolderMade();

    // JudgementOfItems.cpp: sources, and where they go to
    bool CanBeWhole() const;
    bool LeadsSomewhere(const std::string& path, const SceneItem& link) const;
    void CheckNothingLost();
    void CheckLeftover();
    bool IsAsideOfSource(const std::string& path, const SceneItem& item) const;
    bool IsReplaced(const SceneItem& item) const;
    void CheckDeletion();
    void CheckTarget();
    void CheckOld(const std::string& path, const SceneItem& old);
    void CheckBeside(const std::string& path, const SceneItem& made);
    void CheckMade(const std::string& root, const std::string& path, const SceneItem& made);
    bool IsKeptLink(const std::string& path, const SceneItem& item) const;
    bool IsOwnLink(const SceneItem& made, const SceneItem& source, bool isInTarget) const;
    const SceneItem* SourceOf(const std::string& root, const std::string& path) const;
    /// Whether all of the source is at `root`.
    bool IsWholeAt(const std::string& root) const;
    bool IsTakenAlong(const std::string& path, const SceneItem& item) const;
    bool IsNew(const std::string& path) const { return fBefore.count(path) == 0; }

    // JudgementOfTrash.cpp
    void CheckTrash(const std::string& trash);
    void CheckTrashEntry(const std::string& trash, const std::string& name);
    void CheckRecord(const std::string& trash, const std::string& name);
    bool IsRecord(const std::string& text, const std::string& trash) const;
    /// The name that the next entry called like the source gets in a Trash, and the one after it.
    std::vector<std::string> FreeNames(const std::string& trash) const;

    // JudgementOfSettings.cpp
    void CheckSettings();
    bool IsStepOnTheWay(const std::string& text) const;

    const Task& fTask;
    const Ending& fEnding;
    const Scene& fScene;
    const Snapshot& fBefore;
    const Snapshot& fAfter;
    const Snapshot fSource; // the item before, by path from itself
    std::vector<std::string> fFaults;
};

std::string LeafOf(const std::string& path);
bool IsAtOrBelow(const std::string& path, const std::string& folder);
/// The folder of the Trash that holds the path; "" when none does.
std::string TrashOf(const std::string& path);
/// Whether an item of the source, at `name` in it, is there whole, at its place or anywhere else.
bool IsSomewhere(const Snapshot& all, const std::string& name, const SceneItem& item);
