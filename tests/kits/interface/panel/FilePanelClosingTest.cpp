#include "FilePanelFixture.h"
#include "NoThreads.h"

#include <Button.h>

#include <atomic>

// How a panel comes and goes, and what its program hears of that.

namespace {

using namespace kits::testing;

/// Counts how often it was told that it has closed.
class Counting : public BFilePanel
{
public:
    using BFilePanel::BFilePanel;
    void WasHidden() override { ++fHidden; }
    int CountHidden() const { return fHidden; }

private:
    std::atomic<int> fHidden{0};
};

class FilePanelClosingTest : public FilePanelFixture
{
protected:
    Counting* OpenCounting()
    {
        entry_ref ref;
        EXPECT_EQ(get_ref_for_path(fTree.Path("shown").c_str(), &ref), B_OK);
        auto panel = std::make_unique<Counting>(B_OPEN_PANEL, &fTarget, &ref);
        Counting* counting = panel.get();
        fPanel = std::move(panel);
        ShowPanel();
        return counting;
    }

    /// Asks as the program's end does, whatever other windows say.
    void EndWindow()
    {
        BMessage answer;
        const BMessenger window(fPanel->Window());
        ASSERT_EQ(window.SendMessage(B_QUIT_REQUESTED, &answer), B_OK);
        EXPECT_TRUE(answer.GetBool("result", false));
        EXPECT_TRUE(WaitFor([&] { return !window.IsValid(); }));
    }

    bool IsHidden() const
    {
        return Locked([](BWindow* window) { return window->IsHidden(); });
    }
};

TEST_F(FilePanelClosingTest, ShownRightAfterItWasHiddenItSaysSo)
{
    Open("shown");

    Locked([&](BWindow*) {
        fPanel->Hide();
        fPanel->Show();
        return true;
    });
    EXPECT_TRUE(fPanel->IsShowing());
    ASSERT_TRUE(Sync(fPanel->Window()));

    EXPECT_FALSE(IsHidden());
    EXPECT_TRUE(fPanel->IsShowing());
}

TEST_F(FilePanelClosingTest, HiddenRightAfterItWasShownItSaysSo)
{
    Open("shown");
    fPanel->Hide();
    EXPECT_FALSE(fPanel->IsShowing());
    ASSERT_TRUE(Sync(fPanel->Window()));

    Locked([&](BWindow*) {
        fPanel->Show();
        fPanel->Hide();
        return true;
    });
    ASSERT_TRUE(Sync(fPanel->Window()));

    EXPECT_TRUE(IsHidden());
    EXPECT_FALSE(fPanel->IsShowing());
}

TEST_F(FilePanelClosingTest, CancelledWhileItIsToBeShownItIsShown)
{
    Open("shown");

    Locked([&](BWindow* window) {
        window->PostMessage(B_QUIT_REQUESTED);
        fPanel->Show();
        return true;
    });
    ASSERT_TRUE(Sync(fPanel->Window()));

    EXPECT_EQ(Sent(), "(cancelled)");
    EXPECT_FALSE(IsHidden());
    EXPECT_TRUE(fPanel->IsShowing());
}

TEST_F(FilePanelClosingTest, HiddenByItsProgramItSendsNothing)
{
    const Counting* panel = OpenCounting();

    fPanel->Hide();
    ASSERT_TRUE(Sync(fPanel->Window()));

    EXPECT_TRUE(IsHidden());
    EXPECT_EQ(panel->CountHidden(), 1);
    EXPECT_TRUE(fListener->Came().empty());
}

TEST_F(FilePanelClosingTest, ClosedByAPersonItIsCancelled)
{
    const Counting* panel = OpenCounting();

    BMessenger(fPanel->Window()).SendMessage(B_QUIT_REQUESTED);

    EXPECT_EQ(Sent(), "(cancelled)");
    ASSERT_TRUE(Sync(fPanel->Window()));
    EXPECT_TRUE(IsHidden());
    EXPECT_EQ(panel->CountHidden(), 1);
}

TEST_F(FilePanelClosingTest, AskedToQuitWhileHiddenItCancelsNothing)
{
    const Counting* panel = OpenCounting();
    fPanel->Hide();

    BMessenger(fPanel->Window()).SendMessage(B_QUIT_REQUESTED);
    ASSERT_TRUE(Sync(fPanel->Window()));
    EndWindow();

    EXPECT_EQ(panel->CountHidden(), 1);
    EXPECT_TRUE(fListener->Came().empty());
}

// Keys may wait in the window's queue when the first of them closes it.
TEST_F(FilePanelClosingTest, ChoosesAndCancelsOnce)
{
    for (const char key : {B_ENTER, B_ESCAPE}) {
        Open("shown");
        TypeKey(B_DOWN_ARROW);
        EXPECT_TRUE(WaitFor([&] { return Selected() == "b9"; }));
        const size_t before = fListener->Came().size();

        BMessage pressed(B_KEY_DOWN);
        pressed.AddInt8("byte", key);
        Locked([&](BWindow* window) {
            const BMessenger list(window->FindView("PoseView"));
            list.SendMessage(&pressed);
            list.SendMessage(&pressed);
            return true;
        });
        ASSERT_TRUE(Sync(fPanel->Window()));

        BMessage answer; // to a message that comes after all that was sent before
        fTarget.SendMessage('sync', &answer);
        EXPECT_EQ(fListener->Came().size(), before + 2);
    }
}

// When windows go

TEST_F(FilePanelClosingTest, WindowThatEndedIsMadeAnew)
{
    OnlyZebras filter;
    Open("shown/folder");
    BMessage message('mine');
    fPanel->SetMessage(&message);
    fPanel->SetRefFilter(&filter);
    fPanel->SetButtonLabel(B_DEFAULT_BUTTON, "Look");
    fPanel->SetPanelDirectory(fTree.Path("shown").c_str());
    EXPECT_TRUE(WaitFor([&] { return Shown() == fTree.Path("shown"); }));

    EndWindow();
    EXPECT_EQ(fPanel->Window(), nullptr);
    EXPECT_FALSE(fPanel->IsShowing());
    ShowPanel();

    EXPECT_TRUE(fPanel->IsShowing());
    EXPECT_TRUE(WaitFor([&] { return Names() == "folder Zebra "; })) << Names();
    EXPECT_EQ(Shown(), fTree.Path("shown"));
    EXPECT_EQ(Locked([](BWindow* window) {
                  return std::string(
                      dynamic_cast<BButton*>(window->FindView("default button"))->Label());
              }),
              "Look");
    TypeText("Zeb");
    TypeKey(B_ENTER);
    EXPECT_EQ(Sent(2), "Zebra"); // the first said that it was cancelled
    EXPECT_EQ(fListener->Came().back().what, uint32('mine'));
    fPanel.reset();
}

TEST_F(FilePanelClosingTest, WindowThatEndsWhileItIsShownIsCancelled)
{
    const Counting* panel = OpenCounting();

    EndWindow();

    EXPECT_EQ(Sent(), "(cancelled)");
    EXPECT_EQ(panel->CountHidden(), 1);
}

TEST_F(FilePanelClosingTest, WhatIsSetBetweenTwoWindowsHoldsForTheNext)
{
    Open("shown");
    EndWindow();

    fPanel->SetPanelDirectory(fTree.Path("shown/folder").c_str());
    fPanel->SetButtonLabel(B_CANCEL_BUTTON, "Never");
    fPanel->Hide();
    fPanel->Refresh();
    ShowPanel();

    EXPECT_TRUE(WaitFor([&] { return Shown() == fTree.Path("shown/folder"); })) << Shown();
    EXPECT_EQ(Locked([](BWindow* window) {
                  return std::string(
                      dynamic_cast<BButton*>(window->FindView("cancel button"))->Label());
              }),
              "Never");
}

TEST_F(FilePanelClosingTest, WindowThatItsProgramQuitsIsMadeAnew)
{
    Open("shown");
    BWindow* window = fPanel->Window();
    ASSERT_TRUE(window->Lock());
    window->ResizeTo(400, 300);
    window->SetTitle("Look here");

    window->Quit();
    EXPECT_EQ(fPanel->Window(), nullptr);
    EXPECT_FALSE(fPanel->IsShowing());
    ShowPanel();

    EXPECT_TRUE(WaitFor([&] { return Shown() == fTree.Path("shown"); })) << Shown();
    EXPECT_EQ(Locked([](BWindow* other) { return other->Bounds(); }), BRect(0, 0, 400, 300));
    EXPECT_EQ(Locked([](BWindow* other) { return std::string(other->Title()); }), "Look here");
}

/// Refuses to quit.
class Stubborn : public BWindow
{
public:
    Stubborn() : BWindow(BRect(0, 0, 50, 50), "stubborn", B_TITLED_WINDOW, 0) { Show(); }
    bool QuitRequested() override { return false; }
};

TEST_F(FilePanelClosingTest, ProgramThatDoesNotQuitAfterAllHasItsPanel)
{
    auto* stubborn = new Stubborn; // ended below
    Open("shown");
    BMessage answer;

    ASSERT_EQ(be_app_messenger.SendMessage(B_QUIT_REQUESTED, &answer), B_OK);
    EXPECT_FALSE(answer.GetBool("result", true));
    EXPECT_EQ(fPanel->Window(), nullptr);
    ShowPanel();

    EXPECT_TRUE(WaitFor([&] { return Shown() == fTree.Path("shown"); })) << Shown();
    ASSERT_TRUE(stubborn->Lock());
    stubborn->Quit();
}

TEST_F(FilePanelClosingTest, WithoutAThreadItDoesNotShowUntilThereIsOne)
{
    {
        const NoThreads none;
        fPanel = std::make_unique<BFilePanel>(B_OPEN_PANEL, &fTarget);
        fPanel->SetPanelDirectory(fTree.Path("shown").c_str());
        fPanel->Show();
        EXPECT_GT(NoThreads::CountRefused(), 0);
        EXPECT_FALSE(fPanel->IsShowing());
        EXPECT_EQ(fPanel->Window(), nullptr);
    }

    ShowPanel();

    EXPECT_TRUE(WaitFor([&] { return Shown() == fTree.Path("shown"); })) << Shown();
}

// Panels that go within their hooks

enum class Moment {
    kHidden,
    kSelected,
    kSent,
};

/// Deletes itself in a hook.
class Vanishing : public BFilePanel
{
public:
    Vanishing(Moment moment, const BMessenger* target, const entry_ref* folder)
        : BFilePanel(B_OPEN_PANEL, target, folder), fMoment(moment)
    {
    }

    void WasHidden() override { VanishAt(Moment::kHidden); }
    void SelectionChanged() override
    {
        entry_ref ref;
        Rewind();
        if (GetNextSelectedRef(&ref) == B_OK && std::string(ref.name) == "b9") {
            VanishAt(Moment::kSelected);
        }
    }
    void SendMessage(const BMessenger* target, BMessage* message) override
    {
        BFilePanel::SendMessage(target, message);
        VanishAt(Moment::kSent);
    }

private:
    void VanishAt(Moment moment)
    {
        if (fMoment == moment) {
            delete this;
        }
    }

    const Moment fMoment;
};

class FilePanelVanishingTest : public FilePanelClosingTest
{
protected:
    void OpenVanishing(Moment moment)
    {
        entry_ref ref;
        ASSERT_EQ(get_ref_for_path(fTree.Path("shown").c_str(), &ref), B_OK);
        auto* panel = new Vanishing(moment, &fTarget, &ref); // deletes itself
        fWindow = BMessenger(panel->Window());
        panel->Show();
        ASSERT_TRUE(WaitForFocus(panel->Window()));
        ASSERT_TRUE(WaitUntilKeysAnswer(panel->Window()));
        // Keys that come before the folder was read would choose nothing.
        entry_ref folder;
        EXPECT_TRUE(WaitFor([&] {
            panel->GetPanelDirectory(&folder);
            return folder.name != nullptr;
        }));
    }

    bool IsGone()
    {
        return WaitFor([&] { return !fWindow.IsValid(); });
    }

    BMessenger fWindow;
};

TEST_F(FilePanelVanishingTest, DeletedWhenItHasClosedItHasSentWhatWasChosen)
{
    OpenVanishing(Moment::kHidden);
    TypeText("b9");
    TypeKey(B_ENTER);
    EXPECT_EQ(Sent(), "b9");
    EXPECT_TRUE(IsGone());
}

TEST_F(FilePanelVanishingTest, DeletedWhenItHasClosedItHasSentThatItWasCancelled)
{
    OpenVanishing(Moment::kHidden);
    TypeKey(B_ESCAPE);
    EXPECT_EQ(Sent(), "(cancelled)");
    EXPECT_TRUE(IsGone());
}

TEST_F(FilePanelVanishingTest, DeletedWhileItSendsItHasSent)
{
    OpenVanishing(Moment::kSent);
    TypeText("b9");
    TypeKey(B_ENTER);
    EXPECT_EQ(Sent(), "b9");
    EXPECT_TRUE(IsGone());
}

TEST_F(FilePanelVanishingTest, DeletedWhenAnotherEntryIsSelectedItSendsNothing)
{
    OpenVanishing(Moment::kSelected);
    TypeText("b9");
    TypeKey(B_ENTER);
    EXPECT_TRUE(IsGone());
    EXPECT_TRUE(fListener->Came().empty());
}

TEST_F(FilePanelVanishingTest, MayGoWithinItsFilter)
{
    class Deleting : public BRefFilter
    {
    public:
        bool Filter(const entry_ref*, BNode*, struct stat*, const char*) override
        {
            panel.reset();
            return true;
        }
        std::unique_ptr<BFilePanel> panel;
    };
    Deleting filter;
    filter.panel = std::make_unique<BFilePanel>(B_OPEN_PANEL, &fTarget);
    BWindow* window = filter.panel->Window();
    fWindow = BMessenger(window);
    ASSERT_TRUE(window->Lock()); // so that it does not go within the calls
    filter.panel->SetRefFilter(&filter);
    filter.panel->SetPanelDirectory(fTree.Path("shown").c_str());
    window->Unlock();

    EXPECT_TRUE(IsGone());
}

} // namespace
