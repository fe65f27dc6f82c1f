#pragma once

#include <Node.h>
#include <SupportDefs.h>

#include <string>
#include <sys/stat.h>

class BDirectory;

namespace norvane {

/// Whoever has a tree walked.
class TreeVisitor
{
public:
    virtual ~TreeVisitor() = default;

    /// Asked for every entry; true ends the walk.
    virtual bool IsStopped() const = 0;
    /// An entry of the open `folder`, as the listing found it; a folder before it is opened. False:
    /// it is not gone into.
    virtual bool Before(BDirectory& folder, const char* name, const struct stat& record) = 0;
    /// A folder that could not be opened.
    virtual void NotEntered(BDirectory& folder, const char* name, status_t status) = 0;
    /// A folder, open, after all that is in it; also when it was not gone through to its end.
    virtual void After(BDirectory& folder, const char* name) = 0;
    /// An entry that cannot be looked at, or a folder that cannot be read; `path` leads there from
    /// the folder where the walk began.
    virtual void Failed(const std::string& path, status_t status) = 0;
};

/// Walks all that is in the open folder `top`, itself left out, one entry after the other.
///
/// No link is followed and nothing entered that is mounted below. However deep it is, few folders
/// are open at a time. Thread: any that may wait for a disk.
class TreeWalk
{
public:
    /// Ownership: borrows `visitor` for its own life.
    explicit TreeWalk(TreeVisitor& visitor) : fVisitor(visitor) {}

    void Walk(BDirectory& top);
    /// The path of the entry `name` of the folder where the walk is, from the top.
    std::string PathOf(const char* name) const;

private:
    struct State;

    void Read(BDirectory& folder);
    void Enter(const std::string& name);
    void Leave();

    TreeVisitor& fVisitor;
    State* fState = nullptr; // while it walks
};

} // namespace norvane
