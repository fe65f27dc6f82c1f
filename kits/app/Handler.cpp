#include <Handler.h>

#include <List.h>
#include <Looper.h>
#include <Message.h>

#include "app/Deadline.h"
#include "app/FilterList.h"
#include "app/HandlerCalls.h"
#include "app/LooperRegistry.h"
#include "app/MessageAccess.h"
#include "app/MessageDelivery.h"

BHandler::BHandler(const char* name) : fToken(kits::LooperRegistry::NewToken())
{
    SetName(name);
}

BHandler::~BHandler()
{
    // A looper takes itself out of the tables; its handler part is no longer one of its own here.
    if (LockLooper()) {
        BLooper* looper = Looper();
        looper->RemoveHandler(this);
        looper->Unlock();
    }
    kits::ReplaceFilters(fFilters, nullptr, nullptr);
}

void BHandler::MessageReceived(BMessage* message)
{
    if (fNextHandler != nullptr) {
        fNextHandler->MessageReceived(message);
        return;
    }
    const kits::MessageDelivery* delivery = kits::MessageAccess::Delivery(*message).get();
    if (delivery == nullptr || !delivery->IsAnswerAsked() || delivery->isReply) {
        return; // nobody asked, or the two would go on answering each other
    }
    BMessage answer(B_MESSAGE_NOT_UNDERSTOOD);
    answer.AddInt32("error", B_BAD_VALUE);
    answer.AddString("message", "Didn't understand the specifier(s)");
    message->SendReply(&answer);
}

void BHandler::SetName(const char* name)
{
    fName = name != nullptr ? std::make_unique<std::string>(name) : nullptr;
}

const char* BHandler::Name() const
{
    return fName != nullptr ? fName->c_str() : nullptr;
}

void BHandler::SetNextHandler(BHandler* handler)
{
    if (handler == nullptr || (Looper() != nullptr && handler->Looper() == Looper())) {
        fNextHandler = handler;
    }
}

void BHandler::AddFilter(BMessageFilter* filter)
{
    kits::AppendFilter(fFilters, filter, Looper());
}

bool BHandler::RemoveFilter(BMessageFilter* filter)
{
    return kits::TakeFilter(fFilters, filter);
}

void BHandler::SetFilterList(BList* filters)
{
    kits::ReplaceFilters(fFilters, filters, Looper());
}

BList* BHandler::FilterList() const
{
    return fFilters.get();
}

bool BHandler::LockLooper()
{
    return LockLooperWithTimeout(B_INFINITE_TIMEOUT) == B_OK;
}

status_t BHandler::LockLooperWithTimeout(bigtime_t timeout)
{
    return kits::LockHandler(fToken, kits::DeadlineAfter(timeout));
}

void BHandler::UnlockLooper()
{
    kits::UnlockHandler(fToken);
}
