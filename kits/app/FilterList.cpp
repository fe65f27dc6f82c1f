#include "app/FilterList.h"

#include <List.h>
#include <MessageFilter.h>

namespace kits {

/// Tells a filter whose messages it sees.
class FilterAccess
{
public:
    static void SetLooper(BMessageFilter* filter, BLooper* looper) { filter->fLooper = looper; }
};

namespace {

BMessageFilter* FilterAt(const BList& list, int32 index)
{
    return static_cast<BMessageFilter*>(list.ItemAt(index));
}

} // namespace

void AppendFilter(FilterList& list, BMessageFilter* filter, BLooper* looper)
{
    if (filter == nullptr) {
        return;
    }
    if (list == nullptr) {
        list = std::make_unique<BList>();
    }
    list->AddItem(filter);
    FilterAccess::SetLooper(filter, looper);
}

bool TakeFilter(FilterList& list, BMessageFilter* filter)
{
    if (list == nullptr || !list->RemoveItem(filter)) {
        return false;
    }
    FilterAccess::SetLooper(filter, nullptr);
    return true;
}

void ReplaceFilters(FilterList& list, BList* filters, BLooper* looper)
{
    if (list.get() == filters) {
        return;
    }
    const FilterList former(list.release());
    list.reset(filters);
    SetFiltersLooper(list, looper);
    for (int32 i = 0; former != nullptr && i < former->CountItems(); ++i) {
        delete FilterAt(*former, i);
    }
}

void SetFiltersLooper(const FilterList& list, BLooper* looper)
{
    for (int32 i = 0; list != nullptr && i < list->CountItems(); ++i) {
        FilterAccess::SetLooper(FilterAt(*list, i), looper);
    }
}

} // namespace kits
