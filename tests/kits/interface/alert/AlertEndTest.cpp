#include "ControlWindow.h"

#include "app/ProgramEnd.h"
#include "testing/Native.h"

#include <Alert.h>
#include <AppDefs.h>

#include <QCoreApplication>
#include <QEvent>

#include <atomic>
#include <thread>

// Windows and programs that are to end while an alert waits for its answer.

namespace {

using namespace kits::testing;

constexpr uint32 kAsk = 'askk';

/// Asks by an alert when told to, and refuses to quit, so that the program stays.
class AskingWindow : public BWindow
{
public:
    AskingWindow() : BWindow(BRect(60, 60, 259, 159), "asking", B_TITLED_WINDOW, 0) {}

    void MessageReceived(BMessage* message) override
    {
        if (message->what == kAsk) {
            answer = (new BAlert("Sir?", "Really?", "Cancel", "Delete"))->Go();
        } else {
            BWindow::MessageReceived(message);
        }
    }

    bool QuitRequested() override
    {
        quitRequests++;
        WaitFor([this] { return mayDecide.load(); });
        return false;
    }

    std::atomic<int32> answer{-100};
    std::atomic<int32> quitRequests{0};
    std::atomic<bool> mayDecide{true};
};

class AlertEndTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        fWindow->Show();
        ASSERT_TRUE(WaitForFocus(fWindow));
        fWindow->PostMessage(kAsk);
        fAlert = WaitForWindow("Sir?");
        ASSERT_NE(fAlert, nullptr);
        ASSERT_TRUE(WaitForFocus(fAlert));
    }

    void TearDown() override
    {
        fWindow->mayDecide = true;
        if (CountShown("Sir?") > 0) {
            AnswerAlert("Cancel"); // of a test that failed
        }
        ASSERT_TRUE(fWindow->Lock());
        fWindow->Quit();
    }

    AskingWindow* fWindow = new AskingWindow; // deletes itself
    BWindow* fAlert = nullptr;
};

TEST_F(AlertEndTest, RequestToCloseWaitsForTheAnswer)
{
    CloseWindow(fWindow);
    SyncServer();
    EXPECT_EQ(CountShown("Sir?"), 1);
    EXPECT_EQ(fWindow->quitRequests, 0);

    ASSERT_TRUE(AnswerAlert("Delete"));

    EXPECT_TRUE(WaitFor([this] { return fWindow->quitRequests == 1; }));
    EXPECT_EQ(fWindow->answer, 1);
}

TEST_F(AlertEndTest, SecondRequestToCloseIsTheSame)
{
    CloseWindow(fWindow);
    CloseWindow(fWindow);
    ASSERT_TRUE(AnswerAlert("Cancel"));
    ASSERT_TRUE(WaitFor([this] { return fWindow->quitRequests > 0; }));

    SyncServer();
    ASSERT_TRUE(Sync(fWindow));
    EXPECT_EQ(fWindow->quitRequests, 1);
}

TEST_F(AlertEndTest, RequestToCloseWaitsForAnAlertOfAnotherThread)
{
    ASSERT_TRUE(AnswerAlert("Cancel"));
    ASSERT_TRUE(WaitForNoWindow("Sir?"));
    std::thread asking([] { (new BAlert("Other", "Really?", "OK"))->Go(); });
    EXPECT_NE(WaitForWindow("Other"), nullptr);

    CloseWindow(fWindow);
    SyncServer();
    EXPECT_TRUE(Sync(fWindow));
    EXPECT_EQ(fWindow->quitRequests, 0);
    EXPECT_TRUE(AnswerAlert("OK"));
    asking.join();

    EXPECT_TRUE(WaitFor([this] { return fWindow->quitRequests == 1; }));
}

TEST_F(AlertEndTest, EndOfTheProgramEndsTheAlertAndAsksTheWindowThatWaits)
{
    kits::ProgramEnd::Request();

    EXPECT_TRUE(WaitForNoWindow("Sir?"));
    EXPECT_TRUE(WaitFor([this] { return fWindow->quitRequests == 1; }));
    EXPECT_EQ(fWindow->answer, -1);
}

TEST_F(AlertEndTest, AlertsThatComeWhileTheProgramEndsGoUnanswered)
{
    fWindow->mayDecide = false;
    kits::ProgramEnd::Request();
    ASSERT_TRUE(WaitFor([this] { return fWindow->quitRequests == 1; }));
    std::atomic<int32> answers{0};

    std::thread operation([&answers] {
        for (int32 alert = 0; alert < 3; alert++) {
            answers += (new BAlert("Late", "Out of space.", "OK"))->Go();
        }
    });
    const bool haveGone = WaitFor([&answers] { return answers == -3; }, 5'000'000);

    EXPECT_TRUE(haveGone);
    while (!haveGone && answers > -3 && AnswerAlert("OK")) { // of a test that failed
    }
    operation.join();
}

TEST_F(AlertEndTest, EndOfTheSessionIsTheProgramsEnd)
{
    OnServer([] {
        QEvent quit(QEvent::Quit);
        QCoreApplication::sendEvent(qApp, &quit);
    });

    EXPECT_TRUE(WaitForNoWindow("Sir?"));
    EXPECT_TRUE(WaitFor([this] { return fWindow->quitRequests == 1; }));
    EXPECT_EQ(fWindow->answer, -1);
}

TEST_F(AlertEndTest, AlertsAreAnsweredAgainOnceSomebodyRefused)
{
    kits::ProgramEnd::Request();
    ASSERT_TRUE(WaitFor([this] { return fWindow->quitRequests == 1; }));
    ASSERT_TRUE(WaitForNoWindow("Sir?"));
    ASSERT_TRUE(WaitFor([] { return !kits::ProgramEnd::IsRequested(); }));

    fWindow->PostMessage(kAsk);
    ASSERT_TRUE(AnswerAlert("Delete"));

    EXPECT_TRUE(WaitFor([this] { return fWindow->answer == 1; }));
}

} // namespace
