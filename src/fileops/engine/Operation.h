#pragma once

#include "fileops/engine/Journal.h"
#include "fileops/engine/Measurement.h"
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

    /// Takes over a measurement of the same items that was begun before.
    void TakeMeasurement(std::unique_ptr<Measurement> measurement);
    /// Finds how much there is to do, and tells it. Once, before the first item.
    virtual void Measure();
    size_t CountItems() const { return fItems.size(); }
    void RunItem(size_t index);
    /// Does what was promised so far and waits for more to come with it. Called before anything
    /// waits for a person. What takes the medium longer than `patience` microseconds is left for
    /// the next time.
    virtual void Settle(bigtime_t patience = B_INFINITE_TIMEOUT);
    /// The same at the end: all that items promised is done by then, or told.
    virtual void Finish();

    /// What could not be handled whole; "" when all was.
    std::string Summary() const { return fDesk.Summary(); }
    const Journal& Results() const { return fContext.journal; }

protected:
    Operation(OperationUI& ui, std::vector<entry_ref> items);

    virtual void DoItem(size_t index) = 0;
    /// Whether only what was measured may be touched, and progress is told by entries.
    virtual bool IsDeletion() const { return false; }
    virtual OperationSize::Kind Kind() const { return OperationSize::Kind::kLocal; }
    const entry_ref& Item(size_t index) const { return fItems[index]; }
    /// What was found by Measure(), which was called before.
    const Measurement& Measured() const { return *fMeasurement; }

    OperationDesk fDesk;
    OperationContext fContext;

private:
    const std::vector<entry_ref> fItems;
    std::unique_ptr<Measurement> fMeasurement;
};

} // namespace norvane
