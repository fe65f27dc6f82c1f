#pragma once

#include <Entry.h>
#include <EntryRecord.h>
#include <Messenger.h>
#include <Node.h>

#include <memory>
#include <string>
#include <vector>

namespace norvane {

/// A link in a folder, and what is known of it.
struct LinkQuestion
{
    entry_ref link;
    node_ref folder;
    BEntryRecord record; // of the link itself
    int32 number = 0;    // the asker's
};

/// What a link leads to, as a message tells it.
struct LinkAnswer
{
    std::string name;
    node_ref folder;
    BEntryRecord record;
    int32 number = 0;
    mode_t target = 0; // 0: to nothing

    /// False when the message is not kLinkAnswered, or not whole.
    bool Read(const BMessage& message);
};

/// Finds out what links lead to, on threads of its own: they may lead to a disk that does not
/// answer. Such a thread dies when the disk answers after all; nobody waits for it.
///
/// Thread: the functions are the owner's.
class LinkTargets
{
public:
    /// Answers that come late, and those of Ask(), go to `target` as kLinkAnswered.
    explicit LinkTargets(const BMessenger& target);
    ~LinkTargets();
    LinkTargets(const LinkTargets&) = delete;
    LinkTargets& operator=(const LinkTargets&) = delete;

    /// The kinds of what the links lead to, in their order; 0 of what leads to nothing. -1 of those
    /// that were not known within a second: their answers come later.
    std::vector<int64> FindAll(const std::vector<LinkQuestion>& links);
    /// Asks for one.
    void Ask(const LinkQuestion& link);

private:
    class Queue;

    const std::shared_ptr<Queue> fQueue;
};

} // namespace norvane
