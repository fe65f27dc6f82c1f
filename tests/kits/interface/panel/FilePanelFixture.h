#pragma once

#include "ApplicationEnvironment.h"
#include "TempTree.h"
#include "interface/panel/PanelList.h"

#include <FilePanel.h>
#include <Looper.h>
#include <Message.h>
#include <StringView.h>
#include <TextControl.h>
#include <Window.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>
#include <mutex>
#include <string>
#include <sys/stat.h>
#include <vector>

/// Keeps what a panel sends.
class Listener : public BLooper
{
public:
    Listener() : BLooper("listener") { Run(); }

    void MessageReceived(BMessage* message) override
    {
        const std::lock_guard lock(fMutex);
        fCame.push_back(*message);
    }

    std::vector<BMessage> Came()
    {
        const std::lock_guard lock(fMutex);
        return fCame;
    }

private:
    std::mutex fMutex;
    std::vector<BMessage> fCame;
};

/// A folder "shown" with three files and a folder, and somebody whom panels send to.
class FilePanelFixture : public ::testing::Test
{
protected:
    void SetUp() override
    {
        fTree.MakeFolder("settings");
        setenv("XDG_CONFIG_HOME", fTree.Path("settings").c_str(), 1);
        fTree.Write("shown/b10", "");
        fTree.Write("shown/b9", "");
        fTree.Write("shown/Zebra", "");
        fTree.Write("shown/folder/inner", "");
        fListener = new Listener; // ended below
        fTarget = BMessenger(fListener);
    }

    void TearDown() override
    {
        fPanel.reset();
        if (fListener->Lock()) {
            fListener->Quit();
        }
    }

    void Open(const std::string& folder, uint32 flavors = 0, bool takesSeveral = true)
    {
        entry_ref ref;
        ASSERT_EQ(get_ref_for_path(fTree.Path(folder).c_str(), &ref), B_OK);
        fPanel = std::make_unique<BFilePanel>(B_OPEN_PANEL, &fTarget, &ref, flavors, takesSeveral);
        ShowPanel();
        EXPECT_TRUE(kits::testing::WaitFor([&] { return Shown() == fTree.Path(folder); }))
            << Shown();
    }

    void ShowPanel()
    {
        fPanel->Show();
        ASSERT_TRUE(kits::testing::WaitForFocus(fPanel->Window()));
        ASSERT_TRUE(kits::testing::WaitUntilKeysAnswer(fPanel->Window()));
    }

    template<typename Ask>
    auto Locked(Ask ask) const
    {
        BWindow* window = fPanel->Window();
        const bool isLocked = window->Lock();
        EXPECT_TRUE(isLocked);
        auto answer = ask(window);
        window->Unlock();
        return answer;
    }

    std::string Shown() const
    {
        return Locked([](BWindow* window) {
            return std::string(dynamic_cast<BStringView*>(window->FindView("Path"))->Text());
        });
    }

    std::string Names() const
    {
        return Locked([](BWindow* window) {
            const auto* list = dynamic_cast<kits::PanelList*>(window->FindView("PoseView"));
            std::string names;
            for (int32 i = 0; i < list->CountItems(); ++i) {
                names += std::string(list->EntryAt(i)->ref.name) + " ";
            }
            return names;
        });
    }

    std::string Typed() const
    {
        return Locked([](BWindow* window) {
            return std::string(dynamic_cast<BTextControl*>(window->FindView("Name"))->Text());
        });
    }

    std::string Selected() const
    {
        entry_ref ref;
        fPanel->Rewind();
        return fPanel->GetNextSelectedRef(&ref) == B_OK ? ref.name : "";
    }

    /// The name of the one entry that was sent, after `count` messages in all.
    std::string Sent(size_t count = 1)
    {
        if (!kits::testing::WaitFor([&] { return fListener->Came().size() >= count; })) {
            return "(nothing)";
        }
        const BMessage last = fListener->Came().back();
        entry_ref ref;
        entry_ref more;
        if (last.what == B_CANCEL) {
            return "(cancelled)";
        }
        return last.FindRef("refs", 0, &ref) == B_OK && last.FindRef("refs", 1, &more) != B_OK
                   ? ref.name
                   : "(not one)";
    }

    TempTree fTree;
    Listener* fListener = nullptr;
    BMessenger fTarget;
    std::unique_ptr<BFilePanel> fPanel;
};

/// Passes names that begin with a Z.
class OnlyZebras : public BRefFilter
{
public:
    bool Filter(const entry_ref* ref, BNode* node, struct stat* st, const char* mimeType) override
    {
        isAsked = node != nullptr && S_ISREG(st->st_mode) && mimeType != nullptr;
        return ref->name[0] == 'Z';
    }
    bool isAsked = false;
};
