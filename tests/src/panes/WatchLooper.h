#pragma once

#include <EntryChanges.h>
#include <Looper.h>
#include <Message.h>
#include <NodeMonitor.h>

#include "panes/RowSource.h"

#include <mutex>
#include <set>
#include <string>

/// Whom a watch tells; notes the names in what it is told.
class WatchLooper : public BLooper
{
public:
    WatchLooper() : BLooper("watcher") {}

    void MessageReceived(BMessage* message) override
    {
        if (message->what != B_NODE_MONITOR) {
            BLooper::MessageReceived(message);
            return;
        }
        const std::lock_guard lock(fMutex);
        BEntryChanges changes(*message);
        BEntryChange change;
        while (changes.GetNext(&change)) {
            fNames.insert(change.name);
        }
    }

    bool Heard(const std::string& name)
    {
        const std::lock_guard lock(fMutex);
        return fNames.contains(name);
    }

private:
    std::mutex fMutex;
    std::set<std::string> fNames; // guarded by fMutex
};

/// Hands a folder's rows to nobody: the watch is what counts.
class NoTaker : public norvane::RowTaker
{
    void Counted(int32) override {}
    void Read(int32) override {}
    void Opened(norvane::RowSource&, norvane::ListedRows) override {}
    void NotOpened(norvane::RowSource&, status_t) override {}
    void ReadAgain(norvane::RowSource&) override {}
};
