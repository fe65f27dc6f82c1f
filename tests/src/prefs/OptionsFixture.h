#pragma once

#include "AlertText.h"
#include "ControlWindow.h"
#include "TempTree.h"
#include "prefs/OptionsWindow.h"

#include <Autolock.h>
#include <CheckBox.h>
#include <MenuField.h>
#include <MenuItem.h>
#include <Message.h>
#include <PopUpMenu.h>
#include <TabView.h>

#include <cstdlib>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace norvane {

/// Stands for the main window: keeps the notices it gets.
class NoticedWindow : public BWindow
{
public:
    NoticedWindow() : BWindow(BRect(20, 20, 819, 619), "owner", B_TITLED_WINDOW, 0) {}

    void MessageReceived(BMessage* message) override
    {
        if (message->what == 614) {
            const std::lock_guard lock(fMutex);
            fNotices.push_back(*message);
        } else {
            BWindow::MessageReceived(message);
        }
    }

    size_t CountNotices()
    {
        kits::testing::Sync(this);
        const std::lock_guard lock(fMutex);
        return fNotices.size();
    }

private:
    std::mutex fMutex;
    std::vector<BMessage> fNotices;
};

/// The preferences window over settings of the test's own.
class OptionsFixture : public ::testing::Test
{
protected:
    static constexpr const char* kTitle = "Norvane Preferences Dialog";

    OptionsFixture()
    {
        fTree.MakeFolder("config");
        setenv("XDG_CONFIG_HOME", fTree.Path("config").c_str(), 1);
    }

    void TearDown() override
    {
        for (BWindow* window : {static_cast<BWindow*>(fWindow), static_cast<BWindow*>(fOwner)}) {
            if (window != nullptr && window->Lock()) { // fails for one that is gone
                window->Quit();
            }
        }
    }

    void WriteSettings(const std::string& lines) { fTree.Write(kFile, lines); }
    std::string Settings() { return fTree.Exists(kFile) ? fTree.Read(kFile) : "(none)"; }

    void Open(BRect around = BRect(0, 0, 799, 599))
    {
        fOwner = new NoticedWindow;
        fOwner->Show();
        ASSERT_TRUE(kits::testing::WaitForFocus(fOwner));
        fWindow = new OptionsWindow(around, fOwner);
        fWindow->Show();
        ASSERT_TRUE(kits::testing::WaitForFocus(fWindow));
    }

    /// The result of `ask`, called with the window locked, after everything before was handled.
    template<typename Ask>
    auto Locked(Ask ask)
    {
        kits::testing::Sync(fWindow);
        const BAutolock lock(fWindow);
        return ask();
    }

    template<typename View>
    View* Find(const char* name)
    {
        return Locked([=, this] { return dynamic_cast<View*>(fWindow->FindView(name)); });
    }
    bool IsOn(const char* box)
    {
        auto* view = Find<BCheckBox>(box);
        return Locked([=] { return view->Value() != B_CONTROL_OFF; });
    }
    void Click(const char* name)
    {
        kits::testing::Click(Find<BView>(name));
        // What a button sends while its click is handled is behind the first round.
        kits::testing::Sync(fWindow);
        kits::testing::Sync(fWindow);
    }
    BMenu* Formats()
    {
        auto* field = Find<BMenuField>("DateFormat");
        return Locked([=] { return field->Menu(); });
    }
    /// The format of the item that is marked; "" for none.
    std::string MarkedFormat()
    {
        const BMenu* formats = Formats();
        return Locked([=] {
            const BMenuItem* marked = formats->FindMarked();
            return std::string(marked != nullptr ? marked->Message()->GetString("Date Format", "")
                                                 : "");
        });
    }
    /// What the field shows.
    std::string ShownFormat()
    {
        auto* field = Find<BMenuField>("DateFormat");
        return Locked([=] { return std::string(field->MenuItem()->Label()); });
    }
    void ChooseFormat(int32 index)
    {
        BMenu* formats = Formats();
        Locked([=] { return static_cast<BInvoker*>(formats->ItemAt(index))->Invoke(); });
        kits::testing::Sync(fWindow);
    }

    static constexpr const char* kFile = "config/Norvane/Norvane.pref";

    TempTree fTree;
    NoticedWindow* fOwner = nullptr;  // deletes itself
    OptionsWindow* fWindow = nullptr; // the same
};

} // namespace norvane
