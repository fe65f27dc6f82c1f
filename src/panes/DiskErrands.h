#pragma once

#include <SupportDefs.h>

#include <functional>
#include <memory>

namespace norvane {

/// Does small things that look at disks, on a few threads of its own, roughly in turn. A disk that
/// does not answer holds one of them until it does; others go on, as long as there are any.
///
/// Thread: any. Lives as long as the program.
class DiskErrands
{
public:
    static DiskErrands& Get();

    /// Has `errand` done some time later; at once when there is no thread to be had. It keeps what
    /// it needs: whoever wants it done may be gone by then.
    void Do(std::function<void()> errand);

private:
    class Queue;

    DiskErrands();

    const std::shared_ptr<Queue> fQueue;
};

} // namespace norvane
