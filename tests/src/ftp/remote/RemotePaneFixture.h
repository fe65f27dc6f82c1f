#pragma once

#include "AppFixture.h"
#include "FtpServer.h"
#include "FtpTree.h"
#include "MessageCodes.h"
#include "ftp/client/SessionFile.h"
#include "panes/FtpViews.h"

#include <Message.h>
#include <TextView.h>
#include <testing/Driver.h>

#include <memory>
#include <string>

/// A window whose second pane connects to a server of the test; the first one shows "one".
class RemotePaneFixture : public AppFixture
{
protected:
    using Strings = std::vector<std::string>;

    void SetUp() override
    {
        AppFixture::SetUp();
        fServed.AddFolder("/pub/sub");
        fServed.AddFile("/pub/b", "bb");
        fServed.AddFile("/pub/a", "aaa");
        fServed.AddFile("/pub/sub/deep", "deep");
    }

    void TearDown() override
    {
        AppFixture::TearDown();
        fServer.reset(); // what a connection still says has an end
    }

    void Serve() { fServer = std::make_unique<FtpServer>(fServed.Handler()); }
    void Serve(FtpScript script) { fServer = std::make_unique<FtpServer>(std::move(script)); }

    void WriteSession(const std::string& password, const std::string& remoteDir = "/pub")
    {
        norvane::FtpSession session;
        session.host = "127.0.0.1";
        session.port = std::to_string(fServer->Port());
        session.user = FtpTree::kUser;
        session.password = password;
        session.remoteDir = remoteDir;
        ASSERT_EQ(norvane::SessionFile("test.ftp").Write(session), B_OK);
    }

    /// Begins to connect the second pane, and does not wait.
    void Begin(const std::string& password = FtpTree::kPassword,
               const std::string& remoteDir = "/pub")
    {
        WritePanes({"one", "two"});
        WriteSession(password, remoteDir);
        Open();
        Focus(1);
        Choose();
    }

    void Choose()
    {
        BMessage chosen(norvane::kSessionChosen);
        chosen.AddString("session", "test.ftp");
        fWindow->PostMessage(&chosen);
    }

    void Connect()
    {
        Serve();
        Begin();
        ASSERT_TRUE(Shows(1, ".. sub a b ")) << Rows(1) << Log();
    }

    norvane::DirPane* Pane(int32 index) { return fWindow->PaneAt(index); }
    norvane::DirView* List(int32 index) { return Pane(index)->GetDirView(); }

    std::string Rows(int32 pane)
    {
        std::string names;
        Locked([&] {
            for (int32 row = 0; row < List(pane)->CountItems(); row++) {
                names += List(pane)->RowAt(row)->GetEntryName() + std::string(" ");
            }
        });
        return names;
    }

    bool Shows(int32 pane, const std::string& rows)
    {
        return kits::testing::WaitFor([&] { return Rows(pane) == rows; });
    }

    std::string Header(int32 pane)
    {
        std::string text;
        Locked([&] { text = List(pane)->HeaderText(); });
        return text;
    }

    norvane::PaneMode Mode(int32 pane)
    {
        norvane::PaneMode mode = norvane::kLocalMode;
        Locked([&] { mode = List(pane)->Mode(); });
        return mode;
    }

    bool BecomesLocal(int32 pane)
    {
        return kits::testing::WaitFor([&] { return Mode(pane) == norvane::kLocalMode; });
    }

    std::string Log()
    {
        std::string text;
        Locked([&] {
            const auto* log = dynamic_cast<const BTextView*>(Pane(1)->FindView("StatusWindow"));
            text = log != nullptr ? log->Text() : "(no log)";
        });
        return text;
    }

    bool HasView(const char* name)
    {
        bool isThere = false;
        Locked([&] { isThere = Pane(1)->FindView(name) != nullptr; });
        return isThere;
    }

    /// Presses a key in the second pane on the row of that name.
    void PressOn(const std::string& row, const std::function<void()>& press)
    {
        Focus(1);
        Select(1, row);
        press();
    }

    /// Presses the button of that label in the window of that title: a pane on a server has one
    /// like an alert's.
    bool PressIn(const char* title, const char* label)
    {
        BWindow* window = kits::testing::WaitForWindow(title);
        BView* button = window != nullptr ? kits::testing::FindView(window, label) : nullptr;
        if (button == nullptr || !kits::testing::WaitUntilAnswers(window)) {
            return false;
        }
        kits::testing::Click(button);
        return true;
    }

    /// The window goes on handling messages.
    bool IsAlive() { return kits::testing::Sync(fWindow, 1'000'000); }

    FtpTree fServed;
    std::unique_ptr<FtpServer> fServer;
};
