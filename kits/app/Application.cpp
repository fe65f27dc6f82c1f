#include <Application.h>

#include <AppDefs.h>
#include <Message.h>

#include "app/ApplicationThreads.h"
#include "app/DisplayHooks.h"
#include "app/LooperCore.h"
#include "app/LooperRegistry.h"
#include "app/MessageLoop.h"
#include "app/ProgramEnd.h"
#include "app/QuitRound.h"
#include "kernel/ThreadEnds.h"

#include <fstream>
#include <iterator>
#include <vector>

using kits::LooperCore;
using kits::LooperRegistry;

BApplication* be_app = nullptr;

namespace {

std::vector<std::string> ReadArguments()
{
    std::ifstream file("/proc/self/cmdline", std::ios::binary);
    std::vector<std::string> arguments;
    std::string argument;
    while (std::getline(file, argument, '\0')) {
        arguments.push_back(argument);
    }
    return arguments;
}

std::vector<std::shared_ptr<LooperCore>> Windows()
{
    std::vector<std::shared_ptr<LooperCore>> windows = LooperRegistry::AllLoopers();
    std::erase_if(windows, [](const auto& core) { return core->Window() == nullptr; });
    return windows;
}

} // namespace

BApplication::BApplication(const char* signature)
    : BLooper("application"), fSignature(signature != nullptr ? signature : "")
{
    be_app = this;
    be_app_messenger = BMessenger(this);
    kits::ProgramEnd::Forget();
    fThreads = std::make_unique<kits::ApplicationThreads>();
    const kits::DisplayHooks& display = kits::GetDisplayHooks();
    if (display.start != nullptr) {
        fInitStatus = display.start();
        fIsDisplayStarted = fInitStatus == B_OK;
    }
}

BApplication::BApplication(const char* signature, status_t* error) : BApplication(signature)
{
    if (error != nullptr) {
        *error = fInitStatus;
    }
}

BApplication::~BApplication()
{
    const std::shared_ptr<LooperCore> core = LooperRegistry::FindLooper(this);
    core->UnlockAll(); // whom this waits for may want the lock
    EndOtherLoopers();
    StopDisplay();
    fThreads = nullptr;
    be_app_messenger = BMessenger();
    be_app = nullptr;
}

const char* BApplication::Signature() const
{
    return fSignature.c_str();
}

thread_id BApplication::Run()
{
    const std::shared_ptr<LooperCore> core = LooperRegistry::FindLooper(this);
    if (core->HasRun()) {
        return B_BAD_VALUE;
    }
    core->AdoptThisThread();
    Unlock(); // the lock of the constructor
    if (fInitStatus == B_OK) {
        QueueStart();
        kits::MessageLoop::Run(*core);
    }
    core->EndSoon();
    EndOtherLoopers();
    StopDisplay();
    return Thread();
}

void BApplication::Quit()
{
    const std::shared_ptr<LooperCore> core = LooperRegistry::FindLooper(this);
    if (core->HasRun() && core->Thread() != find_thread(nullptr)) {
        core->EndAfterQueue();
        core->UnlockAll();
    } else {
        core->EndSoon();
    }
}

bool BApplication::QuitRequested()
{
    return kits::QuitRound(LooperRegistry::FindLooper(this)).Run();
}

void BApplication::ReadyToRun() {}

void BApplication::ArgvReceived(int32 /*argc*/, char** /*argv*/) {}

void BApplication::RefsReceived(BMessage* /*message*/) {}

void BApplication::DispatchMessage(BMessage* message, BHandler* target)
{
    if (target != this) {
        BLooper::DispatchMessage(message, target);
        return;
    }
    switch (message->what) {
    case B_READY_TO_RUN:
        ReadyToRun();
        break;
    case B_ARGV_RECEIVED:
        HandleArguments(message);
        break;
    case B_REFS_RECEIVED:
        RefsReceived(message);
        break;
    case B_QUIT_REQUESTED:
        HandleQuitRequest(message);
        break;
    default:
        BLooper::DispatchMessage(message, target);
    }
}

void BApplication::HandleQuitRequest(BMessage* message)
{
    // Windows that close pass the request on to the application: one round serves them all.
    if (!fIsAsking) {
        fIsAsking = true;
        BLooper::DispatchMessage(message, this);
        fIsAsking = false;
        if (!LooperRegistry::FindLooper(this)->IsEnding()) {
            kits::ProgramEnd::Forget(); // somebody has refused
        }
    }
}

void BApplication::HandleArguments(BMessage* message)
{
    std::vector<std::string> arguments;
    const char* argument = nullptr;
    for (int32 i = 0; message->FindString("argv", i, &argument) == B_OK; ++i) {
        arguments.emplace_back(argument);
    }
    std::vector<char*> argv;
    argv.reserve(arguments.size());
    for (std::string& each : arguments) {
        argv.push_back(each.data());
    }
    argv.push_back(nullptr);
    ArgvReceived(static_cast<int32>(arguments.size()), argv.data());
}

// What was posted before the loop runs is handled after the program knows its arguments and is
// ready.
void BApplication::QueueStart()
{
    std::vector<std::unique_ptr<BMessage>> messages;
    const std::vector<std::string> arguments = ReadArguments();
    if (arguments.size() > 1) {
        auto message = std::make_unique<BMessage>(B_ARGV_RECEIVED);
        message->AddInt32("argc", static_cast<int32>(arguments.size()));
        for (const std::string& argument : arguments) {
            message->AddString("argv", argument.c_str());
        }
        messages.push_back(std::move(message));
    }
    messages.push_back(std::make_unique<BMessage>(B_READY_TO_RUN));
    LooperRegistry::FindLooper(this)->PutInFront(std::move(messages));
}

int32 BApplication::CountWindows() const
{
    return static_cast<int32>(Windows().size());
}

BWindow* BApplication::WindowAt(int32 index) const
{
    const auto windows = Windows();
    const bool isInside = index >= 0 && static_cast<size_t>(index) < windows.size();
    return isInside ? windows[static_cast<size_t>(index)]->Window() : nullptr;
}

int32 BApplication::CountLoopers() const
{
    return static_cast<int32>(LooperRegistry::AllLoopers().size());
}

BLooper* BApplication::LooperAt(int32 index) const
{
    const auto loopers = LooperRegistry::AllLoopers();
    const bool isInside = index >= 0 && static_cast<size_t>(index) < loopers.size();
    return isInside ? loopers[static_cast<size_t>(index)]->Looper() : nullptr;
}

// Ends all that run, windows first as they may use others, and waits for their threads.
void BApplication::EndOtherLoopers()
{
    const std::shared_ptr<LooperCore> own = LooperRegistry::FindLooper(this);
    own->CloseQueue(); // whoever waits for an answer gets none
    const auto endAll = [&](bool windowsOnly) {
        bool foundOne = true;
        while (foundOne) { // those that end may have made others
            foundOne = false;
            std::vector<std::shared_ptr<LooperCore>> running = LooperRegistry::AllThreads();
            std::erase_if(running,
                          [&](const auto& core) { return windowsOnly && !core->IsWindow(); });
            for (const auto& core : running) {
                core->EndAfterQueue();
            }
            for (const auto& core : running) {
                core->WaitForEnd();
                foundOne = true;
            }
        }
    };
    endAll(true);
    endAll(false);
    kits::JoinEndedThreads();
}

void BApplication::StopDisplay()
{
    const kits::DisplayHooks& display = kits::GetDisplayHooks();
    if (fIsDisplayStarted && display.stop != nullptr) {
        display.stop();
    }
    fIsDisplayStarted = false;
}
