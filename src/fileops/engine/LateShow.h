#pragma once

#include <SupportDefs.h>

namespace norvane {

/// When the window of an operation that nobody asked to see comes all the same: once it has lasted
/// for a second.
class LateShow
{
public:
    static constexpr bigtime_t kPatience = 1'000'000;

    void Start(bigtime_t now) { fTime = now + kPatience; }
    /// True once, when the operation still goes on then. Never without Start().
    bool TakeDue(bigtime_t now)
    {
        if (fTime == 0 || now < fTime) {
            return false;
        }
        fTime = 0;
        return true;
    }

private:
    bigtime_t fTime = 0;
};

} // namespace norvane
