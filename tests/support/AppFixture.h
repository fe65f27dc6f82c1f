#pragma once

#include "ApplicationEnvironment.h"
#include "TempTree.h"
#include "Variable.h"
#include "app/NorvaneWindow.h"
#include "panes/DirPane.h"
#include "panes/DirView.h"

#include <Autolock.h>
#include <Messenger.h>

#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <functional>
#include <future>
#include <string>
#include <vector>

/// A main window with settings and a home Trash of its own in a temporary tree.
class AppFixture : public ::testing::Test
{
protected:
    void SetUp() override
    {
        setenv("XDG_CONFIG_HOME", fTree.Path("config").c_str(), 1);
        fTree.MakeFolder("config");
        for (const char* folder : {"one", "two", "three"}) {
            fTree.MakeFolder(folder);
        }
    }

    void TearDown() override
    {
        if (fWindow != nullptr && fWindow->Lock()) {
            fWindow->Quit();
        }
    }

    void WriteSettings(const std::string& lines)
    {
        fTree.Write("config/Norvane/Norvane.pref", lines);
    }

    std::string Setting(const std::string& key)
    {
        std::string text = "\n";
        text += fTree.Read("config/Norvane/Norvane.pref");
        std::string line = "\n";
        line += key;
        line += "=";
        const size_t start = text.find(line);
        if (start == std::string::npos) {
            return "(missing)";
        }
        const size_t value = start + line.size();
        return text.substr(value, text.find('\n', value) - value);
    }

    /// Settings for panes on these folders of the tree ("" for none), and further lines.
    void WritePanes(const std::vector<std::string>& folders, const std::string& more = "")
    {
        std::string lines = more + "NumPanes=" + std::to_string(folders.size()) + "\n";
        for (size_t pane = 0; pane < folders.size(); pane++) {
            if (!folders[pane].empty()) {
                lines += "Pane" + std::to_string(pane) + "=" + fTree.Path(folders[pane]) + "\n";
            }
        }
        WriteSettings(lines);
    }

    /// Without waiting for the focus, which an alert may take at once.
    void Show(const std::vector<std::string>& folders = {})
    {
        fWindow = new norvane::NorvaneWindow(BRect(10, 40, 809, 639), true, folders);
        fWindow->Show();
    }

    void Open(const std::vector<std::string>& folders = {})
    {
        Show(folders);
        ASSERT_TRUE(kits::testing::WaitForFocus(fWindow));
    }

    /// Runs `work` in the window's lock.
    void Locked(const std::function<void()>& work)
    {
        const BAutolock lock(fWindow);
        ASSERT_TRUE(lock.IsLocked());
        work();
    }

    std::string PanePath(int32 pane)
    {
        std::string path;
        Locked([&] { path = fWindow->PaneAt(pane)->GetDirView()->Path(); });
        return path;
    }

    int32 CountPanes()
    {
        int32 count = 0;
        Locked([&] { count = fWindow->CountPanes(); });
        return count;
    }

    void Focus(int32 pane)
    {
        Locked([&] { fWindow->PaneAt(pane)->SetFocus(); });
    }

    int32 FocusedPane()
    {
        int32 found = -1;
        Locked([&] {
            for (int32 pane = 0; pane < fWindow->CountPanes(); pane++) {
                if (fWindow->PaneAt(pane) == fWindow->GetFocusedPane()) {
                    found = pane;
                }
            }
        });
        return found;
    }

    void Send(uint32 what)
    {
        fWindow->PostMessage(what);
        ASSERT_TRUE(kits::testing::Sync(fWindow));
    }

    void Send(BMessage& message)
    {
        fWindow->PostMessage(&message);
        ASSERT_TRUE(kits::testing::Sync(fWindow));
    }

    /// Does `work` on a thread of its own and answers each alert of the settings that it opens;
    /// gives their texts.
    std::vector<std::string> AnswerAlertsOf(const std::function<void()>& work)
    {
        constexpr const char* kTitle = "Hey";
        std::vector<std::string> texts;
        const std::future<void> done = std::async(std::launch::async, work);
        const auto isDone = [&] {
            return done.wait_for(std::chrono::seconds(0)) == std::future_status::ready;
        };
        const auto isShown = [] {
            return kits::testing::CountShown(kTitle) > 0;
        };
        while (kits::testing::WaitFor([&] { return isDone() || isShown(); }) && !isDone()) {
            const BMessenger alert(nullptr, kits::testing::WaitForWindow(kTitle));
            std::string text;
            EXPECT_TRUE(kits::testing::AnswerAlert("Oh well", &text));
            EXPECT_TRUE(kits::testing::WaitFor([&] { return !alert.IsValid(); }));
            texts.push_back(text);
        }
        EXPECT_TRUE(isDone());
        return texts;
    }

    /// Selects the row of that name in a pane.
    void Select(int32 pane, const std::string& name)
    {
        Locked([&] {
            norvane::DirView* list = fWindow->PaneAt(pane)->GetDirView();
            for (int32 row = 0; row < list->CountItems(); row++) {
                if (list->RowAt(row)->GetEntryName() == name) {
                    list->Select(row);
                    return;
                }
            }
            FAIL() << "no row " << name;
        });
    }

    bool HasRow(int32 pane, const std::string& name)
    {
        bool isFound = false;
        Locked([&] {
            const norvane::DirView* list = fWindow->PaneAt(pane)->GetDirView();
            for (int32 row = 0; row < list->CountItems(); row++) {
                isFound = isFound || list->RowAt(row)->GetEntryName() == name;
            }
        });
        return isFound;
    }

    TempTree fTree;
    const Variable fDataHome{"XDG_DATA_HOME", fTree.Path("data").c_str()};
    norvane::NorvaneWindow* fWindow = nullptr; // deletes itself
};
