#include "app/NorvaneWindow.h"

#include "AppFixture.h"

#include <Entry.h>
#include <InterfaceDefs.h>
#include <Message.h>

namespace norvane {

/// What the main window shows properties of.
class WindowPropertiesTest : public AppFixture
{
protected:
    void OpenTwo()
    {
        fTree.Write("one/a", "1");
        fTree.Write("one/b", "2");
        WritePanes({"one", "two"});
        Open();
    }
    /// Whether such a window comes; closes it.
    static bool Shows(const char* title)
    {
        BWindow* window = kits::testing::WaitForWindow(title);
        if (window == nullptr) {
            return false;
        }
        kits::testing::CloseWindow(window);
        return kits::testing::WaitForNoWindow(title);
    }
};

TEST_F(WindowPropertiesTest, OfTheMessagesOwnEntries)
{
    OpenTwo();
    entry_ref ref;
    ASSERT_EQ(get_ref_for_path(fTree.Path("one/b").c_str(), &ref), B_OK);
    BMessage command(kShowProperties);
    command.AddRef("refs", &ref);
    fWindow->PostMessage(&command);

    EXPECT_TRUE(Shows("Properties of b"));
}

TEST_F(WindowPropertiesTest, OfTheFolderShownWhenNothingIsChosen)
{
    OpenTwo();
    Send(kShowProperties);

    EXPECT_TRUE(Shows("Properties of one"));
}

TEST_F(WindowPropertiesTest, OfWhatIsMarked)
{
    OpenTwo();
    kits::testing::TypeKey('+');
    kits::testing::TypeKey(B_ENTER, B_OPTION_KEY);

    EXPECT_TRUE(Shows("Properties of 2 entries"));
}

} // namespace norvane
