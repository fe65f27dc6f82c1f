#pragma once

#include <AppDefs.h>
#include <Entry.h>
#include <Looper.h>
#include <Message.h>
#include <Messenger.h>
#include <Node.h>
#include <NodeMonitor.h>

#include <TempTree.h>
#include <chrono>
#include <condition_variable>
#include <cstdio>
#include <functional>
#include <gtest/gtest.h>
#include <mutex>
#include <string>
#include <vector>

struct Notice
{
    int32 opcode = 0;
    std::string name;
    int64 directory = 0;
    int64 node = 0;
    int64 from = -1;
    int64 to = -1;
    bool replaced = false;
};

/// Keeps the notices it is sent, and lets a test wait for them.
class Watcher : public BLooper
{
public:
    Watcher() : BLooper("watcher") {}

    void MessageReceived(BMessage* message) override
    {
        if (message->what != B_NODE_MONITOR) {
            BLooper::MessageReceived(message);
            return;
        }
        Notice notice;
        const char* name = "";
        message->FindInt32("opcode", &notice.opcode);
        message->FindString("name", &name);
        notice.name = name != nullptr ? name : ""; // mounts have none
        message->FindInt64("directory", &notice.directory);
        message->FindInt64("node", &notice.node);
        message->FindInt64("from directory", &notice.from);
        message->FindInt64("to directory", &notice.to);
        message->FindBool("replaced", &notice.replaced);
        {
            std::lock_guard lock(fMutex);
            fNotices.push_back(notice);
        }
        fArrival.notify_all();
    }

    /// The notices up to now, as soon as `isEnough` or after some seconds.
    std::vector<Notice> WaitFor(const std::function<bool(const std::vector<Notice>&)>& isEnough)
    {
        std::unique_lock lock(fMutex);
        fArrival.wait_for(lock, std::chrono::seconds(10), [&] { return isEnough(fNotices); });
        return fNotices;
    }

    std::vector<Notice> WaitForCount(size_t count)
    {
        return WaitFor([count](const auto& notices) { return notices.size() >= count; });
    }

    size_t Count()
    {
        std::lock_guard lock(fMutex);
        return fNotices.size();
    }

private:
    std::mutex fMutex; // guards fNotices
    std::condition_variable fArrival;
    std::vector<Notice> fNotices;
};

class NodeMonitorTest : public testing::Test
{
protected:
    NodeMonitorTest() : fWatcher(new Watcher), fMessenger(nullptr, fWatcher) { fWatcher->Run(); }

    ~NodeMonitorTest() override
    {
        stop_watching(fMessenger);
        fWatcher->Lock();
        fWatcher->Quit();
    }

    node_ref NodeOf(const char* name)
    {
        node_ref node;
        EXPECT_EQ(BEntry(fTree.Path(name).c_str()).GetNodeRef(&node), B_OK);
        return node;
    }

    int64 Ino(const char* name) { return static_cast<int64>(NodeOf(name).node); }

    status_t Watch(const char* name, uint32 flags = B_WATCH_DIRECTORY)
    {
        const node_ref node = NodeOf(name);
        return watch_node(&node, flags, fMessenger);
    }

    /// Makes an entry whose notice stands behind all earlier ones, and gives those.
    std::vector<Notice> AllUpToNow(const char* folder)
    {
        fTree.Write(std::string(folder) + "/end", "");
        auto notices = fWatcher->WaitFor([](const auto& all) {
            return !all.empty() && all.back().opcode == B_ENTRY_CREATED && all.back().name == "end";
        });
        EXPECT_FALSE(notices.empty());
        if (!notices.empty()) {
            EXPECT_EQ(notices.back().name, "end");
            notices.pop_back();
        }
        return notices;
    }

    void Rename(const char* from, const char* to)
    {
        ASSERT_EQ(rename(fTree.Path(from).c_str(), fTree.Path(to).c_str()), 0);
    }

    TempTree fTree;
    Watcher* fWatcher; // deletes itself
    BMessenger fMessenger;
};
