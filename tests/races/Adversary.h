#pragma once

#include "Places.h"

#include <string>
#include <vector>

/// Another program of the same person: does one thing to the files that an operation works on.
///
/// Names what it does by paths alone, as anybody could, and holds nothing open. What it writes is
/// in no other file of the scene.
class Adversary
{
public:
    /// Ownership: borrows both for its own life.
    Adversary(const Scene& scene, const Places& places) : fScene(scene), fPlaces(places) {}

    struct Deed
    {
        const char* name;
        bool (Adversary::*act)() const; // false when there was nothing to do it to
    };
    static const std::vector<Deed>& Deeds();

    bool Act(const Deed& deed) const { return (this->*deed.act)(); }

private:
    // The item, or the folder it is in.
    bool SwapItemForFile() const;
    bool SwapItemForFolder() const;
    bool SwapItemForLink() const;
    bool SwapItemFolder() const;
    // An entry inside it, or itself where it is a file.
    bool ReplaceEntry() const;
    bool RewriteEntry() const;
    bool GrowEntry() const;
    bool TruncateEntry() const;
    bool RemoveEntry() const;
    bool CloseEntry() const;
    bool AddEntry() const;
    bool SwapEntryForLink() const;
    // What becomes of it, or the folder that is in.
    bool PutTarget() const;
    bool PutLinkAtTarget() const;
    bool ReplaceTarget() const;
    bool RemoveTarget() const;
    bool RewriteTarget() const;
    bool OpenTarget() const;
    bool SwapTargetForFolder() const;
    bool SwapTargetForLink() const;
    bool SwapTargetFolder() const;
    bool EmptyTrash() const;

    char KindOf(const std::string& path) const;
    bool IsFile(const std::string& path) const { return KindOf(path) == 'f'; }
    bool IsFolder(const std::string& path) const { return KindOf(path) == 'd'; }
    bool IsFree(const std::string& path) const { return KindOf(path) == '\0'; }

    bool Put(const std::string& path, mode_t mode) const;
    bool PutFolder(const std::string& path) const;
    bool PutLink(const std::string& path, const char* name) const;
    bool MoveAway(const std::string& path, const std::string& newPath) const;
    bool MoveAside(const std::string& path) const { return MoveAway(path, path + kAside); }
    bool Replace(const std::string& path, mode_t mode) const;
    bool Rewrite(const std::string& path) const;

    const Scene& fScene;
    const Places& fPlaces;
};

/// In the text of each link that an adversary makes, and of none else.
inline constexpr const char* kMarkOfLink = "/./foreign";
