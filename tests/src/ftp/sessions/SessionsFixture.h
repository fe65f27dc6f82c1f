#pragma once

#include "AlertText.h"
#include "ApplicationEnvironment.h"
#include "TempTree.h"
#include "Variable.h"
#include "ftp/sessions/ConWin.h"
#include "ftp/sessions/FtpWin.h"

#include <ListView.h>
#include <Message.h>
#include <TextControl.h>
#include <TextView.h>
#include <Window.h>

#include <mutex>
#include <string>
#include <vector>

namespace norvane {

/// Stands for the main window: keeps the sessions that it is told to connect to.
class SessionOwner : public BWindow
{
public:
    SessionOwner() : BWindow(BRect(100, 100, 700, 500), "Owner", B_TITLED_WINDOW, 0) {}

    void MessageReceived(BMessage* message) override
    {
        if (message->what != 602) {
            BWindow::MessageReceived(message);
            return;
        }
        const std::lock_guard lock(fMutex);
        fChosen.emplace_back(message->GetString("session", "(none)"));
    }
    std::vector<std::string> Chosen()
    {
        kits::testing::Sync(this);
        const std::lock_guard lock(fMutex);
        return fChosen;
    }

private:
    std::mutex fMutex;
    std::vector<std::string> fChosen;
};

/// Saved connections in a settings folder of the test's own, and the windows that show them.
class SessionsFixture : public ::testing::Test
{
protected:
    void SetUp() override
    {
        fOwner = new SessionOwner;
        fOwner->Show();
        ASSERT_TRUE(kits::testing::WaitForFocus(fOwner));
    }
    void TearDown() override
    {
        for (const char* title : {"Ftp Connection", "Ftp Sessions"}) {
            for (int32 count = kits::testing::CountShown(title); count > 0; count--) {
                BWindow* window = kits::testing::WaitForWindow(title);
                ASSERT_NE(window, nullptr);
                kits::testing::CloseWindow(window);
                ASSERT_TRUE(kits::testing::WaitFor(
                    [=] { return kits::testing::CountShown(title) < count; }));
            }
        }
        if (fOwner->Lock()) {
            fOwner->Quit();
        }
    }

    // Files

    static std::string File(const std::string& name) { return "config/Norvane/" + name; }
    void WriteSession(const std::string& name, const std::string& contents = "Host=a\nUser=b\n")
    {
        fTree.Write(File(name), contents);
    }
    std::string ReadSession(const std::string& name) const { return fTree.Read(File(name)); }
    bool HasSession(const std::string& name) const { return fTree.Exists(File(name)); }

    // Windows

    /// The sessions window, once it lists what the folder has.
    BWindow* OpenSessions(const std::string& rows)
    {
        BWindow* window = new ConWin(fOwner->Frame(), fOwner);
        window->Show();
        EXPECT_TRUE(kits::testing::WaitForFocus(window));
        EXPECT_TRUE(Lists(window, rows)) << Rows(window);
        return window;
    }
    BWindow* OpenEditor(const char* session)
    {
        BWindow* window = new FtpWin(fOwner->Frame(), fOwner, session);
        window->Show();
        EXPECT_TRUE(kits::testing::WaitForFocus(window));
        return window;
    }

    /// The result of `ask`, called with the window locked.
    template<typename Ask>
    static auto Locked(BWindow* window, Ask ask)
    {
        const BAutolock lock(window);
        EXPECT_TRUE(lock.IsLocked());
        return ask();
    }
    static BListView* ListOf(BWindow* window)
    {
        return dynamic_cast<BListView*>(kits::testing::FindView(window, "lvConnections"));
    }
    /// The rows in one line, each followed by "|", the selected one by "*" before.
    static std::string Rows(BWindow* window)
    {
        return Locked(window, [=] {
            std::string rows;
            const BListView* list = ListOf(window);
            for (int32 row = 0; row < list->CountItems(); row++) {
                rows += list->IsItemSelected(row) ? "*" : "";
                rows += dynamic_cast<BStringItem*>(list->ItemAt(row))->Text();
                rows += "|";
            }
            return rows;
        });
    }
    static bool Lists(BWindow* window, const std::string& rows)
    {
        return kits::testing::WaitFor([&] { return Rows(window) == rows; });
    }
    static void SelectRow(BWindow* window, int32 row)
    {
        Locked(window, [=] {
            ListOf(window)->Select(row);
            return 0;
        });
    }
    static void Press(BWindow* window, const char* button)
    {
        kits::testing::Click(kits::testing::FindView(window, button));
    }
    /// Answers the alert of that title; its windows have buttons of the same labels.
    static bool Answer(const char* title, const char* button)
    {
        BWindow* alert = kits::testing::WaitForWindow(title);
        if (alert == nullptr || !kits::testing::WaitUntilAnswers(alert)) {
            return false;
        }
        Press(alert, button);
        return kits::testing::WaitForNoWindow(title);
    }
    static BTextControl* FieldOf(BWindow* window, const char* name)
    {
        return dynamic_cast<BTextControl*>(kits::testing::FindView(window, name));
    }
    static std::string TextIn(BWindow* window, const char* name)
    {
        return Locked(window, [=] { return std::string(FieldOf(window, name)->Text()); });
    }
    static bool Shows(BWindow* window, const char* name, const std::string& text)
    {
        return kits::testing::WaitFor([&] { return TextIn(window, name) == text; });
    }
    static void Enter(BWindow* window, const char* name, const std::string& text)
    {
        Locked(window, [&] {
            FieldOf(window, name)->SetText(text.c_str());
            return 0;
        });
    }
    static bool HasFocus(BWindow* window, const char* field)
    {
        return Locked(window, [=] { return FieldOf(window, field)->TextView()->IsFocus(); });
    }

    TempTree fTree;
    const Variable fConfig{"XDG_CONFIG_HOME", fTree.Path("config").c_str()};
    SessionOwner* fOwner = nullptr; // deletes itself
};

} // namespace norvane
