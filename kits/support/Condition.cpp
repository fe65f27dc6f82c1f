#include <Condition.h>

#include <Locker.h>

#include "kernel/Mutex.h"

BCondition::BCondition() : fCondition(std::make_unique<kits::Condition>()) {}

BCondition::~BCondition() = default;

void BCondition::Wait(BLocker& locker)
{
    locker.WaitFor(*fCondition, B_INFINITE_TIMEOUT);
}

bool BCondition::WaitUntil(BLocker& locker, bigtime_t time)
{
    return locker.WaitFor(*fCondition, time);
}

void BCondition::Signal()
{
    fCondition->Signal();
}

void BCondition::Broadcast()
{
    fCondition->Broadcast();
}
