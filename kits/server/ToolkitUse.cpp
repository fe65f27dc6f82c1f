#include "ToolkitUse.h"

#include "kernel/Mutex.h"

namespace kits {

namespace {

constexpr bigtime_t kLongestWait = 1'000'000;

/// Never destroyed: threads that nobody waits for may outlive everything.
struct Users
{
    static Users& Get()
    {
        static auto* users = new Users;
        return *users;
    }

    Mutex lock;
    Condition left;
    bool isOpen GUARDED_BY(lock) = false;
    int32 count GUARDED_BY(lock) = 0;
};

bool Begin()
{
    Users& users = Users::Get();
    MutexLock lock(users.lock);
    users.count += users.isOpen ? 1 : 0;
    return users.isOpen;
}

} // namespace

ToolkitUse::ToolkitUse() : fIsBegun(Begin()) {}

ToolkitUse::~ToolkitUse()
{
    if (!fIsBegun) {
        return;
    }
    Users& users = Users::Get();
    {
        MutexLock lock(users.lock);
        users.count--;
    }
    users.left.Signal();
}

bool ToolkitUse::IsEnding()
{
    Users& users = Users::Get();
    MutexLock lock(users.lock);
    return !users.isOpen;
}

void ToolkitUse::Open()
{
    Users& users = Users::Get();
    MutexLock lock(users.lock);
    users.isOpen = true;
}

void ToolkitUse::Close()
{
    Users& users = Users::Get();
    const bigtime_t end = system_time() + kLongestWait;
    MutexLock lock(users.lock);
    users.isOpen = false;
    while (users.count > 0 && users.left.WaitUntil(users.lock, end)) {
    }
}

} // namespace kits
