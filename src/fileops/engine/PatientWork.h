#pragma once

#include <OS.h>
#include <SupportDefs.h>

#include <functional>
#include <memory>

namespace norvane {

class OperationUI;

/// A call that may take long and cannot be broken off, carried out on a thread of its own while the
/// operation goes on showing that it is alive.
class PatientWork
{
public:
    /// Begins. `call` may go on when nobody waits for it any more, so it owns all that it uses.
    /// Thread: any.
    explicit PatientWork(std::function<status_t()> call, int32 priority = B_NORMAL_PRIORITY);
    ~PatientWork();

    /// False where there was no thread to be had.
    bool HasBegun() const { return fHasThread; }
    /// Returns what the call returns; B_CANCELED once the person asked to stop; B_TIMED_OUT after
    /// `patience` microseconds. Without a thread to be had the call is made here. Once. Thread: the
    /// operation's.
    status_t Wait(OperationUI& ui, bigtime_t patience = B_INFINITE_TIMEOUT);

private:
    struct Work;

    static status_t Run(void* work);

    const std::shared_ptr<Work> fWork;
    bool fHasThread = false;
};

/// Begins and waits.
status_t DoPatiently(OperationUI& ui, std::function<status_t()> call,
                     bigtime_t patience = B_INFINITE_TIMEOUT);

} // namespace norvane
