#include <Invoker.h>

#include <Message.h>

BInvoker::BInvoker() = default;

BInvoker::BInvoker(BMessage* message, const BHandler* handler, const BLooper* looper)
    : fMessage(message), fTarget(handler, looper)
{
}

BInvoker::BInvoker(BMessage* message, BMessenger target) : fMessage(message), fTarget(target) {}

BInvoker::~BInvoker() = default;

status_t BInvoker::SetMessage(BMessage* message)
{
    if (message != fMessage.get()) {
        fMessage.reset(message);
    }
    return B_OK;
}

uint32 BInvoker::Command() const
{
    return fMessage != nullptr ? fMessage->what : 0;
}

status_t BInvoker::SetTarget(const BHandler* handler, const BLooper* looper)
{
    status_t status = B_OK;
    fTarget = BMessenger(handler, looper, &status);
    return status;
}

status_t BInvoker::SetTarget(BMessenger target)
{
    fTarget = target;
    return B_OK;
}

bool BInvoker::IsTargetLocal() const
{
    return fTarget.IsTargetLocal();
}

BHandler* BInvoker::Target(BLooper** looper) const
{
    return fTarget.Target(looper);
}

status_t BInvoker::SetHandlerForReply(BHandler* handler)
{
    fReplyTo = handler != nullptr ? BMessenger(handler) : BMessenger();
    return B_OK;
}

BHandler* BInvoker::HandlerForReply() const
{
    return fReplyTo.Target(nullptr);
}

status_t BInvoker::Invoke(BMessage* message)
{
    BMessage* sent = message != nullptr ? message : fMessage.get();
    return sent != nullptr ? fTarget.SendMessage(sent, fReplyTo) : B_BAD_VALUE;
}

status_t BInvoker::InvokeNotify(BMessage* message, uint32 kind)
{
    BeginInvokeNotify(kind);
    const status_t status = Invoke(message);
    EndInvokeNotify();
    return status;
}

uint32 BInvoker::InvokeKind(bool* notify)
{
    if (notify != nullptr) {
        *notify = !fKinds.empty();
    }
    return fKinds.empty() ? static_cast<uint32>(B_CONTROL_INVOKED) : fKinds.back();
}

void BInvoker::BeginInvokeNotify(uint32 kind)
{
    fKinds.push_back(kind);
}

void BInvoker::EndInvokeNotify()
{
    if (!fKinds.empty()) {
        fKinds.pop_back();
    }
}
