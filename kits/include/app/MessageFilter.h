#pragma once

#include <SupportDefs.h>

class BHandler;
class BLooper;
class BMessage;

namespace kits {
class FilterAccess;
}

/// What a filter decides.
enum filter_result {
    B_SKIP_MESSAGE,    // nobody gets the message
    B_DISPATCH_MESSAGE // the next filter is asked, then the handler gets it
};

/// A function that may stand in for a class derived from BMessageFilter.
using filter_hook = filter_result (*)(BMessage* message, BHandler** target,
                                      class BMessageFilter* filter);

/// Which messages a filter wants to see, by how they came.
enum message_delivery { B_ANY_DELIVERY, B_DROPPED_DELIVERY, B_PROGRAMMED_DELIVERY };

/// Which messages a filter wants to see, by where they came from.
enum message_source { B_ANY_SOURCE, B_REMOTE_SOURCE, B_LOCAL_SOURCE };

/// Sees messages before the handler that they are meant for, and may change, redirect or swallow
/// them.
///
/// Thread: Filter() is called with the looper locked.
/// Ownership: belongs to the handler or looper that it was added to.
class BMessageFilter
{
public:
    /// Wants the messages with that `what`.
    explicit BMessageFilter(uint32 what, filter_hook filter = nullptr);
    /// Wants every message that came as described.
    BMessageFilter(message_delivery delivery, message_source source, filter_hook filter = nullptr);
    /// Wants the messages with that `what` that came as described.
    BMessageFilter(message_delivery delivery, message_source source, uint32 what,
                   filter_hook filter = nullptr);
    BMessageFilter(const BMessageFilter&) = delete;
    BMessageFilter& operator=(const BMessageFilter&) = delete;
    virtual ~BMessageFilter();

    /// Decides about `message`; may set `*target` to another handler of the same looper. This
    /// implementation lets everything pass; a function given to the constructor is called instead.
    virtual filter_result Filter(BMessage* message, BHandler** target);

    /// What the filter wants, as given to the constructor.
    message_delivery MessageDelivery() const { return fDelivery; }
    message_source MessageSource() const { return fSource; }
    uint32 Command() const { return fWhat; }
    bool FiltersAnyCommand() const { return fWantsAny; }
    /// Lends the looper whose messages are filtered, null before the filter was added.
    BLooper* Looper() const { return fLooper; }

private:
    friend class kits::FilterAccess;

    const message_delivery fDelivery;
    const message_source fSource;
    const uint32 fWhat;
    const bool fWantsAny;
    const filter_hook fHook;
    BLooper* fLooper = nullptr;
};
