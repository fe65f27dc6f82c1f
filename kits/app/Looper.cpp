#include <Looper.h>

#include <AppDefs.h>
#include <List.h>
#include <Message.h>
#include <MessageFilter.h>
#include <MessageQueue.h>

#include "app/FilterList.h"
#include "app/HandlerAccess.h"
#include "app/LooperCore.h"
#include "app/LooperRegistry.h"
#include "app/MessageAccess.h"
#include "app/MessageDelivery.h"
#include "app/MessageLoop.h"

#include <algorithm>

using kits::HandlerAccess;
using kits::LooperCore;
using kits::LooperRegistry;

BLooper::BLooper(const char* name, int32 priority, int32 /*portCapacity*/)
    : BHandler(name), fCore(std::make_shared<LooperCore>(this, HandlerAccess::Token(this))),
      fPriority(priority)
{
    fCore->Lock();
    fHandlers.push_back(this);
    fHandlerOfToken.emplace(fCore->Token(), this);
    HandlerAccess::SetLooper(this, this);
    LooperRegistry::AddLooper(this, fCore);
    LooperRegistry::AddHandler(fCore->Token(), this, fCore);
}

BLooper::~BLooper()
{
    if (!IsLocked()) {
        fCore->Lock();
    }
    for (size_t i = 1; i < fHandlers.size(); ++i) {
        LooperRegistry::RemoveHandler(HandlerAccess::Token(fHandlers[i]));
        HandlerAccess::SetLooper(fHandlers[i], nullptr);
        HandlerAccess::SetNext(fHandlers[i], nullptr);
    }
    kits::ReplaceFilters(fCommonFilters, nullptr, nullptr);
    HandlerAccess::SetLooper(this, nullptr);
    // The tables first: who finds the looper there must be able to see that it is gone by trying
    // the lock.
    LooperRegistry::RemoveHandler(fCore->Token());
    LooperRegistry::RemoveLooper(this);
    fCore->Die();
}

void BLooper::DispatchMessage(BMessage* message, BHandler* target)
{
    if (message->what == B_QUIT_REQUESTED && target == this) {
        AnswerQuitRequest(message);
    } else {
        target->MessageReceived(message);
    }
}

void BLooper::AnswerQuitRequest(BMessage* message)
{
    const bool agrees = QuitRequested();
    if (message->IsSourceWaiting()) {
        BMessage answer(B_REPLY);
        answer.AddBool("result", agrees);
        answer.AddInt32("thread", Thread());
        message->SendReply(&answer);
    }
    if (agrees) {
        Quit();
    }
}

void BLooper::HandleMessage(BMessage* message)
{
    kits::MessageDelivery* delivery = kits::MessageAccess::Delivery(*message).get();
    const int32 token = delivery != nullptr ? delivery->target : 0;
    BHandler* target = this;
    if (token == kits::kPreferredTarget) {
        target = fPreferredHandler != nullptr ? fPreferredHandler : this;
    } else if (token != 0) {
        const auto found = fHandlerOfToken.find(token);
        if (found == fHandlerOfToken.end()) {
            return; // gone, or moved to another looper, since the message was sent
        }
        target = found->second;
    }
    if (delivery != nullptr) {
        delivery->wasHandled = true;
    }
    target = TargetOf(message, target);
    if (target != nullptr && PassesFilters(message, &target)) {
        DispatchMessage(message, target);
    }
}

BMessage* BLooper::CurrentMessage() const
{
    return fCore->Current();
}

BMessage* BLooper::DetachCurrentMessage()
{
    return fCore->DetachCurrent().release();
}

BMessageQueue* BLooper::MessageQueue() const
{
    return &fCore->Queue();
}

void BLooper::AddHandler(BHandler* handler)
{
    if (handler == nullptr || handler->Looper() != nullptr) {
        return;
    }
    const int32 token = HandlerAccess::Token(handler);
    fHandlers.push_back(handler);
    fHandlerOfToken.emplace(token, handler);
    HandlerAccess::SetLooper(handler, this);
    HandlerAccess::SetNext(handler, this);
    LooperRegistry::AddHandler(token, handler, fCore);
}

bool BLooper::RemoveHandler(BHandler* handler)
{
    const auto place = std::find(fHandlers.begin(), fHandlers.end(), handler);
    if (place == fHandlers.end() || handler == this) {
        return false;
    }
    const int32 token = HandlerAccess::Token(handler);
    fHandlers.erase(place);
    fHandlerOfToken.erase(token);
    LooperRegistry::RemoveHandler(token);
    if (fPreferredHandler == handler) {
        fPreferredHandler = nullptr;
    }
    for (BHandler* other : fHandlers) {
        if (other->NextHandler() == handler) {
            HandlerAccess::SetNext(other, handler->NextHandler());
        }
    }
    HandlerAccess::SetLooper(handler, nullptr);
    HandlerAccess::SetNext(handler, nullptr);
    return true;
}

int32 BLooper::CountHandlers() const
{
    return static_cast<int32>(fHandlers.size());
}

BHandler* BLooper::HandlerAt(int32 index) const
{
    return index >= 0 && index < CountHandlers() ? fHandlers[static_cast<size_t>(index)] : nullptr;
}

int32 BLooper::IndexOf(BHandler* handler) const
{
    const auto place = std::find(fHandlers.begin(), fHandlers.end(), handler);
    return place != fHandlers.end() ? static_cast<int32>(place - fHandlers.begin()) : -1;
}

void BLooper::SetPreferredHandler(BHandler* handler)
{
    if (handler == nullptr || handler->Looper() == this) {
        fPreferredHandler = handler;
    }
}

thread_id BLooper::Run()
{
    if (fCore->HasRun()) {
        return B_BAD_VALUE;
    }
    const std::shared_ptr<LooperCore> core = fCore; // the looper may end before this returns
    const bool isBornLocked = IsLocked();
    const thread_id thread = kits::MessageLoop::Start(core, Name(), fPriority);
    if (thread >= B_OK && isBornLocked) {
        core->Unlock();
    }
    return thread;
}

void BLooper::Quit()
{
    const std::shared_ptr<LooperCore> core = fCore;
    if (!IsLocked() && core->Lock() != B_OK) {
        return;
    }
    if (!core->HasRun()) {
        delete this;
    } else if (core->Thread() == kits::ThisThread()) {
        core->EndSoon();
    } else {
        core->EndAfterQueue();
        core->UnlockAll();
        core->WaitForEnd();
    }
}

bool BLooper::QuitRequested()
{
    return true;
}

thread_id BLooper::Thread() const
{
    return fCore->Thread();
}

thread_id BLooper::LockingThread() const
{
    return fCore->GetLock().Holder();
}

int32 BLooper::CountLocks() const
{
    return fCore->GetLock().CountLocks();
}

int32 BLooper::CountLockRequests() const
{
    return fCore->GetLock().CountRequests();
}

BLooper* BLooper::LooperForThread(thread_id thread)
{
    if (const auto own = LooperCore::OfThisThread(); own && own->Thread() == thread) {
        return own->Looper();
    }
    for (const auto& core : LooperRegistry::AllLoopers()) {
        if (core->Thread() == thread && thread > 0) {
            return core->Looper();
        }
    }
    return nullptr;
}

void BLooper::AddCommonFilter(BMessageFilter* filter)
{
    kits::AppendFilter(fCommonFilters, filter, this);
}

bool BLooper::RemoveCommonFilter(BMessageFilter* filter)
{
    return kits::TakeFilter(fCommonFilters, filter);
}

void BLooper::SetCommonFilterList(BList* filters)
{
    kits::ReplaceFilters(fCommonFilters, filters, this);
}

BList* BLooper::CommonFilterList() const
{
    return fCommonFilters.get();
}

void BLooper::SetLongRunning(bool isLongRunning)
{
    fCore->SetLongRunning(isLongRunning);
}

void BLooper::QueueEmpty() {}

bigtime_t BLooper::NextWakeUp()
{
    return B_INFINITE_TIMEOUT;
}

BHandler* BLooper::TargetOf(BMessage* /*message*/, BHandler* target)
{
    return target;
}
