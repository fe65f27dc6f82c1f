#include "ftp/sessions/SessionErrands.h"

#include "MessageCodes.h"
#include "SessionsFixture.h"

#include <Looper.h>
#include <Message.h>
#include <Messenger.h>

#include <atomic>

namespace norvane {

namespace {

/// Counts what became of savings.
class Savings : public BLooper
{
public:
    void MessageReceived(BMessage* message) override
    {
        if (message->what != kSessionSaved) {
            BLooper::MessageReceived(message);
            return;
        }
        const bool exists = message->GetBool("exists", false);
        (exists ? inTheWay : message->GetInt32("status", B_ERROR) == B_OK ? written : failed)++;
    }

    std::atomic<int> written = 0;
    std::atomic<int> inTheWay = 0;
    std::atomic<int> failed = 0;
};

class SessionErrandsTest : public SessionsFixture
{
};

TEST_F(SessionErrandsTest, OfSeveralNewSessionsOfOneNameOneIsWritten)
{
    constexpr int kRounds = 20;
    constexpr int kAtOnce = 8;
    auto* savings = new Savings; // deletes itself
    savings->Run();
    for (int round = 0; round < kRounds; round++) {
        FtpSession session;
        session.name = "home" + std::to_string(round);
        session.host = "ftp.example.org";
        for (int i = 0; i < kAtOnce; i++) {
            SaveSession(session, Existing::kKept, BMessenger(savings));
        }
    }

    EXPECT_TRUE(kits::testing::WaitFor([=] {
        return savings->written + savings->inTheWay + savings->failed == kRounds * kAtOnce;
    }));
    EXPECT_EQ(savings->written, kRounds);
    EXPECT_EQ(savings->failed, 0);
    savings->Lock();
    savings->Quit();
}

} // namespace

} // namespace norvane
