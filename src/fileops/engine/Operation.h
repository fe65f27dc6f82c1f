#pragma once

#include "fileops/engine/Journal.h"
#include "fileops/engine/OperationContext.h"
#include "fileops/engine/OperationDesk.h"

#include <Entry.h>
#include <OS.h>
#include <SupportDefs.h>

#include <memory>
#include <string>
#include <vector>

namespace norvane {

/// What an operation window carries out: measured, done item by item, told of once at the end.
///
/// Thread: the operation's.
class Operation
{
public:
    virtual ~Operation();
    Operation(const Operation&) = delete;
    Operation& operator=(const Operation&) = delete;

    /// All of it: the four below, until the person stops or cancels it, and what is to be told.
    void Run();

    /// Finds how much there is to do, and tells it. Once, before the first item.
    void Measure();
    size_t CountItems() const { return fItems.size(); }
    void RunItem(size_t index);
    /// Does what was promised so far and waits for more to come with it. Called before anything
    /// waits for a person. What takes the medium longer than `patience` microseconds is left for
    /// the next time.
    virtual void Settle(bigtime_t patience = B_INFINITE_TIMEOUT);
    /// The same at the end: all that items promised is done by then, or told.
    void Finish();

    /// What could not be handled whole; "" when all was.
    std::string Summary() const { return fDesk.Summary(); }
    const Journal& Results() const { return fContext.journal; }

protected:
    Operation(OperationUI& ui, std::vector<entry_ref> items);

    virtual OperationSize MeasureItems();
    virtual void DoItem(size_t index) = 0;
    const entry_ref& Item(size_t index) const { return fItems[index]; }
    int64 SizeOf(size_t index) const { return index < fSizes.size() ? fSizes[index] : 0; }

    OperationDesk fDesk;
    OperationContext fContext;

private:
    const std::vector<entry_ref> fItems;
    std::vector<int64> fSizes;
};

} // namespace norvane
