#include "StartNotices.h"

#include "kernel/Mutex.h"

#include <utility>

namespace kits {

namespace {

Mutex sLock;
std::shared_ptr<StartNotices> sNotices GUARDED_BY(sLock);

} // namespace

void StartNotices::Set(std::shared_ptr<StartNotices> notices)
{
    MutexLock lock(sLock);
    sNotices.swap(notices);
}

std::shared_ptr<StartNotices> StartNotices::Get()
{
    MutexLock lock(sLock);
    return sNotices;
}

} // namespace kits
