#include "WindowFixture.h"

#include <Message.h>
#include <ViewDescription.h>

#include <server/NativeWindow.h>
#include <server/Published.h>
#include <server/Surface.h>
#include <testing/Native.h>

#include <QAccessible>

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
    // How many views the window has said it has; 0 while nobody listens.
    int Children()
    {
        int count = 0;
        OnServer([&] {
            auto* surface = static_cast<kits::Surface*>(NativeOf(fWindow));
            const auto& root = surface->Owner().GetPublished().root;
            count = root == nullptr ? 0 : static_cast<int>(root->children.size());
        });
        return count;
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

/// Says that assistive programs listen, as the desktop does, until it goes.
class Listener
{
public:
    Listener() { Listen(true); }
    ~Listener() { Listen(false); }
    Listener(const Listener&) = delete;
    Listener& operator=(const Listener&) = delete;

private:
    static void Listen(bool isOn)
    {
        OnServer([isOn] { QAccessible::setActive(isOn); });
    }
};

TEST_F(PublishingTest, WhoBeginsToListenIsToldAtOnce)
{
    Add(BRect(0, 0, 99, 24), "view");
    Show();
    EXPECT_FALSE(Published().isTextField); // it has said what it had to say
    EXPECT_EQ(Children(), 0);

    {
        const Listener listener; // nothing is painted from here on

        EXPECT_TRUE(WaitFor([this] { return Children() == 1; }));
    }
    EXPECT_TRUE(WaitFor([this] { return Children() == 0; }));
}

} // namespace
