#pragma once

#include <View.h>

namespace norvane {

/// Holds the lock of a view's window, when it is in one, for a scope.
class ListLock
{
public:
    explicit ListLock(BView& view) : fView(view.LockLooper() ? &view : nullptr) {}
    ~ListLock()
    {
        if (fView != nullptr) {
            fView->UnlockLooper();
        }
    }
    ListLock(const ListLock&) = delete;
    ListLock& operator=(const ListLock&) = delete;

private:
    BView* fView; // null when there was nothing to lock
};

} // namespace norvane
