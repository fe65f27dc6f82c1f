#include <MessageRunner.h>

#include <Message.h>

#include "app/RunnerThread.h"

using kits::RunnerThread;

namespace {

int32 Begin(const BMessenger& target, const BMessage* message, bigtime_t interval, int32 count,
            const BMessenger& replyTo)
{
    if (message == nullptr || interval <= 0 || count == 0) {
        return B_BAD_VALUE;
    }
    if (!target.IsValid()) {
        return B_BAD_PORT_ID;
    }
    return RunnerThread::Get().Add(
        {target, replyTo, std::make_shared<BMessage>(*message), interval, count});
}

} // namespace

BMessageRunner::BMessageRunner(BMessenger target, const BMessage* message, bigtime_t interval,
                               int32 count)
    : BMessageRunner(target, message, interval, count, BMessenger())
{
}

BMessageRunner::BMessageRunner(BMessenger target, const BMessage& message, bigtime_t interval,
                               int32 count)
    : BMessageRunner(target, &message, interval, count)
{
}

BMessageRunner::BMessageRunner(BMessenger target, const BMessage* message, bigtime_t interval,
                               int32 count, BMessenger replyTo)
    : fNumber(Begin(target, message, interval, count, replyTo))
{
}

BMessageRunner::BMessageRunner(BMessenger target, const BMessage& message, bigtime_t interval,
                               int32 count, BMessenger replyTo)
    : BMessageRunner(target, &message, interval, count, replyTo)
{
}

BMessageRunner::~BMessageRunner()
{
    RunnerThread::Get().Remove(fNumber);
}

status_t BMessageRunner::SetInterval(bigtime_t interval)
{
    return interval > 0 ? RunnerThread::Get().SetInterval(fNumber, interval) : B_BAD_VALUE;
}

status_t BMessageRunner::SetCount(int32 count)
{
    return RunnerThread::Get().SetCount(fNumber, count);
}

status_t BMessageRunner::GetInfo(bigtime_t* interval, int32* count) const
{
    return RunnerThread::Get().GetInfo(fNumber, interval, count);
}

status_t BMessageRunner::StartSending(BMessenger target, const BMessage* message,
                                      bigtime_t interval, int32 count)
{
    return StartSending(target, message, interval, count, BMessenger());
}

status_t BMessageRunner::StartSending(BMessenger target, const BMessage* message,
                                      bigtime_t interval, int32 count, BMessenger replyTo)
{
    const int32 number = Begin(target, message, interval, count, replyTo);
    return number > 0 ? B_OK : number;
}
