#pragma once

#include "MenuFixture.h"

#include <MenuItem.h>
#include <PopUpMenu.h>

#include <atomic>

/// Does what a test wants when it is pressed, typed at or sent 'open', on the window's thread.
class OpenerView : public BView
{
public:
    OpenerView() : BView(BRect(0, 40, 399, 299), "opener", B_FOLLOW_NONE, B_WILL_DRAW) {}

    void MouseDown(BPoint) override { open(); }
    void KeyDown(const char*, int32) override { open(); }
    void MessageReceived(BMessage* message) override
    {
        if (message->what == 'open') {
            open();
        } else {
            BView::MessageReceived(message);
        }
    }
    void Draw(BRect) override { draws++; }

    std::function<void()> open;
    std::atomic<int32> draws{0};
};

/// Tells when it is deleted.
class MortalMenu : public BPopUpMenu
{
public:
    explicit MortalMenu(std::atomic<bool>* isGone)
        : BPopUpMenu("popup", false, false), fIsGone(isGone)
    {
    }
    ~MortalMenu() override { *fIsGone = true; }

private:
    std::atomic<bool>* fIsGone;
};

/// A window with a view that opens a menu of three items and a submenu.
class PopUpMenuFixture : public MenuFixture
{
protected:
    PopUpMenuFixture() : fView(new OpenerView), fMenu(new MortalMenu(&fIsGone))
    {
        for (const auto& [label, what] :
             {std::pair("Red", 'tesr'), std::pair("Green", 'tesg'), std::pair("Blue", 'tesu')}) {
            fMenu->AddItem(new BMenuItem(label, new BMessage(static_cast<uint32>(what))));
        }
        fWindow->Lock();
        fWindow->AddChild(fView);
        fView->MakeFocus();
        fWindow->Unlock();
    }
    void TearDown() override
    {
        const bool isThere = fWindow->Lock(); // some tests close it
        if (!fIsGone) {
            delete fMenu;
        }
        if (isThere) {
            fWindow->Unlock();
        }
        MenuFixture::TearDown();
    }

    /// What is asked of a window whose messages wait while a menu is open.
    template<typename Ask>
    auto WithLock(Ask ask)
    {
        fWindow->Lock();
        auto result = ask();
        fWindow->Unlock();
        return result;
    }
    bool IsUp()
    {
        return WithLock([this] { return !fIsGone && fMenu->Window() != nullptr; });
    }
    BPoint OnItem(int32 index)
    {
        return WithLock([this, index] {
            const BRect frame = fMenu->ItemAt(index)->Frame();
            return fMenu->ConvertToScreen(
                BPoint((frame.left + frame.right) / 2, (frame.top + frame.bottom) / 2));
        });
    }
    BPoint Where() const { return BPoint(150, 150); }

    /// Has the window's thread open the menu, by a message.
    void Open(const std::function<void()>& open)
    {
        fView->open = open;
        BMessenger(fView).SendMessage('open');
    }
    void AwaitUp()
    {
        ASSERT_TRUE(kits::testing::WaitFor([this] { return IsUp(); }));
        kits::testing::SyncServer();
    }
    bool AwaitOver()
    {
        return kits::testing::WaitFor([this] { return fIsOver.load(); });
    }

    /// The window paints anew what it is asked to.
    bool AwaitPainting()
    {
        const int32 before = fView->draws;
        WithLock([this] {
            fView->Invalidate();
            return true;
        });
        return kits::testing::WaitFor([this, before] { return fView->draws > before; });
    }

    /// A Go() that waits; what it returned is in fReturned.
    void OpenAndWait(bool deliversMessage = false)
    {
        Open([this, deliversMessage] {
            fReturned = fMenu->Go(Where(), deliversMessage, true);
            fIsOver = true;
        });
        AwaitUp();
    }

    OpenerView* fView;
    std::atomic<bool> fIsGone{false};
    MortalMenu* fMenu;
    std::atomic<BMenuItem*> fReturned{nullptr};
    std::atomic<bool> fIsOver{false};
};
