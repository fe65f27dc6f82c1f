#pragma once

#include "ApplicationEnvironment.h"

#include <Autolock.h>
#include <View.h>
#include <Window.h>

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

/// A view that notes the hooks it is called by, and draws what a test wants.
class NotingView : public BView
{
public:
    NotingView(BRect frame, const char* name, uint32 resizingMode = B_FOLLOW_NONE,
               uint32 flags = B_WILL_DRAW | B_NAVIGABLE)
        : BView(frame, name, resizingMode, flags)
    {
    }

    void AttachedToWindow() override { Note("attached"); }
    void AllAttached() override { Note("all attached"); }
    void DetachedFromWindow() override { Note("detached"); }
    void AllDetached() override { Note("all detached"); }
    void Draw(BRect updateRect) override
    {
        drawn.push_back(updateRect);
        if (paint) {
            paint(*this);
        }
    }
    void KeyDown(const char* bytes, int32 byteCount) override
    {
        Note("key " + std::string(bytes, static_cast<size_t>(byteCount)));
        BView::KeyDown(bytes, byteCount);
    }
    void MouseDown(BPoint where) override
    {
        Note("down " + At(where));
        if (takesMouse) {
            SetMouseEventMask(B_POINTER_EVENTS);
        }
        if (onPress) {
            onPress();
        }
    }
    void MouseUp(BPoint where) override { Note("up " + At(where)); }
    void MouseMoved(BPoint where, uint32 transit, const BMessage*) override
    {
        static const char* const kNames[] = {"entered ", "inside ", "exited ", "outside "};
        Note(kNames[transit] + At(where));
    }
    void FrameResized(float width, float height) override { Note("size " + At({width, height})); }
    void WindowActivated(bool active) override { activations += active ? "+" : "-"; }

    std::vector<std::string>* notes = &ownNotes;
    std::vector<std::string> ownNotes;
    std::vector<BRect> drawn;
    std::function<void(BView&)> paint;
    std::function<void()> onPress;
    std::string activations;
    bool takesMouse = false;

private:
    static std::string At(BPoint where)
    {
        return std::to_string(static_cast<int>(where.x)) + "," +
               std::to_string(static_cast<int>(where.y));
    }
    void Note(const std::string& what) { notes->push_back(std::string(Name()) + " " + what); }
};

/// A window of 200 x 100 units at (100, 100), shown by Show().
class WindowFixture : public ::testing::Test
{
protected:
    void SetUp() override
    {
        fWindow = new BWindow(BRect(100, 100, 299, 199), "Test", B_TITLED_WINDOW, 0);
    }
    void TearDown() override
    {
        if (fWindow != nullptr && fWindow->Lock()) {
            fWindow->Quit();
        }
    }

    NotingView* Add(BRect frame, const char* name, BView* parent = nullptr,
                    uint32 mode = B_FOLLOW_NONE, uint32 flags = B_WILL_DRAW | B_NAVIGABLE)
    {
        auto* view = new NotingView(frame, name, mode, flags);
        view->notes = &fNotes;
        if (parent != nullptr) {
            parent->AddChild(view);
        } else {
            fWindow->AddChild(view);
        }
        return view;
    }

    void Show()
    {
        fWindow->Show();
        ASSERT_TRUE(kits::testing::WaitForFocus(fWindow));
        ASSERT_TRUE(kits::testing::Sync(fWindow));
    }

    /// Runs `work` in the window's lock.
    void Locked(const std::function<void()>& work)
    {
        const BAutolock lock(fWindow);
        ASSERT_TRUE(lock.IsLocked());
        work();
    }

    std::vector<std::string> TakeNotes()
    {
        std::vector<std::string> taken;
        Locked([&] { taken.swap(fNotes); });
        return taken;
    }

    BWindow* fWindow = nullptr; // deletes itself
    std::vector<std::string> fNotes;
};
