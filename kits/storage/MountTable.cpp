#include "MountTable.h"

#include "SystemCalls.h"

#include <algorithm>
#include <cstdio>
#include <fcntl.h>
#include <iterator>
#include <string>
#include <sys/sysmacros.h>

namespace kits {

MountTable::MountTable()
    : fList(sys::OpenAt(sys::kWorkingDirectory, "/proc/self/mountinfo", O_RDONLY))
{
    fDevices = Read();
}

std::vector<dev_t> MountTable::Read() const
{
    std::string text;
    char buffer[16 * 1024];
    for (;;) {
        const ssize_t length =
            sys::ReadAt(fList.Get(), buffer, sizeof(buffer), static_cast<off_t>(text.size()));
        if (length <= 0) {
            break;
        }
        text.append(buffer, static_cast<size_t>(length));
    }
    std::vector<dev_t> devices;
    for (size_t at = 0; at < text.size(); at = std::min(text.find('\n', at), text.size() - 1) + 1) {
        unsigned major = 0;
        unsigned minor = 0;
        // "36 35 98:0 /root /mount/point ...": own and parent's number, then the device.
        if (std::sscanf(text.c_str() + at, "%*d %*d %u:%u", &major, &minor) == 2) {
            devices.push_back(makedev(major, minor));
        }
    }
    std::sort(devices.begin(), devices.end());
    devices.erase(std::unique(devices.begin(), devices.end()), devices.end());
    return devices;
}

void MountTable::Update(std::vector<dev_t>* mounted, std::vector<dev_t>* unmounted)
{
    std::vector<dev_t> now = Read();
    std::set_difference(now.begin(), now.end(), fDevices.begin(), fDevices.end(),
                        std::back_inserter(*mounted));
    std::set_difference(fDevices.begin(), fDevices.end(), now.begin(), now.end(),
                        std::back_inserter(*unmounted));
    fDevices = std::move(now);
}

} // namespace kits
