#pragma once

#include <unistd.h>
#include <utility>

namespace kits {

/// Owns a file descriptor and closes it at the end.
class UniqueFd
{
public:
    UniqueFd() = default;
    /// Adopts `fd`; a negative one counts as none.
    explicit UniqueFd(int fd) : fFd(fd) {}
    UniqueFd(UniqueFd&& other) noexcept : fFd(other.Release()) {}
    ~UniqueFd() { Reset(); }
    UniqueFd& operator=(UniqueFd&& other) noexcept
    {
        if (this != &other) {
            Reset(other.Release());
        }
        return *this;
    }
    UniqueFd(const UniqueFd&) = delete;
    UniqueFd& operator=(const UniqueFd&) = delete;

    int Get() const { return fFd; }
    bool IsValid() const { return fFd >= 0; }
    explicit operator bool() const { return IsValid(); }

    /// Returns the descriptor to the caller, who closes it.
    [[nodiscard]] int Release() { return std::exchange(fFd, -1); }

    /// Closes the descriptor and adopts `fd`. errno stays: this runs on the way out of failures.
    void Reset(int fd = -1);

private:
    int fFd = -1;
};

} // namespace kits
