#include "panes/EditControl.h"

#include "ApplicationEnvironment.h"

#include <Autolock.h>
#include <InterfaceDefs.h>
#include <Message.h>
#include <ScrollView.h>
#include <Window.h>

#include <gtest/gtest.h>

#include <mutex>
#include <string>
#include <vector>

namespace norvane {

namespace {

using kits::testing::TypeKey;
using kits::testing::TypeText;

constexpr uint32 kCommit = 513;
constexpr uint32 kCancel = 605;

/// Keeps what the field asks for.
class FieldWindow : public BWindow
{
public:
    FieldWindow() : BWindow(BRect(50, 50, 349, 149), "field", B_TITLED_WINDOW, 0) {}

    void MessageReceived(BMessage* message) override
    {
        if (message->what == kCommit || message->what == kCancel) {
            std::lock_guard<std::mutex> lock(fMutex);
            fAsked.push_back(*message);
        } else {
            BWindow::MessageReceived(message);
        }
    }
    std::vector<BMessage> Asked()
    {
        kits::testing::Sync(this);
        kits::testing::Sync(this); // what was sent while handling those before
        std::lock_guard<std::mutex> lock(fMutex);
        return fAsked;
    }

private:
    std::mutex fMutex;
    std::vector<BMessage> fAsked;
};

class EditControlTest : public ::testing::Test
{
protected:
    void Show(const char* text)
    {
        fWindow = new FieldWindow;
        fOther = new BView(BRect(0, 60, 50, 90), "other", B_FOLLOW_NONE, B_NAVIGABLE);
        fWindow->AddChild(fOther);
        fField = new EditControl(BRect(10, 10, 150, 30), 7, text, fWindow, kCommit, kCancel);
        fWindow->AddChild(new BScrollView("renamecontainer", fField, B_FOLLOW_LEFT | B_FOLLOW_TOP,
                                          0, false, false, B_PLAIN_BORDER));
        fField->MakeFocus(true);
        fWindow->Show();
        ASSERT_TRUE(kits::testing::WaitForFocus(fWindow));
    }
    void TearDown() override
    {
        if (fWindow != nullptr && fWindow->Lock()) {
            fWindow->Quit();
        }
    }
    std::string Text()
    {
        kits::testing::Sync(fWindow);
        const BAutolock lock(fWindow);
        return fField->Text();
    }

    FieldWindow* fWindow = nullptr; // deletes itself
    EditControl* fField = nullptr;
    BView* fOther = nullptr;
};

TEST_F(EditControlTest, TypingReplacesTheName)
{
    Show("old name");

    TypeText("new");

    EXPECT_EQ(Text(), "new");
}

TEST_F(EditControlTest, EnterCommitsWithTheRow)
{
    Show("name");

    TypeText("x");
    TypeKey(B_ENTER);

    const std::vector<BMessage> asked = fWindow->Asked();
    ASSERT_EQ(asked.size(), 1u);
    EXPECT_EQ(asked[0].what, kCommit);
    EXPECT_EQ(asked[0].GetInt32("pos", -1), 7);
    EXPECT_EQ(Text(), "x");
}

TEST_F(EditControlTest, EscapeCancels)
{
    Show("name");

    TypeKey(B_ESCAPE);

    const std::vector<BMessage> asked = fWindow->Asked();
    ASSERT_EQ(asked.size(), 1u);
    EXPECT_EQ(asked[0].what, kCancel);
}

TEST_F(EditControlTest, HeldEnterCommitsOnce)
{
    Show("name");

    kits::testing::HoldKey(B_ENTER, 5);

    EXPECT_EQ(fWindow->Asked().size(), 1u);
}

TEST_F(EditControlTest, LosingTheFocusCancels)
{
    Show("name");
    TypeText("x");

    fWindow->Lock();
    fOther->MakeFocus(true);
    fWindow->Unlock();

    const std::vector<BMessage> asked = fWindow->Asked();
    ASSERT_EQ(asked.size(), 1u);
    EXPECT_EQ(asked[0].what, kCancel);
}

TEST_F(EditControlTest, CommittedFieldThatGoesAsksNothingMore)
{
    Show("name");
    TypeKey(B_ENTER);
    EXPECT_EQ(fWindow->Asked().size(), 1u);

    fWindow->Lock();
    fOther->MakeFocus(true);
    fWindow->Unlock();

    EXPECT_EQ(fWindow->Asked().size(), 1u);
}

TEST_F(EditControlTest, UntouchedBytesSurvive)
{
    Show("caf\xe9\nname"); // not UTF-8, and with a line break

    TypeKey(B_END);
    TypeText("!");
    TypeKey(B_HOME);
    TypeText("the ");

    EXPECT_EQ(Text(), "the caf\xe9\nname!");
}

TEST_F(EditControlTest, TextIsInTheMiddleOfItsFrame)
{
    Show("name");
    const BAutolock lock(fWindow);

    EXPECT_EQ(fField->PointAt(0), BPoint(2, 3)); // 21 units high, a line of 15
    EXPECT_EQ(fField->Position(), 7);
}

} // namespace

} // namespace norvane
