#include <Looper.h>

#include <List.h>
#include <Message.h>
#include <MessageFilter.h>

#include <algorithm>
#include <vector>

namespace {

bool Wants(const BMessageFilter& filter, const BMessage& message)
{
    if (!filter.FiltersAnyCommand() && filter.Command() != message.what) {
        return false;
    }
    if (filter.MessageSource() == B_REMOTE_SOURCE) {
        return false; // messages come from this program alone
    }
    const message_delivery delivery = filter.MessageDelivery();
    return delivery == B_ANY_DELIVERY || (delivery == B_DROPPED_DELIVERY) == message.WasDropped();
}

// False when a filter swallowed the message.
bool Ask(const BList* filters, BMessage* message, BHandler** target)
{
    if (filters == nullptr) {
        return true;
    }
    // A filter may change the list it stands in, and delete others with it: a copy says whom to
    // ask, the list whether it is still there.
    const BList asked(*filters);
    for (int32 i = 0; i < asked.CountItems(); ++i) {
        auto* filter = static_cast<BMessageFilter*>(asked.ItemAt(i));
        if (filters->HasItem(filter) && Wants(*filter, *message) &&
            filter->Filter(message, target) == B_SKIP_MESSAGE) {
            return false;
        }
        if (*target == nullptr) {
            return false;
        }
    }
    return true;
}

} // namespace

bool BLooper::PassesFilters(BMessage* message, BHandler** target)
{
    if (!Ask(fCommonFilters.get(), message, target)) {
        return false;
    }
    std::vector<const BHandler*> asked; // each once: two may send a message to each other
    while (std::find(asked.begin(), asked.end(), *target) == asked.end()) {
        if ((*target)->Looper() != this) {
            return false;
        }
        asked.push_back(*target);
        if (!Ask((*target)->FilterList(), message, target)) {
            return false;
        }
    }
    return (*target)->Looper() == this;
}
