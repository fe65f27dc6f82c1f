#pragma once

#include <utility>

namespace kits {

/// Owns a file descriptor.
class UniqueFd
{
public:
    UniqueFd() = default;
    explicit UniqueFd(int adopted) : fDescriptor(adopted) {}
    UniqueFd(UniqueFd&& other) noexcept : fDescriptor(other.Release()) {}
    UniqueFd& operator=(UniqueFd&& other) noexcept
    {
        std::swap(fDescriptor, other.fDescriptor);
        return *this;
    }
    ~UniqueFd();

    /// Negative when there is none: the status with which opening failed.
    int Get() const { return fDescriptor; }
    bool IsOpen() const { return fDescriptor >= 0; }
    int Release() { return std::exchange(fDescriptor, -1); }

private:
    int fDescriptor = -1;
};

} // namespace kits
