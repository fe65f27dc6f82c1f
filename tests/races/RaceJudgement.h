#pragma once

#include "RaceRunner.h"

#include <set>
#include <string_view>

/// One look at the disk after an operation during which somebody else did one thing: collects what
/// is wrong. What is wrong is said in the head of the script `run`.
class RaceJudgement
{
public:
    /// Ownership: borrows all for its own life.
    RaceJudgement(const Scene& scene, const Job& job, const Places& places, const Snapshot& before,
                  const RaceRun& run, const Snapshot& after);

    struct Fault
    {
        std::string path;
        std::string what;
    };
    std::vector<Fault> Result();

private:
    /// The contents of a state of the scene, under names that people see and under hidden ones.
    struct Contents // lent by that state
    {
        explicit Contents(const Snapshot& all);
        /// Whether the contents are there, maybe with more after them.
        bool Has(const SceneItem& item) const
        {
            const auto found = seen.lower_bound(item.text);
            return found != seen.end() && found->starts_with(item.text);
        }

        std::set<std::string_view> seen;
        std::set<std::string_view> hidden;
    };

    void Say(const std::string& path, const std::string& what) { fFaults.push_back({path, what}); }

    // What is lost: RaceJudgement.cpp
    void CheckContents();
    void CheckContent(const std::string& path, const SceneItem& item);
    bool MayGo(const std::string& path, const SceneItem& item) const;
    bool IsDeletedWithItem(const std::string& path, const SceneItem& item) const;
    bool IsUnfinished(const std::string& path, const SceneItem& item) const;
    bool WasChangedWithinOwnFile(const std::string& path) const;
    bool WasSpoiltUnfinished(const std::string& path) const;
    std::string TargetOf(const std::string& path) const;
    bool IsAgreedToReplace(const std::string& path, const SceneItem& item) const;
    bool WasLostLate(const SceneItem& item) const;
    int FirstLookAtFinished(const std::string& target) const;
    int RemovalOf(const std::string& source) const;
    void CheckForeign();

    // What is made, and what is said of it: RaceJudgementOfMade.cpp
    void CheckModes(const Snapshot& state);
    mode_t MostFor(const std::string& path, const SceneItem& made) const;
    void CheckHidden();
    void CheckWord();
    void CheckSilence();
    void CheckSilenceOf(const std::string& name);
    bool IsElsewhere(std::string_view text) const;
    bool IsDeletion() const;
    /// Somebody put the item there, or changed it, before it was first looked at.
    bool WasEarly() const;
    bool IsTouched(const std::string& path) const;

    const Scene& fScene;
    const Task& fTask;
    const Places& fPlaces;
    const Snapshot& fBefore;
    const RaceRun& fRun;
    const Report& fReport;
    const Snapshot& fAtAct;
    const Snapshot& fAfterAct;
    const Snapshot& fAfter;
    const Contents fContentsAtAct;
    const Contents fContentsAfterAct;
    const Contents fContents;
    /// Of the source, as it was and as somebody else changed it.
    std::set<std::string_view> fSourceTexts;
    std::set<std::string_view> fItemTexts; // as it was
    std::vector<Fault> fFaults;
};
