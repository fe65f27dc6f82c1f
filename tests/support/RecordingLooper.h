#pragma once

#include "Event.h"

#include <Looper.h>
#include <Message.h>

#include <mutex>
#include <utility>
#include <vector>

/// What handlers were given, by their names, in order; shared by the handlers of one test.
class Record
{
public:
    using Entries = std::vector<std::pair<std::string, uint32>>;

    void Add(const char* handler, uint32 what)
    {
        {
            std::lock_guard<std::mutex> lock(fMutex);
            fEntries.emplace_back(handler, what);
        }
        fArrival.Happen();
    }

    bool Await(int count = 1) { return fArrival.Await(count); }

    Entries All()
    {
        std::lock_guard<std::mutex> lock(fMutex);
        return fEntries;
    }

private:
    std::mutex fMutex;
    Entries fEntries;
    Event fArrival;
};

/// Notes every message below 'aaaa'; passes the others on, as one that does not know them.
class RecordingHandler : public BHandler
{
public:
    RecordingHandler(const char* name, Record& record) : BHandler(name), fRecord(record) {}

    void MessageReceived(BMessage* message) override
    {
        if (message->what < 'aaaa') {
            fRecord.Add(Name(), message->what);
        } else {
            BHandler::MessageReceived(message);
        }
    }

private:
    Record& fRecord;
};

/// Notes every message that reaches it, and its end.
class RecordingLooper : public BLooper
{
public:
    explicit RecordingLooper(Record& record, const char* name = "looper")
        : BLooper(name), fRecord(record)
    {
    }

    ~RecordingLooper() override
    {
        if (fEnd != nullptr) {
            fEnd->Happen();
        }
    }

    void MessageReceived(BMessage* message) override { fRecord.Add(Name(), message->what); }

    void TellEndTo(Event& event) { fEnd = &event; }

private:
    Record& fRecord;
    Event* fEnd = nullptr;
};

/// Ends a looper that runs; nothing happens when it is gone.
inline void EndLooper(BLooper* looper)
{
    if (looper->Lock()) {
        looper->Quit();
    }
}
