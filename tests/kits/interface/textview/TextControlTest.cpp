#include "ControlWindow.h"

#include <Button.h>
#include <Clipboard.h>
#include <TextControl.h>
#include <TextView.h>
#include <TypeConstants.h>

#include <string>

namespace {

using namespace kits::testing;

class TextControlTest : public ControlTest
{
protected:
    BTextControl* AddField(const char* label = nullptr, uint32 message = 'test', float top = 20)
    {
        return Add(new BTextControl(BRect(20, top, 219, top + 22), "field", label, "text",
                                    message != 0 ? new BMessage(message) : nullptr));
    }
    std::string Text(BTextControl* field)
    {
        return Locked([=] { return std::string(field->Text()); });
    }
    bool HasFocus(BTextControl* field)
    {
        return Locked([=] { return field->TextView()->IsFocus(); });
    }
};

TEST_F(TextControlTest, FocusSelectsAllSoThatTypingReplaces)
{
    BTextControl* field = AddField();
    Show();
    Focus(field);

    TypeText("new");

    EXPECT_EQ(Text(field), "new");
}

TEST_F(TextControlTest, EnterSendsItsMessage)
{
    BTextControl* field = AddField();
    Show();
    Focus(field);

    TypeText("a");
    TypeKey(B_ENTER);

    ASSERT_EQ(fWindow->Messages().size(), 1u);
    EXPECT_EQ(Text(field), "a");
    TypeKey(B_TAB); // nothing was edited since
    EXPECT_EQ(fWindow->Messages().size(), 1u);
}

TEST_F(TextControlTest, HeldEnterSendsOnce)
{
    BTextControl* field = AddField();
    Show();
    Focus(field);

    HoldKey(B_ENTER, 5);

    EXPECT_EQ(fWindow->Messages().size(), 1u);
}

TEST_F(TextControlTest, LeavingAnEditedFieldSendsItsMessage)
{
    BTextControl* first = AddField();
    BTextControl* second = AddField(nullptr, 'tesu', 60);
    Show();
    Focus(first);

    TypeKey(B_TAB);
    EXPECT_TRUE(HasFocus(second));
    EXPECT_TRUE(fWindow->Messages().empty());

    TypeText("x");
    TypeKey(B_TAB);
    EXPECT_TRUE(HasFocus(first));
    ASSERT_EQ(fWindow->Messages().size(), 1u);
    EXPECT_EQ(fWindow->Messages()[0].what, uint32('tesu'));
}

TEST_F(TextControlTest, EachChangeAPersonMakesIsToldOnce)
{
    BTextControl* field = AddField();
    field->SetModificationMessage(new BMessage('tesm'));
    Show();
    Focus(field);

    TypeText("a"); // over the selection
    TypeText("b");
    TypeKey(B_BACKSPACE);
    TypeKey(B_LEFT_ARROW);
    TypeKey('z', B_COMMAND_KEY);
    EXPECT_EQ(fWindow->Messages().size(), 4u);

    Locked([=] {
        field->SetText("set");
        return 0;
    });
    EXPECT_EQ(fWindow->Messages().size(), 4u);
}

TEST_F(TextControlTest, DefaultButtonAnswersEnter)
{
    BTextControl* field = AddField();
    Add(new BButton(BRect(20, 100, 100, 124), "ok", "OK", new BMessage('teso')))->MakeDefault(true);
    Show();
    Focus(field);

    TypeText("a");
    TypeKey(B_ENTER);

    ASSERT_EQ(fWindow->Messages().size(), 1u);
    EXPECT_EQ(fWindow->Messages()[0].what, uint32('teso'));
    EXPECT_EQ(Text(field), "a");
}

TEST_F(TextControlTest, EscapePressesCancel)
{
    BTextControl* field = AddField();
    Add(new BButton(BRect(20, 100, 100, 124), "no", "Cancel", new BMessage('tesn')));
    Show();
    Focus(field);

    TypeKey(B_ESCAPE);

    ASSERT_EQ(fWindow->Messages().size(), 1u);
    EXPECT_EQ(fWindow->Messages()[0].what, uint32('tesn'));
}

TEST_F(TextControlTest, DisabledFieldTakesNothing)
{
    BTextControl* field = AddField();
    BTextControl* other = AddField(nullptr, 0, 60);
    Show();
    Focus(field);
    Locked([=] {
        field->SetEnabled(false);
        return 0;
    });
    EXPECT_FALSE(HasFocus(field));

    Click(field);
    TypeText("x");
    EXPECT_FALSE(HasFocus(field));
    EXPECT_EQ(Text(field), "text");

    Focus(other);
    TypeKey(B_TAB);
    EXPECT_TRUE(HasFocus(other));

    Locked([=] {
        field->SetEnabled(true);
        return 0;
    });
    TypeKey(B_TAB);
    EXPECT_TRUE(HasFocus(field));
}

TEST_F(TextControlTest, ClickOnTheLabelGivesTheFocus)
{
    BTextControl* field = AddField("Label");
    Show();

    Click(field, BPoint(5, 10));

    EXPECT_TRUE(HasFocus(field));
}

TEST_F(TextControlTest, LabelTakesHalfUntilTheDividerIsMoved)
{
    BTextControl* field = AddField("Label");
    EXPECT_EQ(field->Divider(), 100);
    EXPECT_EQ(field->TextView()->Frame(), BRect(102, 2, 197, 20));

    field->SetDivider(40);
    EXPECT_EQ(field->TextView()->Frame().left, 42);
    field->SetDivider(9999);
    EXPECT_EQ(field->Divider(), 199);
}

TEST_F(TextControlTest, WithoutALabelTheFieldTakesAll)
{
    BTextControl* field = AddField();
    EXPECT_EQ(field->TextView()->Frame(), BRect(2, 2, 197, 20));

    field->ResizeTo(99, 30);
    Show();
    EXPECT_EQ(Locked([=] { return field->TextView()->Frame(); }), BRect(2, 2, 97, 28));
}

TEST_F(TextControlTest, LowFrameGrowsAroundItsMiddle)
{
    auto* field = Add(new BTextControl(BRect(20, 20, 119, 28), "low", nullptr, "text", nullptr));
    auto* text = new BTextView(BRect(20, 60, 119, 68), "low text", BRect(2, 0, 97, 8),
                               B_FOLLOW_LEFT | B_FOLLOW_TOP);
    text->SetSingleLine(true);
    Add(text);

    EXPECT_EQ(field->Frame(), BRect(20, 15, 119, 33)); // a line of 15 and the field's frame
    EXPECT_EQ(text->Frame(), BRect(20, 57, 119, 71));
}

TEST_F(TextControlTest, PreferredSizeHoldsLabelAndText)
{
    BTextControl* field = AddField("Label");
    field->SetDivider(0);
    field->SetText("a rather long text that needs its room");
    field->ResizeToPreferred();

    const float text = BFont().StringWidth(field->Text());
    EXPECT_GE(field->Bounds().Width(), BFont().StringWidth("Label") + text);
    EXPECT_EQ(field->Bounds().Height(), 21);
}

TEST_F(TextControlTest, FocusIsSeen)
{
    BTextControl* field = AddField();
    Show();
    const rgb_color blue = {0, 0, 229, 255};
    // How many units of the frame are blue.
    const auto count = [&] {
        const Picture picture = TakePicture(fWindow);
        const int32 scale = static_cast<int32>(picture.scale);
        const int32 pixels = picture.Count(blue, 20 * scale, 20 * scale, 220 * scale, 43 * scale);
        return pixels / (scale * scale);
    };
    EXPECT_EQ(count(), 0);

    Focus(field);

    EXPECT_EQ(count(), 200 * 23 - 196 * 19);
}

TEST_F(TextControlTest, PastedPathLosesItsLineEnd)
{
    BTextControl* field = AddField();
    Show();
    Focus(field);
    be_clipboard->Lock();
    be_clipboard->Clear();
    be_clipboard->Data()->AddData("text/plain", B_MIME_TYPE, "/tmp/a\r\n", 8);
    be_clipboard->Commit();
    be_clipboard->Unlock();

    TypeKey('v', B_COMMAND_KEY);

    EXPECT_EQ(Text(field), "/tmp/a");
}

} // namespace
