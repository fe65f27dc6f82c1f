// A million messages, posted by one looper and dispatched by another. Prints milliseconds.

#include <Looper.h>
#include <Message.h>
#include <Messenger.h>
#include <OS.h>

#include <cstdio>
#include <latch>

namespace {

constexpr int32 kCount = 1000000;
constexpr uint32 kStart = 'strt';
constexpr uint32 kCounted = 'cntd';

class Receiver : public BLooper
{
public:
    explicit Receiver(std::latch& done) : BLooper("receiver"), fDone(done) {}

    void MessageReceived(BMessage* message) override
    {
        if (message->what != kCounted) {
            BLooper::MessageReceived(message);
        } else if (++fReceived == kCount) {
            fDone.count_down();
        }
    }

private:
    std::latch& fDone;
    int32 fReceived = 0;
};

class Sender : public BLooper
{
public:
    explicit Sender(BLooper* target) : BLooper("sender"), fTarget(target) {}

    void MessageReceived(BMessage* message) override
    {
        if (message->what != kStart) {
            BLooper::MessageReceived(message);
            return;
        }
        for (int32 i = 0; i < kCount; i++) {
            fTarget.SendMessage(kCounted);
        }
    }

private:
    BMessenger fTarget;
};

} // namespace

int main()
{
    std::latch done(1);
    BLooper* receiver = new Receiver(done);
    receiver->Run();
    BLooper* sender = new Sender(receiver);
    sender->Run();

    const bigtime_t begin = system_time();
    sender->PostMessage(kStart);
    done.wait();
    std::printf("%.1f\n", static_cast<double>(system_time() - begin) / 1000.0);

    sender->PostMessage(B_QUIT_REQUESTED);
    receiver->PostMessage(B_QUIT_REQUESTED);
    return 0;
}
