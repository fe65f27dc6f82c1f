#include "NativeFixture.h"

#include <AppDefs.h>
#include <InterfaceDefs.h>

using namespace kits::testing;

namespace {

class NativeInputTest : public NativeFixture
{
protected:
    enum class Progress { kShown, kHidden };

    // A question of an operation: the window that shows the progress sends its keys on to A, and
    // may be hidden while the question is there.
    void TypeIntoQuestion(Progress progress)
    {
        ShowA();
        TestWindow question("question", BRect(120, 120, 219, 179));
        kits::ShowRequest request = OpenedBy(fA);
        request.takesKeys = false;
        request.takesFocus = false;
        fB.Show(request);
        if (progress == Progress::kHidden) {
            fB.Link().Hide();
        }
        fA.Looper().Occupy();
        TypeText("xyz");

        question.Show(OpenedBy(fB));
        TypeText("123");
        fA.Looper().Release();

        ASSERT_TRUE(question.Looper().WaitForCount(B_KEY_UP, 3));
        EXPECT_EQ(question.Looper().Typed(), "xyz123");
        EXPECT_TRUE(Sync(fA));
        EXPECT_EQ(fA.Looper().Typed(), "");
    }
};

int32 FieldOf(const BMessage& message, const char* name)
{
    return message.GetInt32(name, -1);
}

} // namespace

TEST_F(NativeInputTest, TellsTheWindowOfAKey)
{
    ShowA();

    TypeKey('a', B_COMMAND_KEY);

    ASSERT_TRUE(fA.Looper().WaitForCount(B_KEY_UP, 1));
    const BMessage key = fA.Looper().Messages(B_KEY_DOWN).front();
    EXPECT_EQ(fA.Looper().Typed(), "a");
    EXPECT_EQ(FieldOf(key, "window"), fA.Token());
    EXPECT_EQ(FieldOf(key, "key"), 0x3c);
    EXPECT_EQ(FieldOf(key, "raw_char"), 'a');
    EXPECT_EQ(FieldOf(key, "modifiers"), B_COMMAND_KEY | B_CONTROL_KEY);
    EXPECT_FALSE(key.HasInt32("be:key_repeat"));
    EXPECT_FALSE(key.HasBool("kits:early"));
    const char* shortcut = nullptr;
    ASSERT_EQ(key.FindString("kits:shortcut", &shortcut), B_OK);
    EXPECT_STREQ(shortcut, "A");
}

TEST_F(NativeInputTest, CountsTheRepeatsOfAHeldKey)
{
    ShowA();

    HoldKey(B_DOWN_ARROW, 2);

    ASSERT_TRUE(fA.Looper().WaitForCount(B_KEY_UP, 1));
    const std::vector<BMessage> keys = fA.Looper().Messages(B_KEY_DOWN);
    ASSERT_EQ(keys.size(), 3u);
    EXPECT_FALSE(keys[0].HasInt32("be:key_repeat"));
    EXPECT_EQ(FieldOf(keys[1], "be:key_repeat"), 1);
    EXPECT_EQ(FieldOf(keys[2], "be:key_repeat"), 2);
}

TEST_F(NativeInputTest, HandsKeysThatWaitToTheWindowThatOpens)
{
    ShowA();
    fA.Looper().Occupy();
    TypeText("xyz");

    fB.Show(OpenedBy(fA));
    TypeText("123");
    fA.Looper().Release();

    ASSERT_TRUE(fB.Looper().WaitForCount(B_KEY_UP, 3));
    EXPECT_EQ(fB.Looper().Typed(), "xyz123");
    EXPECT_TRUE(fB.Looper().Messages(B_KEY_DOWN).front().HasBool("kits:early"));
    EXPECT_EQ(FieldOf(fB.Looper().Messages(B_KEY_DOWN).front(), "window"), fB.Token());
    EXPECT_TRUE(Sync(fA));
    EXPECT_EQ(fA.Looper().Typed(), "");
}

TEST_F(NativeInputTest, LeavesRepeatsOfAKeyItTookWithTheOpener)
{
    ShowA();
    PressKey(B_ENTER);
    ASSERT_TRUE(fA.Looper().WaitForCount(B_KEY_DOWN, 1));
    fA.Looper().Occupy();
    PressKey(B_ENTER);
    TypeKey('x');

    fB.Show(OpenedBy(fA));
    PressKey(B_ENTER);
    ReleaseKey(B_ENTER);
    TypeKey('y');
    fA.Looper().Release();

    ASSERT_TRUE(fB.Looper().WaitForCount(B_KEY_DOWN, 2));
    EXPECT_EQ(fB.Looper().Typed(), "xy");
}

TEST_F(NativeInputTest, HandsKeysBehindProgressToItsQuestion)
{
    TypeIntoQuestion(Progress::kShown);
}

TEST_F(NativeInputTest, HandsKeysToAQuestionWhoseProgressIsHidden)
{
    TypeIntoQuestion(Progress::kHidden);
}

TEST_F(NativeInputTest, LeavesTheKeyboardWithAQuestionWhenTheActivationIsTakenLate)
{
    ShowA();
    TestWindow question("question", BRect(120, 120, 219, 179));
    kits::ShowRequest progress = OpenedBy(fA);
    progress.takesKeys = false;
    fB.Show(progress);
    fB.Link().Hide();
    question.Show(OpenedBy(fB));
    ASSERT_TRUE(question.WaitForActivation());

    fA.Link().Activate();
    SyncServer();
    TypeText("x");

    ASSERT_TRUE(question.Looper().WaitForCount(B_KEY_UP, 1));
    EXPECT_EQ(question.Looper().Typed(), "x");
}

TEST_F(NativeInputTest, CommitsTextAsKeys)
{
    ShowA();

    CommitText("é日");

    ASSERT_TRUE(fA.Looper().WaitForCount(B_KEY_DOWN, 2));
    EXPECT_EQ(fA.Looper().Typed(), "é日");
    EXPECT_EQ(FieldOf(fA.Looper().Messages(B_KEY_DOWN).front(), "raw_char"), 0xe9);
}

TEST_F(NativeInputTest, TellsWhereAClickIs)
{
    ShowA();

    ClickAt(BPoint(60, 80));

    ASSERT_TRUE(fA.Looper().WaitForCount(B_MOUSE_UP, 1));
    const BMessage press = fA.Looper().Messages(B_MOUSE_DOWN).front();
    BPoint where;
    BPoint onScreen;
    ASSERT_EQ(press.FindPoint("where", &where), B_OK);
    ASSERT_EQ(press.FindPoint("screen_where", &onScreen), B_OK);
    EXPECT_EQ(where, BPoint(10, 20));
    EXPECT_EQ(onScreen, BPoint(60, 80));
    EXPECT_EQ(FieldOf(press, "buttons"), int32{B_PRIMARY_MOUSE_BUTTON});
    EXPECT_EQ(FieldOf(press, "clicks"), 1);
    EXPECT_EQ(FieldOf(fA.Looper().Messages(B_MOUSE_UP).front(), "buttons"), 0);
}

TEST_F(NativeInputTest, CountsADoubleClickOnce)
{
    ShowA();

    ClickAt(BPoint(60, 80));
    ClickAt(BPoint(60, 80));

    ASSERT_TRUE(fA.Looper().WaitForCount(B_MOUSE_UP, 2));
    const std::vector<BMessage> presses = fA.Looper().Messages(B_MOUSE_DOWN);
    ASSERT_EQ(presses.size(), 2u);
    EXPECT_EQ(FieldOf(presses[1], "clicks"), 2);
}

TEST_F(NativeInputTest, KeepsOnlyTheNewestMoveThatWaits)
{
    ShowA();
    fA.Looper().Occupy();

    MoveMouseAt(BPoint(60, 80));
    MoveMouseAt(BPoint(61, 80));
    PressMouseAt(BPoint(61, 80));
    MoveMouseAt(BPoint(62, 80));
    MoveMouseAt(BPoint(63, 80));
    ReleaseMouseAt(BPoint(63, 80));
    fA.Looper().Release();

    ASSERT_TRUE(fA.Looper().WaitForCount(B_MOUSE_UP, 1));
    EXPECT_EQ(fA.Looper().Count(B_MOUSE_MOVED), 2u);
}

TEST_F(NativeInputTest, MakesTheReleaseThatAHiddenWindowMisses)
{
    ShowA();
    PressMouseAt(BPoint(60, 80));

    fA.Link().Hide();

    ASSERT_TRUE(fA.Looper().WaitForCount(B_MOUSE_UP, 1));
    EXPECT_EQ(FieldOf(fA.Looper().Messages(B_MOUSE_UP).front(), "button"),
              int32{B_PRIMARY_MOUSE_BUTTON});
    ReleaseMouseAt(BPoint(60, 80));
}

TEST_F(NativeInputTest, KeepsInputFromABlockedWindow)
{
    ShowA();
    fB.Show(ModalFor(fA));
    ASSERT_TRUE(fB.WaitForActivation());

    ClickAt(BPoint(60, 80));
    TypeKey('q');

    ASSERT_TRUE(fB.Looper().WaitForCount(B_KEY_UP, 1));
    EXPECT_TRUE(Sync(fA));
    EXPECT_EQ(fA.Looper().Count(B_MOUSE_DOWN), 0u);
    EXPECT_EQ(fA.Looper().Count(B_MOUSE_UP), 0u);
    EXPECT_EQ(fA.Looper().Typed(), "");
}

TEST_F(NativeInputTest, GivesTheCaptureAllMouseEvents)
{
    ShowA();
    TestWindow beside("beside", BRect(300, 100, 399, 199));
    beside.Show(OpenedBy(fA));
    fA.Link().SetMouseCapture(true);

    ClickAt(BPoint(310, 105));
    fA.Link().SetMouseCapture(false);
    ClickAt(BPoint(310, 105));

    ASSERT_TRUE(beside.Looper().WaitForCount(B_MOUSE_UP, 1));
    EXPECT_EQ(beside.Looper().Count(B_MOUSE_DOWN), 1u);
    ASSERT_TRUE(fA.Looper().WaitForCount(B_MOUSE_UP, 1));
    EXPECT_EQ(FieldOf(fA.Looper().Messages(B_MOUSE_DOWN).front(), "window"), beside.Token());
}
