#pragma once

#include <SupportDefs.h>
#include <TreeHooks.h>

#include <atomic>
#include <thread>

namespace norvane {

class OperationUI;

/// Lets a walk over a whole tree be seen and stopped by the operation that ordered it.
///
/// Thread: made on the operation's own, which takes part in the walk and alone talks to the UI.
class OperationHooks : public BTreeHooks
{
public:
    /// Ownership: borrows `ui` for its own life.
    explicit OperationHooks(OperationUI& ui);

    // BTreeHooks
    bool IsStopped() const override;

protected:
    OperationUI& fUI;

private:
    const std::thread::id fOwner;
    mutable std::atomic<int64> fVisited{0}; // not told yet
    mutable std::atomic<bool> fIsStopped;
};

} // namespace norvane
