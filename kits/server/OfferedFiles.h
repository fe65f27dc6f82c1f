#pragma once

#include "kernel/Mutex.h"

#include <memory>
#include <string>

class BMessage;

namespace kits {

/// The addresses of a message's "refs", for other programs. They are found out on a thread of their
/// own while nobody asks for them yet: where a folder is has to be asked of the disk.
/// Thread: any.
class OfferedFiles
{
public:
    /// Null when the message has no refs.
    static std::shared_ptr<OfferedFiles> Of(const BMessage& message);

    /// A line for each file, as kits::AddressesOfRefs() makes them. Waits for the disk, a second at
    /// most; empty when it does not answer.
    std::string Addresses();

private:
    Mutex fLock;
    Condition fFound;
    bool fIsFound GUARDED_BY(fLock) = false;
    std::string fAddresses GUARDED_BY(fLock);
};

} // namespace kits
