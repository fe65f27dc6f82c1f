#pragma once

#include <SupportDefs.h>

#include <memory>

class BList;
class BLooper;
class BMessageFilter;

namespace kits {

// The filters of a handler or looper: a list that owns them, made when the first one comes.
using FilterList = std::unique_ptr<BList>;

void AppendFilter(FilterList& list, BMessageFilter* filter, BLooper* looper);
bool TakeFilter(FilterList& list, BMessageFilter* filter);
void ReplaceFilters(FilterList& list, BList* filters, BLooper* looper);
void SetFiltersLooper(const FilterList& list, BLooper* looper);

} // namespace kits
