#include "ApplicationEnvironment.h"
#include "LoadedAddOn.h"
#include "TempTree.h"

#include <Autolock.h>
#include <Button.h>
#include <Entry.h>
#include <InterfaceDefs.h>
#include <ListView.h>
#include <StringView.h>
#include <Window.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using kits::testing::FindView;
using kits::testing::TypeKey;
using kits::testing::TypeText;
using kits::testing::WaitFor;

class RenameWindowTest : public ::testing::Test
{
protected:
    void TearDown() override
    {
        BWindow* window = kits::testing::CountShown("RenameMany") > 0 ? fWindow : nullptr;
        if (window != nullptr && window->Lock()) {
            window->Quit();
        }
    }

    void Open(const std::vector<std::string>& names)
    {
        std::vector<entry_ref> refs;
        for (const std::string& name : names) {
            entry_ref ref;
            ASSERT_EQ(get_ref_for_path(fTree.Path(name).c_str(), &ref), B_OK);
            refs.push_back(ref);
        }
        static const LoadedAddOn addOn(RENAME_MANY);
        addOn.Call(refs);
        fWindow = kits::testing::WaitForWindow("RenameMany");
        ASSERT_NE(fWindow, nullptr);
        ASSERT_TRUE(kits::testing::WaitForFocus(fWindow));
        ASSERT_TRUE(kits::testing::WaitUntilAnswers(fWindow));
        ASSERT_TRUE(WaitForSummary("No name changes"));
    }

    std::string Summary()
    {
        auto* line = dynamic_cast<BStringView*>(FindView(fWindow, "Summary"));
        const BAutolock lock(fWindow);
        return line != nullptr && lock.IsLocked() ? line->Text() : "(none)";
    }
    bool WaitForSummary(const std::string& text)
    {
        return WaitFor([&] { return Summary() == text; }) || (ADD_FAILURE() << Summary(), false);
    }
    /// What assistive programs say of a row.
    std::string RowText(int32 row)
    {
        auto* list = dynamic_cast<BListView*>(FindView(fWindow, "Names"));
        const BAutolock lock(fWindow);
        return lock.IsLocked() && list->ItemAt(row) != nullptr ? list->ItemAt(row)->SpokenText()
                                                               : "(none)";
    }
    bool WaitForRow(int32 row, const std::string& text)
    {
        return WaitFor([&] { return RowText(row) == text; }) ||
               (ADD_FAILURE() << RowText(row), false);
    }
    bool IsEnabled(const char* name)
    {
        auto* button = dynamic_cast<BButton*>(FindView(fWindow, name));
        const BAutolock lock(fWindow);
        return button != nullptr && lock.IsLocked() && button->IsEnabled() && !button->IsHidden();
    }
    /// Types into the field that has the focus, in place of all that is in it.
    void Replace(const char* text)
    {
        TypeKey('a', B_COMMAND_KEY);
        TypeText(text);
    }
    void Write(const std::vector<std::string>& names)
    {
        for (const std::string& name : names) {
            fTree.Write(name, name);
        }
    }

    TempTree fTree;
    BWindow* fWindow = nullptr;
};

} // namespace

TEST_F(RenameWindowTest, RenamesByTheKeyboardAlone)
{
    Write({"x.jpg", "y.jpg", "z"});
    Open({"x.jpg", "y.jpg", "z"});

    Replace("Trip [C][E]");

    ASSERT_TRUE(WaitForSummary("3 of 3 names change"));
    ASSERT_TRUE(WaitForRow(1, "y.jpg, Trip 2.jpg"));
    TypeKey(B_ENTER);
    ASSERT_TRUE(WaitForSummary("3 entries have their new names"));
    EXPECT_EQ(fTree.List(), "Trip 1.jpg\nTrip 2.jpg\nTrip 3\n");
    EXPECT_EQ(fTree.Read("Trip 2.jpg"), "y.jpg");
    TypeKey(B_ESCAPE);
    EXPECT_TRUE(kits::testing::WaitForNoWindow("RenameMany"));
}

TEST_F(RenameWindowTest, MarksWhatCannotBe)
{
    Write({"a", "b", "taken"});
    Open({"a", "b"});

    Replace("taken");

    ASSERT_TRUE(WaitForSummary("2 names cannot be used"));
    ASSERT_TRUE(WaitForRow(0, "a, taken, twice"));
    EXPECT_FALSE(IsEnabled("Rename"));
    TypeKey(B_ENTER);
    Replace("[N]!");
    ASSERT_TRUE(WaitForSummary("2 of 2 names change"));
    EXPECT_TRUE(IsEnabled("Rename"));
    EXPECT_EQ(fTree.List(), "a\nb\ntaken\n");
}

TEST_F(RenameWindowTest, GoesToTheNextProblem)
{
    Write({"a", "b", "c", "b!"});
    Open({"a", "b", "c"});
    Replace("[N]!");
    ASSERT_TRUE(WaitForSummary("1 name cannot be used"));
    auto* list = dynamic_cast<BListView*>(FindView(fWindow, "Names"));

    kits::testing::Click(FindView(fWindow, "Next"));

    EXPECT_TRUE(WaitFor([&] {
        const BAutolock lock(fWindow);
        return list->CurrentSelection() == 1;
    }));
}

TEST_F(RenameWindowTest, OffersToTakeItBack)
{
    Write({"a", "b"});
    Open({"a", "b"});
    Replace("[C]");
    ASSERT_TRUE(WaitForSummary("2 of 2 names change"));
    TypeKey(B_ENTER);
    ASSERT_TRUE(WaitForSummary("2 entries have their new names"));
    ASSERT_TRUE(IsEnabled("Undo"));

    kits::testing::Click(FindView(fWindow, "Undo"));

    ASSERT_TRUE(WaitForSummary("2 of 2 names change"));
    EXPECT_EQ(fTree.List(), "a\nb\n");
}

TEST_F(RenameWindowTest, TellsWhyItCouldNotBeTakenBack)
{
    Write({"a", "b"});
    Open({"a", "b"});
    Replace("[C]");
    ASSERT_TRUE(WaitForSummary("2 of 2 names change"));
    TypeKey(B_ENTER);
    ASSERT_TRUE(WaitForSummary("2 entries have their new names"));
    fTree.Write("a", "another");

    kits::testing::Click(FindView(fWindow, "Undo"));

    std::string text;
    ASSERT_TRUE(kits::testing::AnswerAlert("OK", &text));
    EXPECT_EQ(text, "“1” cannot be called “a”: an entry of that name exists.\n\n"
                    "All names are the new ones again.");
    EXPECT_EQ(fTree.List(), "1\n2\na\n");
    EXPECT_TRUE(WaitFor([&] { return IsEnabled("Undo"); }));
}

TEST_F(RenameWindowTest, LooksAgainBeforeItRenames)
{
    Write({"a", "b"});
    Open({"a", "b"});
    Replace("[C]");
    ASSERT_TRUE(WaitForSummary("2 of 2 names change"));
    fTree.Write("1", "another");

    TypeKey(B_ENTER);

    ASSERT_TRUE(WaitForSummary("1 name cannot be used"));
    EXPECT_EQ(RowText(0), "a, 1, exists already");
    EXPECT_EQ(fTree.List(), "1\na\nb\n");
}

TEST_F(RenameWindowTest, TellsOfWhatIsGone)
{
    Write({"a", "b"});
    Open({"a", "b"});
    fTree.Remove("a");
    Replace("x[C]");
    ASSERT_TRUE(WaitForSummary("2 of 2 names change"));

    TypeKey(B_ENTER);

    ASSERT_TRUE(WaitForSummary("1 entry has its new name"));
    EXPECT_EQ(fTree.List(), "x2\n");
}

TEST_F(RenameWindowTest, SaysWhatIsNoNumber)
{
    Write({"a"});
    Open({"a"});
    TypeKey(B_TAB);
    Replace("x");

    ASSERT_TRUE(WaitForSummary("“Count from” is no number"));
    EXPECT_FALSE(IsEnabled("Rename"));
}

TEST_F(RenameWindowTest, KeepsBytesThatAreNoLetters)
{
    Write({"\xff\xfe", "line\nbreak"});
    Open({"\xff\xfe", "line\nbreak"});
    Replace("[N]x");
    ASSERT_TRUE(WaitForSummary("2 of 2 names change"));

    TypeKey(B_ENTER);

    ASSERT_TRUE(WaitForSummary("2 entries have their new names"));
    EXPECT_EQ(fTree.List(), "line\nbreakx\n\xff\xfex\n");
}
