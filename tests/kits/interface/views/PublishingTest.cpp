#include "WindowFixture.h"

#include <Message.h>
#include <ViewDescription.h>

#include <server/NativeWindow.h>
#include <server/Published.h>
#include <server/Surface.h>
#include <testing/Native.h>

using namespace kits::testing;

namespace {

/// A text field as input methods see one.
class FieldView : public NotingView
{
public:
    using NotingView::NotingView;
    bool WantsKey(const BMessage&) const override { return true; }
    bool DescribeInput(BInputDescription* state) const override
    {
        state->isTextField = true;
        state->caret = caret;
        state->surroundingText = "some text";
        state->caretOffset = 4;
        return true;
    }
    BRect caret = BRect(5, 5, 5, 19);
};

class PublishingTest : public WindowFixture
{
protected:
    kits::InputMethodState Published()
    {
        Sync(fWindow);
        SyncServer();
        kits::InputMethodState state;
        OnServer([&] {
            auto* surface = static_cast<kits::Surface*>(NativeOf(fWindow));
            state = surface->Owner().GetPublished().inputMethod;
        });
        return state;
    }
};

TEST_F(PublishingTest, CaretOfTheFocusedFieldFollows)
{
    auto* field = new FieldView(BRect(0, 0, 99, 24), "field");
    fWindow->AddChild(field);
    Show();
    EXPECT_FALSE(Published().isTextField);

    Locked([&] { field->MakeFocus(true); });
    EXPECT_TRUE(WaitFor([this] { return Published().isTextField; }));
    EXPECT_EQ(Published().surroundingText, "some text");

    Locked([&] {
        field->caret = BRect(30, 5, 30, 19);
        field->Invalidate();
    });
    EXPECT_TRUE(WaitFor([this] { return Published().caret == BRect(30, 5, 30, 19); }));

    Locked([&] { field->MakeFocus(false); });
    EXPECT_TRUE(WaitFor([this] { return !Published().isTextField; }));
    EXPECT_TRUE(Published().isEnabled);
}

TEST_F(PublishingTest, FieldsKeysComeBeforeShortcuts)
{
    auto* field = new FieldView(BRect(0, 0, 99, 24), "field");
    field->notes = &fNotes;
    fWindow->AddChild(field);
    fWindow->AddShortcut('A', 0, new BMessage('none'));
    Show();
    Locked([&] { field->MakeFocus(true); });
    TakeNotes();

    TypeKey('a', B_COMMAND_KEY);

    SyncServer();
    Sync(fWindow);
    EXPECT_EQ(TakeNotes(), (std::vector<std::string>{"field key a"}));
}

} // namespace
