#include "PaneWindowFixture.h"

#include <InterfaceDefs.h>
#include <ScrollBar.h>
#include <testing/Driver.h>

namespace {

using namespace norvane;
using kits::testing::Picture;

constexpr rgb_color kWhite = {255, 255, 255, 255};

class EmptyNoteTest : public PaneWindowFixture
{
protected:
    std::string Note()
    {
        return Locked([this] { return fList->NoteShown(); });
    }

    /// Around all that is drawn in the list below its first row, in pixels of the picture.
    BRect Drawn(const Picture& picture)
    {
        BRect list;
        Locked([&] {
            list = fList->ConvertToScreen(fList->Bounds());
            list.OffsetBy(-fWindow->Frame().left, -fWindow->Frame().top);
            list.top += fList->CountItems() > 0 ? fList->ItemFrame(0).bottom + 1 : 0;
            return 0;
        });
        const auto pixel = [&](float units) {
            return static_cast<int32>(units * picture.scale);
        };
        BRect drawn;
        for (int32 y = pixel(list.top); y < pixel(list.bottom); y++) {
            for (int32 x = pixel(list.left); x < pixel(list.right); x++) {
                if (!(picture.At(x, y) == kWhite)) {
                    const auto left = static_cast<float>(x);
                    const auto top = static_cast<float>(y);
                    const BRect dot(left, top, left, top);
                    drawn = drawn.IsValid() ? drawn | dot : dot;
                }
            }
        }
        return drawn;
    }

    Picture Shown()
    {
        EXPECT_TRUE(kits::testing::Sync(fWindow));
        return kits::testing::TakePicture(fWindow);
    }
};

TEST_F(EmptyNoteTest, AnEmptyFolderSaysSoUntilSomethingComes)
{
    Open();

    EXPECT_EQ(Note(), "The folder is empty.");
    EXPECT_TRUE(Drawn(Shown()).IsValid());

    fTree.Write("shown/new", "");
    EXPECT_TRUE(Becomes([this] { return Note(); }, ""));
    fTree.Remove("shown/new");
    EXPECT_TRUE(Becomes([this] { return Note(); }, "The folder is empty."));
}

TEST_F(EmptyNoteTest, AFolderWithRowsSaysNothing)
{
    fTree.Write("shown/a", "");
    Open();

    EXPECT_EQ(Note(), "");
}

TEST_F(EmptyNoteTest, NothingIsLeftOfItUnderRows)
{
    Open();
    EXPECT_TRUE(Drawn(Shown()).IsValid());
    for (int number = 0; number < 3; number++) {
        fTree.Write("shown/" + std::to_string(number), "");
    }
    ASSERT_TRUE(Becomes([this] { return Names(); }, ".. 0 1 2 "));

    const Picture picture = Shown();
    const float rows = Locked([this] { return fList->ItemFrame(3).bottom; });
    EXPECT_LE(Drawn(picture).bottom, (rows + Locked([this] {
                                          return fList->ConvertToScreen(BPoint(0, 0)).y -
                                                 fWindow->Frame().top;
                                      }) +
                                      1) *
                                         picture.scale);
}

TEST_F(EmptyNoteTest, ItLiesInTheMiddleOfWhatIsSeen)
{
    Open();
    const auto middle = [this] {
        const Picture picture = Shown();
        const BRect drawn = Drawn(picture);
        const BRect list = Locked([this] { return fList->ConvertToScreen(fList->Bounds()); });
        const float left = list.left - fWindow->Frame().left;
        return (drawn.left + drawn.right) / 2 / picture.scale - left - list.Width() / 2;
    };

    EXPECT_NEAR(middle(), 0, 3);
    Locked([this] {
        fPane->ResizeTo(240, 300);
        return 0;
    });
    EXPECT_NEAR(middle(), 0, 3);
    Locked([this] {
        fList->ScrollTo(BPoint(70, 0)); // the columns are wider than this
        return 0;
    });
    EXPECT_NEAR(middle(), 0, 3);
}

TEST_F(EmptyNoteTest, ItIsWrappedAndWhereItHasNoRoomLeftOutWhole)
{
    Open();
    const BRect wide = Drawn(Shown());
    Locked([this] {
        fPane->ResizeTo(110, 300);
        return 0;
    });
    const BRect narrow = Drawn(Shown());
    EXPECT_GT(narrow.Height(), wide.Height() * 1.8F);
    EXPECT_LT(narrow.Width(), wide.Width());

    Locked([this] {
        fPane->ResizeTo(110, 115);
        return 0;
    });
    EXPECT_FALSE(Drawn(Shown()).IsValid());
}

TEST_F(EmptyNoteTest, AFilterSaysWhatNothingHolds)
{
    fTree.Write("shown/apple", "");
    Open();
    Type('/');
    EXPECT_EQ(Note(), "");
    Type('x');
    EXPECT_EQ(Note(), "No name here holds \"x\".");
    Type('y');
    EXPECT_EQ(Note(), "No name here holds \"xy\".");
    Type(B_ESCAPE);
    EXPECT_EQ(Note(), "");
}

TEST_F(EmptyNoteTest, AnEmptyFolderIsEmptyUnderAFilterTooUntilSomethingIsTyped)
{
    Open();
    Type('/');
    EXPECT_EQ(Note(), "The folder is empty.");
    Type('x');
    Type(B_BACKSPACE);
    EXPECT_EQ(Note(), "The folder is empty.");
}

TEST_F(EmptyNoteTest, HiddenNamesAreTold)
{
    fTree.Write("shown/.a", "");
    Open();
    EXPECT_EQ(Note(), "");
    Preferences preferences = Locked([this] { return fList->CurrentPreferences(); });
    preferences.hidesDotNames = true;
    Locked([&] {
        fList->Apply(preferences);
        return 0;
    });
    EXPECT_EQ(Note(), "All names here begin with a dot, and are hidden.");
    Locked([&] {
        fList->SetPath(fTree.Path("data").c_str());
        return 0;
    });
    fTree.MakeFolder("shown2");
    Locked([&] {
        fList->SetPath(fTree.Path("shown2").c_str());
        return 0;
    });
    EXPECT_EQ(Note(), "The folder is empty.");
}

TEST_F(EmptyNoteTest, AFolderThatGoesSaysSo)
{
    fTree.MakeFolder("shown/inner");
    Open("shown/inner");
    fTree.Remove("shown/inner");
    EXPECT_TRUE(Becomes([this] { return Note(); }, "This folder was removed."));
    fTree.MakeFolder("shown/inner");
    EXPECT_TRUE(Becomes([this] { return Note(); }, "The folder is empty."));
}

TEST_F(EmptyNoteTest, AQueryWithoutHitsSaysSo)
{
    Open();
    Locked([this] {
        BMessage results('hits');
        results.AddString("QueryString", "name=\"x\"");
        fList->Populate(&results);
        return 0;
    });
    EXPECT_EQ(Note(), "Nothing was found.");
}

} // namespace
