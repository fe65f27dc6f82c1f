#pragma once

#include "ControlWindow.h"

#include <Menu.h>
#include <MenuBar.h>

#include <functional>
#include <memory>
#include <string>
#include <utility>

/// Notes when its menus begin and end, and does then what a test wants.
class MenuWindow : public ControlWindow
{
public:
    MenuWindow() : ControlWindow("menus") {}

    void MenusBeginning() override
    {
        notes += 'b';
        if (atBeginning) {
            atBeginning();
        }
    }

    void MenusEnded() override
    {
        notes += 'e';
        if (atEnd) {
            atEnd();
        }
    }

    bool QuitRequested() override { return mayQuit; }

    bool mayQuit = true;
    std::string notes;
    std::function<void()> atBeginning;
    std::function<void()> atEnd;
};

/// A window with a menu that has a submenu.
class MenuFixture : public ::testing::Test
{
protected:
    MenuFixture() : fWindow(new MenuWindow)
    {
        fBar = new BMenuBar(BRect(0, 0, 0, 0), "MenuBar");
        fFile = new BMenu("File");
        for (const auto& [label, what] :
             {std::pair("Open", 'tesa'), std::pair("Copy", 'tesb'), std::pair("Delete", 'tesc')}) {
            fFile->AddItem(new BMenuItem(label, new BMessage(static_cast<uint32>(what))));
        }
        fMore = new BMenu("More");
        fMore->AddItem(new BMenuItem("Deep", new BMessage('tesd')));
        fFile->AddItem(fMore);
        fBar->AddItem(fFile);
        fWindow->AddChild(fBar);
        fWindow->Show();
    }

    void SetUp() override { ASSERT_TRUE(kits::testing::WaitForFocus(fWindow)); }

    void TearDown() override
    {
        if (fWindow->Lock()) {
            fWindow->atBeginning = nullptr;
            fWindow->atEnd = nullptr;
            fWindow->Quit();
        }
    }

    template<typename Ask>
    auto Locked(Ask ask)
    {
        kits::testing::Sync(fWindow);
        fWindow->Lock();
        auto result = ask();
        fWindow->Unlock();
        return result;
    }

    void Do(const std::function<void()>& work)
    {
        Locked([&work] {
            work();
            return true;
        });
    }

    BPoint On(BMenuItem* item)
    {
        return Locked([item] {
            const BRect frame = item->Frame();
            return item->Menu()->ConvertToScreen(
                BPoint((frame.left + frame.right) / 2, (frame.top + frame.bottom) / 2));
        });
    }

    bool IsOpen(BMenu* menu)
    {
        return Locked([menu] { return menu->Window() != nullptr; });
    }

    std::string Chosen()
    {
        std::string codes;
        for (const BMessage& message : fWindow->Messages()) {
            codes += static_cast<char>(message.what & 0xff);
        }
        return codes;
    }

    std::string Notes()
    {
        return Locked([this] { return fWindow->notes; });
    }

    void OpenFile()
    {
        kits::testing::ClickAt(On(fBar->ItemAt(0)));
        ASSERT_TRUE(IsOpen(fFile));
        kits::testing::SyncServer();
    }

    MenuWindow* fWindow;
    BMenuBar* fBar;
    BMenu* fFile;
    BMenu* fMore;
    std::unique_ptr<BMenuItem> fTaken;
};
