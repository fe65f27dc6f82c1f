#pragma once

#include "ApplicationEnvironment.h"
#include "TempTree.h"
#include "Variable.h"
#include "panes/DirPane.h"
#include "panes/DirView.h"
#include "panes/NVHeader.h"
#include "panes/NorvFtr.h"

#include <Autolock.h>
#include <Message.h>
#include <Window.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

/// A window that keeps the messages that a pane posts to it.
class PaneWindow : public BWindow
{
public:
    explicit PaneWindow(BRect frame)
        : BWindow(frame, "panes", B_TITLED_WINDOW, B_ASYNCHRONOUS_CONTROLS)
    {
    }

    /// Runs `work` in the window's own thread.
    void RunHere(std::function<void()> work)
    {
        {
            const std::lock_guard lock(fMutex);
            fWork = std::move(work);
        }
        PostMessage('work');
    }

    void MessageReceived(BMessage* message) override
    {
        if (message->what == 'work') {
            std::function<void()> work;
            {
                const std::lock_guard lock(fMutex);
                work = std::move(fWork);
            }
            work();
            return;
        }
        if (message->what == norvane::kLocalEntries || message->what == norvane::kColumnResized ||
            message->what == norvane::kHelp || message->what == norvane::kNewFolder ||
            message->what == norvane::kQuery || message->what == norvane::kNotOpened) {
            const std::lock_guard lock(fMutex);
            fReceived.push_back(*message);
            return;
        }
        BWindow::MessageReceived(message);
    }

    std::vector<BMessage> Received()
    {
        const std::lock_guard lock(fMutex);
        return fReceived;
    }

private:
    std::mutex fMutex;
    std::vector<BMessage> fReceived;
    std::function<void()> fWork;
};

/// One pane on the folder "shown" of a temporary tree, in a shown window, with the focus. Settings
/// and the home Trash are in that tree, too.
class PaneWindowFixture : public ::testing::Test
{
protected:
    void SetUp() override
    {
        fTree.MakeFolder("config");
        fTree.MakeFolder("shown");
        setenv("XDG_CONFIG_HOME", fTree.Path("config").c_str(), 1);
    }

    void TearDown() override
    {
        if (fWindow != nullptr && fWindow->Lock()) {
            fWindow->Quit();
        }
    }

    void Open(const std::string& folder = "shown")
    {
        const BRect frame(100, 100, 599, 499);
        fWindow = new PaneWindow(frame);
        fPane = new norvane::DirPane(frame.OffsetToCopy(0, 0), fTree.Path(folder).c_str(), "pane1",
                                     "1");
        fWindow->AddChild(fPane);
        fList = fPane->GetDirView();
        fPane->ResizeTo(frame.Width(), frame.Height());
        fPane->SetFocus();
        fWindow->Show();
        ASSERT_TRUE(kits::testing::WaitForFocus(fWindow));
        ASSERT_TRUE(kits::testing::Sync(fWindow));
    }

    /// What `read` says, read under the window's lock.
    template<class Read>
    auto Locked(Read read)
    {
        const BAutolock lock(fWindow);
        EXPECT_TRUE(lock.IsLocked());
        return read();
    }

    std::string Names()
    {
        return Locked([this] {
            std::string names;
            for (int32 i = 0; i < fList->CountItems(); i++) {
                names += fList->RowAt(i)->GetEntryName() + std::string(" ");
            }
            return names;
        });
    }

    std::string Selected()
    {
        return Locked([this] {
            const norvane::DirListItem* row = fList->RowAt(fList->CurrentSelection());
            return std::string(row != nullptr ? row->GetEntryName() : "(none)");
        });
    }

    std::string Marked()
    {
        return Locked([this] {
            std::string names;
            for (const norvane::DirListItem* row : fList->Marks().Rows()) {
                names += row->GetEntryName() + std::string(" ");
            }
            return names;
        });
    }

    std::string Text(const std::string& name, int32 column)
    {
        return Locked([&] {
            for (int32 i = 0; i < fList->CountItems(); i++) {
                if (fList->RowAt(i)->GetEntryName() == name) {
                    return std::string(fList->RowAt(i)->Text(column));
                }
            }
            return std::string("(no row)");
        });
    }

    std::string Footer()
    {
        return Locked([this] { return fPane->Footer()->Text(); });
    }

    /// The middle of a row's name cell, in the list's coordinates.
    BPoint NameCell(int32 index)
    {
        return Locked([&] {
            const BRect row = fList->ItemFrame(index);
            return BPoint(60, (row.top + row.bottom) / 2);
        });
    }

    void Click(int32 index, uint32 modifiers = 0, int32 clicks = 1)
    {
        kits::testing::Click(fList, NameCell(index), B_PRIMARY_MOUSE_BUTTON, clicks, modifiers);
        ASSERT_TRUE(kits::testing::Sync(fWindow));
    }

    void Type(char key, uint32 modifiers = 0)
    {
        kits::testing::TypeKey(key, modifiers);
        kits::testing::SyncServer();
        ASSERT_TRUE(kits::testing::Sync(fWindow));
    }

    bool Becomes(const std::function<std::string()>& read, const std::string& expected)
    {
        return kits::testing::WaitFor([&] { return read() == expected; });
    }

    TempTree fTree;
    const Variable fDataHome{"XDG_DATA_HOME", fTree.Path("data").c_str()};
    PaneWindow* fWindow = nullptr; // deletes itself
    norvane::DirPane* fPane = nullptr;
    norvane::DirView* fList = nullptr;
};
