#include <NoThreads.h>

#include "fileops/windows/OverWin.h"

#include "ApplicationEnvironment.h"
#include "fileops/engine/Operations.h"

#include <Button.h>
#include <Message.h>
#include <StringView.h>

#include <gtest/gtest.h>

#include <future>

namespace norvane {

using kits::testing::FindView;
using kits::testing::WaitFor;

/// The overwrite question, asked as an operation's thread asks it.
class OverWinTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        fWindow = new OverWin(BRect(100, 100, 700, 500), "Item Exists", nullptr);
    }
    void TearDown() override
    {
        Operations::Resume();
        if (fWindow != nullptr && fWindow->Lock()) {
            fWindow->Quit();
        }
    }

    std::future<uint32> Ask()
    {
        fWindow->DoDisplay();
        return std::async(std::launch::async, [this] {
            fWindow->WaitForAnswer();
            return fWindow->GetRetType();
        });
    }

    void Press(const char* button)
    {
        ASSERT_TRUE(kits::testing::WaitUntilAnswers(fWindow));
        kits::testing::Click(FindView(fWindow, button));
    }

    OverWin* fWindow = nullptr; // deletes itself
};

TEST_F(OverWinTest, IsHiddenWithoutAnAnswerAtFirst)
{
    EXPECT_FALSE(fWindow->IsShown());
    EXPECT_TRUE(fWindow->IsHidden());
    EXPECT_EQ(fWindow->GetRetType(), uint32(kAnswerNone));
}

TEST_F(OverWinTest, IsCentredOnTheFrame)
{
    EXPECT_EQ(fWindow->Frame(), BRect(175, 219, 625, 381));
}

TEST_F(OverWinTest, ShowsPathsCrossedWithDetails)
{
    fWindow->SetPaths("/from/a", "/to/a", "5 Bytes", "2 K");
    ASSERT_TRUE(fWindow->Lock());
    std::string lines;
    BView* container = fWindow->FindView("FtpConContainer");
    const float middles[] = {15, 30, 55, 70}; // of the lines' frames
    const float lefts[] = {10, 30, 10, 30};
    for (int32 index = 0; index < 4; index++) {
        const auto* line = dynamic_cast<BStringView*>(container->ChildAt(index));
        lines += line->Name() + std::string(" ") + line->Text() + std::string("|");
        // As high as the font, around the frame's middle.
        EXPECT_NEAR((line->Frame().top + line->Frame().bottom) / 2, middles[index], 0.5);
        EXPECT_EQ(line->Frame().left, lefts[index]);
        EXPECT_EQ(line->Frame().right, 440);
    }
    fWindow->Unlock();
    EXPECT_EQ(lines, "OverwriteFile Overwrite: /from/a|OverwriteFile 5 Bytes|"
                     "OverwriteWith With file: /to/a|OverwriteWith 2 K|");
}

TEST_F(OverWinTest, HasItsButtonsInPlace)
{
    struct Place
    {
        const char* name;
        const char* label;
        BRect frame;
    };
    const Place places[] = {
        {"Overwrite", "Overwrite", BRect(10, 81, 150, 111)},
        {"OverwriteAll", "Overwrite All", BRect(155, 81, 295, 111)},
        {"Skip", "Skip", BRect(300, 81, 440, 111)},
        {"Cancel", "Cancel", BRect(10, 121, 150, 151)},
        {"OverwriteOlder", "Overwrite All Older", BRect(155, 121, 295, 151)},
        {"SkipAll", "Skip All", BRect(300, 121, 440, 151)},
    };
    for (const Place& place : places) {
        const auto* button = dynamic_cast<BButton*>(FindView(fWindow, place.name));
        ASSERT_NE(button, nullptr) << place.name;
        EXPECT_STREQ(button->Label(), place.label);
        EXPECT_EQ(button->Frame(), place.frame) << place.name;
        EXPECT_EQ(button->ResizingMode(), B_FOLLOW_LEFT | B_FOLLOW_TOP);
    }
    EXPECT_TRUE(FindView(fWindow, "Overwrite")->IsFocus());
    const uint32 flags = B_NOT_RESIZABLE | B_NOT_ZOOMABLE | B_NOT_MINIMIZABLE | B_NOT_CLOSABLE;
    EXPECT_EQ(fWindow->Flags() & flags, flags);
    EXPECT_EQ(fWindow->Look(), B_MODAL_WINDOW_LOOK);
    EXPECT_EQ(fWindow->Feel(), B_NORMAL_WINDOW_FEEL);
}

TEST_F(OverWinTest, IgnoresKeysWhileSomebodyIsTyping)
{
    std::future<uint32> answer = Ask();
    ASSERT_TRUE(kits::testing::WaitForFocus(fWindow));
    ASSERT_TRUE(kits::testing::WaitUntilAnswers(fWindow));
    // The first key tells that somebody types, so Enter right after it is no answer.
    kits::testing::TypeKey('x');
    kits::testing::TypeKey(B_ENTER);
    kits::testing::SyncServer();
    ASSERT_TRUE(kits::testing::Sync(fWindow));
    EXPECT_TRUE(fWindow->IsShown());
    Press("SkipAll");
    EXPECT_EQ(answer.get(), uint32(kAnswerSkipAll));
}

struct AnswerRow
{
    const char* button;
    uint32 answer;
};

class OverWinAnswerTest : public OverWinTest, public ::testing::WithParamInterface<AnswerRow>
{
};

TEST_P(OverWinAnswerTest, GivesTheButtonsAnswerAndHides)
{
    std::future<uint32> answer = Ask();
    Press(GetParam().button);
    EXPECT_EQ(answer.get(), GetParam().answer);
    EXPECT_FALSE(fWindow->IsShown());
    EXPECT_EQ(fWindow->GetRetType(), GetParam().answer);
}

INSTANTIATE_TEST_SUITE_P(Buttons, OverWinAnswerTest,
                         ::testing::Values(AnswerRow{"Overwrite", 1000},
                                           AnswerRow{"OverwriteAll", 1001},
                                           AnswerRow{"OverwriteOlder", 1002},
                                           AnswerRow{"Skip", 1003}, AnswerRow{"SkipAll", 1004},
                                           AnswerRow{"Cancel", 1005}),
                         [](const auto& tested) { return std::string(tested.param.button); });

TEST_F(OverWinTest, ANewQuestionForgetsTheLastAnswer)
{
    std::future<uint32> first = Ask();
    Press("Skip");
    EXPECT_EQ(first.get(), uint32(kAnswerSkip));
    std::future<uint32> second = Ask();
    EXPECT_EQ(fWindow->GetRetType(), uint32(kAnswerNone));
    Press("Overwrite");
    EXPECT_EQ(second.get(), uint32(kAnswerOverwrite));
}

TEST_F(OverWinTest, EnterPressesTheButtonWithTheFocus)
{
    std::future<uint32> answer = Ask();
    ASSERT_TRUE(kits::testing::WaitForFocus(fWindow));
    ASSERT_TRUE(kits::testing::WaitUntilKeysAnswer(fWindow));
    kits::testing::TypeKey(B_ENTER);
    EXPECT_EQ(answer.get(), uint32(kAnswerOverwrite));
}

TEST_F(OverWinTest, IgnoresAnswersWhileItIsNotShown)
{
    std::future<uint32> answer = Ask();
    Press("Skip");
    answer.get();
    fWindow->PostMessage(uint32(kAnswerOverwriteAll));
    fWindow->PostMessage(kAnswerForQuit);
    ASSERT_TRUE(kits::testing::Sync(fWindow));
    EXPECT_EQ(fWindow->GetRetType(), uint32(kAnswerSkip));
}

TEST_F(OverWinTest, IgnoresAnAnswerToTheQuestionBefore)
{
    std::future<uint32> first = Ask();
    BMessage late(kAnswerOverwriteAll);
    late.AddInt32("question", 1);
    Press("Skip");
    first.get();
    std::future<uint32> second = Ask();
    fWindow->PostMessage(&late);
    ASSERT_TRUE(kits::testing::Sync(fWindow));
    EXPECT_TRUE(fWindow->IsShown());
    Press("Cancel");
    EXPECT_EQ(second.get(), uint32(kAnswerCancel));
}

TEST_F(OverWinTest, LivesUntilItsOperationEndsIt)
{
    const Operations::Running running{BMessenger(fWindow)};
    auto answer = Ask();
    // As the end of the program asks it, while the operation has yet to read the answer.
    Operations::BeginQuit();
    const BMessenger window(fWindow);
    BMessage request(B_QUIT_REQUESTED);
    ASSERT_EQ(window.SendMessage(&request), B_OK);
    EXPECT_EQ(answer.get(), uint32(kAnswerCancel));

    ASSERT_TRUE(kits::testing::Sync(fWindow));
    EXPECT_TRUE(window.IsValid());
    EXPECT_EQ(fWindow->GetRetType(), uint32(kAnswerCancel));
}

TEST_F(OverWinTest, QuittingAnswersTheOpenQuestion)
{
    const Operations::Running running{BMessenger(fWindow)};
    std::future<uint32> answer = Ask();
    Operations::BeginQuit();
    EXPECT_EQ(answer.get(), uint32(kAnswerCancel));
}

TEST_F(OverWinTest, QuittingAnswersQuestionsThatComeLater)
{
    Operations::BeginQuit();
    std::future<uint32> answer = Ask();
    EXPECT_EQ(answer.get(), uint32(kAnswerCancel));
}

TEST_F(OverWinTest, WithoutAThreadTheAnswerIsCancel)
{
    auto* question = new OverWin(BRect(0, 0, 100, 100), "No thread", nullptr);
    {
        const NoThreads none;
        question->DoDisplay();
    }

    question->WaitForAnswer();

    EXPECT_EQ(question->GetRetType(), uint32(kAnswerCancel));
    EXPECT_FALSE(question->CanAsk());
    EXPECT_TRUE(kits::testing::WaitForNoWindow("No thread"));
    EXPECT_TRUE(question->Lock());
    question->Quit();
}

} // namespace norvane
