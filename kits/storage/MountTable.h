#pragma once

#include "UniqueFd.h"

#include <SupportDefs.h>

#include <vector>

namespace kits {

/// The devices that are mounted, as the kernel lists them; its descriptor wakes a poll for POLLPRI
/// at every change.
class MountTable
{
public:
    MountTable();

    int Descriptor() const { return fList.Get(); }
    /// Reads the list again and tells what came and went since the last reading.
    void Update(std::vector<dev_t>* mounted, std::vector<dev_t>* unmounted);

private:
    std::vector<dev_t> Read() const;

    UniqueFd fList;
    std::vector<dev_t> fDevices; // ascending, each once
};

} // namespace kits
