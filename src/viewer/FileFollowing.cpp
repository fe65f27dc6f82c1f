#include "viewer/FileFollowing.h"

#include "DetachedThread.h"

#include <Directory.h>
#include <Entry.h>
#include <Message.h>
#include <NodeMonitor.h>
#include <OS.h>

namespace norvane {

namespace {

constexpr size_t kMostAtOnce = size_t{1024} * 1024;

std::string NameIn(const std::string& path)
{
    return path.substr(path.rfind('/') + 1);
}

/// The folder's notices tell of the file's growth, and of another one in its place.
void Watch(const std::string& path, const BMessenger& asker)
{
    const BEntry entry(path.c_str(), true);
    BDirectory folder;
    node_ref node;
    if (entry.GetParent(&folder) == B_OK && folder.GetNodeRef(&node) == B_OK) {
        watch_node(&node, B_WATCH_DIRECTORY | B_WATCH_STAT, asker);
    }
    // What came before there was a watch is looked for once more.
    BMessage look(B_NODE_MONITOR);
    look.AddString("name", NameIn(path).c_str());
    asker.SendMessage(&look);
}

} // namespace

FileFollowing::FileFollowing(const std::string& path, const BMessenger& asker)
    : fAsker(asker), fName(NameIn(path)), fReading(path, asker)
{
    if (!StartDetached("viewing", B_NORMAL_PRIORITY, [path, asker] { Watch(path, asker); })) {
        Watch(path, asker);
    }
}

FileFollowing::~FileFollowing()
{
    stop_watching(fAsker);
}

bool FileFollowing::IsAbout(const BMessage& change, const node_ref& node) const
{
    return change.GetInt64("node", 0) == static_cast<int64>(node.node) ||
           fName == change.GetString("name", "");
}

void FileFollowing::Ask(int64 from)
{
    fReading.Ask(from, kMostAtOnce);
}

} // namespace norvane
