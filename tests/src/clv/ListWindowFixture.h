#pragma once

#include "TestRow.h"
#include "clv/CLVColumnLabelView.h"
#include "clv/CLVContainerView.h"

#include <Autolock.h>
#include <ScrollBar.h>
#include <Window.h>

#include <gtest/gtest.h>

/// A column list in a shown window that is just as large as the list's container.
class ListWindowFixture : public ::testing::Test
{
protected:
    static constexpr float kWidth = 299; // of the strip and the rows
    static constexpr float kHeight = 199;

    void TearDown() override
    {
        if (fWindow != nullptr && fWindow->Lock()) {
            fWindow->Quit();
        }
    }

    void Open(bool isHierarchical = false, bool hasBars = true)
    {
        fList = new TestList(isHierarchical, hasBars);
        norvane::CLVContainerView* container = fList->Container();
        fWindow = new BWindow(container->Bounds().OffsetToCopy(100, 100), "list", B_TITLED_WINDOW,
                              B_ASYNCHRONOUS_CONTROLS);
        fWindow->AddChild(container);
        fWindow->Show();
        ASSERT_TRUE(kits::testing::WaitForFocus(fWindow));
    }

    /// What `read` says, read under the window's lock.
    template<class Read>
    auto Locked(Read read)
    {
        const BAutolock lock(fWindow);
        EXPECT_TRUE(lock.IsLocked());
        return read();
    }

    void AddColumns(const std::vector<float>& widths)
    {
        Locked([&] {
            for (const float width : widths) {
                fList->AddColumn(
                    new norvane::CLVColumn("column", width, norvane::CLV_SORT_KEYABLE));
            }
        });
    }

    void AddColumn(float width, uint32 flags)
    {
        Locked([&] { fList->AddColumn(new norvane::CLVColumn("column", width, flags)); });
    }

    void AddRows(int count)
    {
        Locked([&] {
            for (int row = 0; row < count; row++) {
                fList->Add("row");
            }
        });
    }

    void Settle()
    {
        kits::testing::SyncServer();
        ASSERT_TRUE(kits::testing::Sync(fWindow));
    }

    // The pointer's places are the container's, which does not scroll.

    void Press(BPoint where, uint32 button = B_PRIMARY_MOUSE_BUTTON, uint32 modifiers = 0)
    {
        kits::testing::PressMouse(fList->Container(), where, button, modifiers);
        Settle();
    }

    void Move(BPoint where)
    {
        kits::testing::MoveMouse(fList->Container(), where);
        Settle();
    }

    void Release(BPoint where, uint32 button = B_PRIMARY_MOUSE_BUTTON, uint32 modifiers = 0)
    {
        kits::testing::ReleaseMouse(fList->Container(), where, button, modifiers);
        Settle();
    }

    void Click(BPoint where, uint32 button = B_PRIMARY_MOUSE_BUTTON, uint32 modifiers = 0)
    {
        Press(where, button, modifiers);
        Release(where, button, modifiers);
    }

    void ScrollTo(float left, float top)
    {
        Locked([&] { fList->ScrollTo(BPoint(left, top)); });
        Settle();
    }

    float Width(int32 column)
    {
        return Locked([&] { return fList->ColumnAt(column)->Width(); });
    }

    /// The columns' indices from left to right.
    std::string Order()
    {
        return Locked([&] {
            std::string text;
            const std::unique_ptr<int32[]> order(fList->DisplayOrder());
            for (int32 place = 0; place < fList->CountDisplayed(); place++) {
                text += std::to_string(order[place]);
            }
            return text;
        });
    }

    std::string Keys()
    {
        return Locked([&] { return fList->Keys(); });
    }

    BWindow* fWindow = nullptr; // deletes itself
    TestList* fList = nullptr;  // in the window
};
