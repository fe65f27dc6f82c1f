#include "properties/PropertiesWindow.h"

#include "AlertText.h"
#include "ApplicationEnvironment.h"
#include "TempTree.h"
#include "properties/FactsView.h"
#include "properties/ModeBox.h"
#include "properties/PropertiesPage.h"
#include "testing/Driver.h"

#include <Autolock.h>
#include <Button.h>
#include <InterfaceDefs.h>
#include <Screen.h>
#include <ScrollBar.h>
#include <ScrollView.h>
#include <StringView.h>
#include <ViewDescription.h>

#include <gtest/gtest.h>
#include <unistd.h>

namespace {

using namespace norvane;
using kits::testing::Click;
using kits::testing::TypeKey;
using kits::testing::WaitFor;

class PropertiesWindowTest : public testing::Test
{
protected:
    void TearDown() override
    {
        if (fWindow != nullptr && fWindow->Lock()) { // fails for one that is gone
            fWindow->Quit();
        }
    }

    void Write(const std::string& name, mode_t mode)
    {
        fTree.Write(name, "x");
        ASSERT_EQ(chmod(fTree.Path(name).c_str(), mode), 0);
    }
    mode_t Mode(const std::string& name) const
    {
        struct stat record = {};
        EXPECT_EQ(lstat(fTree.Path(name).c_str(), &record), 0);
        return record.st_mode & 07777;
    }
    bool BecomesMode(const std::string& name, mode_t mode) const
    {
        return WaitFor([=, this] { return Mode(name) == mode; });
    }

    template<typename Ask>
    auto Locked(Ask ask)
    {
        kits::testing::Sync(fWindow);
        const BAutolock lock(fWindow);
        return ask();
    }
    void Open(const std::vector<std::string>& names, const std::string& title)
    {
        PropertiesOrder order;
        for (const std::string& name : names) {
            entry_ref ref;
            ASSERT_EQ(get_ref_for_path(fTree.Path(name).c_str(), &ref), B_OK);
            order.entries.push_back(ref);
        }
        fTitle = "Properties of " + title;
        fWindow = new PropertiesWindow(BRect(100, 100, 899, 699), order);
        fWindow->Show();
        ASSERT_TRUE(kits::testing::WaitForFocus(fWindow));
        ASSERT_TRUE(
            WaitFor([this] { return Locked([this] { return fWindow->Title() == fTitle; }); }));
    }
    template<typename View>
    View* Find(const char* name)
    {
        return Locked([=, this] { return dynamic_cast<View*>(fWindow->FindView(name)); });
    }
    ModeBox::State State(const char* box)
    {
        auto* view = Find<ModeBox>(box);
        return Locked([=] { return view->Now(); });
    }
    std::string Text(const char* name)
    {
        auto* view = Find<BStringView>(name);
        return Locked([=] { return std::string(view->Text()); });
    }
    std::string Facts(const char* name = "Facts")
    {
        auto* view = Find<FactsView>(name);
        return Locked([=] {
            BViewDescription description;
            view->Describe(&description);
            return description.value;
        });
    }
    /// By the window's own way to scroll: a box that is out of sight takes no click.
    void ClickBox(const char* name)
    {
        auto* view = Find<BView>(name);
        Locked([=] {
            view->MakeFocus();
            return true;
        });
        Click(view, BPoint(5, 8));
        kits::testing::Sync(fWindow);
        kits::testing::Sync(fWindow);
    }
    bool IsGone() { return kits::testing::WaitForNoWindow(fTitle.c_str()); }

    TempTree fTree;
    std::string fTitle;
    PropertiesWindow* fWindow = nullptr; // deletes itself
};

TEST_F(PropertiesWindowTest, ShowsAnEntry)
{
    Write("a.txt", 0640);
    Open({"a.txt"}, "a.txt");

    EXPECT_EQ(State("OwnerReads"), ModeBox::State::kOn);
    EXPECT_EQ(State("GroupWrites"), ModeBox::State::kOff);
    EXPECT_EQ(Text("ModeNumber"), "0640   rw-r-----");
    EXPECT_NE(Facts().find("Location: " + fTree.Path() + "\n"), std::string::npos) << Facts();
    EXPECT_TRUE(Locked([=, this] { return fWindow->FindView("AlsoInside")->IsHidden(); }));
}

TEST_F(PropertiesWindowTest, ChangesNothingBeforeOk)
{
    Write("a", 0640);
    Open({"a"}, "a");

    ClickBox("GroupWrites");
    EXPECT_EQ(Text("ModeNumber"), "0660   rw-rw----");
    EXPECT_EQ(Mode("a"), 0640u);
    TypeKey(B_ESCAPE);

    EXPECT_TRUE(IsGone());
    EXPECT_EQ(Mode("a"), 0640u);
}

TEST_F(PropertiesWindowTest, ReturnIsOkAndChangesWhatWasTouched)
{
    Write("a", 0640);
    Open({"a"}, "a");

    ClickBox("GroupWrites");
    ClickBox("OthersRead");
    ClickBox("OthersRead"); // as it was
    ASSERT_EQ(chmod(fTree.Path("a").c_str(), 0604), 0);
    TypeKey(B_ENTER);

    EXPECT_TRUE(IsGone());
    EXPECT_EQ(Mode("a"), 0624u);
}

TEST_F(PropertiesWindowTest, MixedBoxesLeftAloneChangeNothing)
{
    Write("a", 0644);
    Write("b", 0750);
    Open({"a", "b"}, "2 entries");

    EXPECT_EQ(State("OwnerExecutes"), ModeBox::State::kMixed);
    EXPECT_EQ(State("OwnerReads"), ModeBox::State::kOn);
    ClickBox("GroupWrites");
    Click(Find<BView>("AcceptProperties"));

    EXPECT_TRUE(IsGone());
    EXPECT_EQ(Mode("a"), 0664u);
    EXPECT_EQ(Mode("b"), 0770u);
}

TEST_F(PropertiesWindowTest, MixedBoxesGoRoundThreeStates)
{
    Write("a", 0644);
    Write("b", 0755);
    Open({"a", "b"}, "2 entries");

    ClickBox("OwnerExecutes");
    EXPECT_EQ(State("OwnerExecutes"), ModeBox::State::kOn);
    TypeKey(' ');
    EXPECT_EQ(State("OwnerExecutes"), ModeBox::State::kOff);
    TypeKey(' ');
    EXPECT_EQ(State("OwnerExecutes"), ModeBox::State::kMixed);
    ClickBox("OwnerWrites");
    EXPECT_EQ(State("OwnerWrites"), ModeBox::State::kOff);
    ClickBox("OwnerWrites");
    EXPECT_EQ(State("OwnerWrites"), ModeBox::State::kOn);
    TypeKey(B_ENTER);

    EXPECT_TRUE(IsGone());
    EXPECT_EQ(Mode("a"), 0644u);
    EXPECT_EQ(Mode("b"), 0755u);
}

TEST_F(PropertiesWindowTest, SaysHowManyEntriesInsideChange)
{
    Write("top/a", 0600);
    Write("top/b", 0640);
    Write("top/c", 0700);
    ASSERT_EQ(chmod(fTree.Path("top").c_str(), 0700), 0);
    Open({"top"}, "top");
    ASSERT_TRUE(WaitFor([this] { return Text("Status").empty(); }));

    EXPECT_EQ(Text("Preview"), "");
    ClickBox("AlsoInside");
    EXPECT_EQ(Text("Preview"), "Nothing is to be changed yet");
    ClickBox("GroupReads");
    EXPECT_EQ(Text("Preview"), "Changes 2 entries in there");
    ClickBox("GroupExecutes");
    EXPECT_EQ(Text("Preview"), "Changes 2 entries in there");
    EXPECT_EQ(Mode("top/a"), 0600u);
    TypeKey(B_ENTER);

    EXPECT_TRUE(IsGone());
    EXPECT_EQ(Mode("top/a"), 0640u);
    EXPECT_EQ(Mode("top/c"), 0750u);
    EXPECT_EQ(Mode("top"), 0750u);
}

TEST_F(PropertiesWindowTest, TellsWhatCouldNotBeChanged)
{
    Write("a", 0640);
    Write("b", 0640);
    Open({"a", "b"}, "2 entries");
    fTree.Remove("a");

    ClickBox("GroupWrites");
    TypeKey(B_ENTER);

    EXPECT_NE(AlertText("Err").find("\ta: "), std::string::npos);
    EXPECT_TRUE(kits::testing::AnswerAlert("OK"));
    EXPECT_TRUE(IsGone());
    EXPECT_EQ(Mode("b"), 0660u);
}

TEST_F(PropertiesWindowTest, ALinkHasNothingToChange)
{
    fTree.Link("link", "nowhere");
    Open({"link"}, "link");

    EXPECT_FALSE(Locked(
        [this] { return dynamic_cast<ModeBox*>(fWindow->FindView("OwnerReads"))->IsEnabled(); }));
    EXPECT_EQ(Text("ModeNumber"), "Links have none of their own");
    EXPECT_NE(Facts().find("Which is: nothing that is there"), std::string::npos);
}

TEST_F(PropertiesWindowTest, ScrollsWhereThereIsNoRoom)
{
    Write("a", 0640);
    Open({"a"}, "a");
    kits::testing::ResizeWindow(fWindow, 400, 150);
    auto* page = Find<PropertiesPage>("Properties");
    const auto isInSight = [&](const char* name) {
        auto* view = Find<BView>(name);
        return Locked([=] { return page->Bounds().Contains(view->Frame()); });
    };

    EXPECT_FALSE(isInSight("Sticky"));
    TypeKey(B_END);
    EXPECT_TRUE(isInSight("ModeNumber"));
    TypeKey(B_HOME);
    EXPECT_EQ(Locked([=] { return page->Bounds().top; }), 0);
    for (int i = 0; i < 12; i++) {
        TypeKey(B_TAB);
    }
    EXPECT_TRUE(isInSight("Sticky"));
}

TEST_F(PropertiesWindowTest, WindowsLieBesideEachOtherOnTheScreen)
{
    Write("a", 0640);
    Open({"a"}, "a");
    const BPoint first = Locked([this] { return fWindow->Frame().LeftTop(); });
    PropertiesWindow* other = fWindow;
    Open({"a"}, "a");
    const BRect second = Locked([this] { return fWindow->Frame(); });

    EXPECT_NE(first, second.LeftTop());
    EXPECT_TRUE(BScreen().Frame().Contains(second));
    ASSERT_TRUE(other->Lock());
    other->Quit();
}

} // namespace
