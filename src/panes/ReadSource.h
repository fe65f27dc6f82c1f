#pragma once

#include "panes/RowsJob.h"

#include <memory>

namespace norvane {

/// A place of this machine, whose rows are read by a job.
///
/// Opening waits a moment for it, so that ordinary places change without a flicker.
class ReadSource : public RowSource
{
public:
    // RowSource
    status_t Open(const OpenOrder& order, RowTaker& taker) override;
    void Proceed() override;

protected:
    /// Begins to read. Lends; valid for as long as the source lives.
    virtual RowsJob& StartReading(const OpenOrder& order) = 0;
    /// The rows are there and about to be handed over.
    virtual void TakeOver() {}

private:
    void TellProgress();
    void HandOver();

    RowTaker* fTaker = nullptr; // borrowed; from Open() on
    RowsJob* fJob = nullptr;    // lent; from Open() on
    bool fHasHandedOver = false;
    int32 fToldEntries = 0;
    int32 fToldRead = 0;
};

} // namespace norvane
