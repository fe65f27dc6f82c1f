#include "OfferedFiles.h"

#include "kernel/WorkerThread.h"
#include "storage/FileAddresses.h"

#include <Message.h>
#include <OS.h>

#include <utility>

namespace kits {

namespace {

constexpr bigtime_t kPatience = 1'000'000;

} // namespace

std::shared_ptr<OfferedFiles> OfferedFiles::Of(const BMessage& message)
{
    if (!message.HasRef("refs")) {
        return nullptr;
    }
    auto files = std::make_shared<OfferedFiles>();
    // Without a thread other programs get nothing.
    [[maybe_unused]] const status_t status =
        StartDetached("offered files", [files, copy = BMessage(message)] {
            std::string addresses = AddressesOfRefs(copy);
            const MutexLock lock(files->fLock);
            files->fAddresses = std::move(addresses);
            files->fIsFound = true;
            files->fFound.Broadcast();
        });
    return files;
}

std::string OfferedFiles::Addresses()
{
    const bigtime_t deadline = system_time() + kPatience;
    const MutexLock lock(fLock);
    while (!fIsFound && fFound.WaitUntil(fLock, deadline)) {
    }
    return fAddresses;
}

} // namespace kits
