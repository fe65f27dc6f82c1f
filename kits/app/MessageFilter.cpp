#include <MessageFilter.h>

BMessageFilter::BMessageFilter(uint32 what, filter_hook filter)
    : BMessageFilter(B_ANY_DELIVERY, B_ANY_SOURCE, what, filter)
{
}

BMessageFilter::BMessageFilter(message_delivery delivery, message_source source, filter_hook filter)
    : fDelivery(delivery), fSource(source), fWhat(0), fWantsAny(true), fHook(filter)
{
}

BMessageFilter::BMessageFilter(message_delivery delivery, message_source source, uint32 what,
                               filter_hook filter)
    : fDelivery(delivery), fSource(source), fWhat(what), fWantsAny(false), fHook(filter)
{
}

BMessageFilter::~BMessageFilter() = default;

filter_result BMessageFilter::Filter(BMessage* message, BHandler** target)
{
    return fHook != nullptr ? fHook(message, target, this) : B_DISPATCH_MESSAGE;
}
