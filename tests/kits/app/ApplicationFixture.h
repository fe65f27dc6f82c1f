#pragma once

#include <Application.h>

#include <OS.h>

#include "RecordingLooper.h"
#include "app/LooperCore.h"
#include "app/LooperRegistry.h"

#include <gtest/gtest.h>

#include <atomic>
#include <functional>
#include <string>
#include <utility>
#include <vector>

inline constexpr const char* kSignature = "application/x-vnd.test";

/// Notes what its hooks are called for.
class TestApplication : public BApplication
{
public:
    TestApplication() : BApplication(kSignature) {}

    void ReadyToRun() override
    {
        fCalls += "ready ";
        if (fWhenReady) {
            fWhenReady();
        }
    }
    void ArgvReceived(int32 argc, char** argv) override
    {
        fCalls += "arguments ";
        fArguments.assign(argv, argv + argc);
    }
    void RefsReceived(BMessage*) override { fCalls += "refs "; }
    bool QuitRequested() override
    {
        ++fQuitRequests;
        return BApplication::QuitRequested();
    }
    void MessageReceived(BMessage* message) override { fRecord.Add("application", message->what); }

    std::string fCalls;
    std::vector<std::string> fArguments;
    std::atomic<int> fQuitRequests{0};
    std::function<void()> fWhenReady;
    Record fRecord;
};

/// What the interface kit's windows are to the application.
class TestWindow : public RecordingLooper
{
public:
    explicit TestWindow(
        Record& record, std::function<bool()> agrees = [] { return true; })
        : RecordingLooper(record, "window"), fAgrees(std::move(agrees))
    {
        kits::LooperRegistry::FindLooper(this)->MarkAsWindow(reinterpret_cast<BWindow*>(this));
        Run();
    }

    ~TestWindow() override { snooze(fEndTakes); }

    bool QuitRequested() override
    {
        ++sAsked;
        return fAgrees();
    }
    void Quit() override
    {
        for (int i = 0; i < fRequestsAtEnd; i++) {
            BMessage reply;
            be_app_messenger.SendMessage('busy', &reply);
        }
        RecordingLooper::Quit();
    }
    void SetEndTakes(bigtime_t time) { fEndTakes = time; }
    void SetRequestsAtEnd(int count) { fRequestsAtEnd = count; }

    inline static std::atomic<int> sAsked{0};

private:
    std::function<bool()> fAgrees;
    std::atomic<bigtime_t> fEndTakes{0};
    std::atomic<int> fRequestsAtEnd{0};
};

class ApplicationFixture : public ::testing::Test
{
protected:
    void SetUp() override { TestWindow::sAsked = 0; }

    Record fRecord;
    Event fEnd;
};
