#pragma once

#include "MessageCodes.h"
#include "TempTree.h"
#include "testing/Driver.h"
#include "viewer/ViewedText.h"
#include "viewer/ViewerWindow.h"
#include "viewer/iview.h"

#include <Application.h>
#include <Autolock.h>
#include <MenuBar.h>
#include <MenuItem.h>
#include <Message.h>
#include <ScrollBar.h>

#include <QImage>

#include <gtest/gtest.h>

#include <memory>
#include <string>

/// A program that shows what it is asked to, as the whole program does.
class ViewingApplication : public BApplication
{
public:
    ViewingApplication() : BApplication("application/x-vnd.test-viewing") {}

    void RefsReceived(BMessage* message) override { norvane::ViewerWindow::RefsReceived(message); }
    void MessageReceived(BMessage* message) override
    {
        if (message->what == norvane::kOpenViewers) {
            norvane::ViewerWindow::OpenViewers(*message);
        } else {
            BApplication::MessageReceived(message);
        }
    }
};

class ViewingEnvironment : public ::testing::Environment
{
public:
    void SetUp() override
    {
        fApplication = std::make_unique<kits::testing::HeadlessApplication>(
            [] { return new ViewingApplication; });
    }
    void TearDown() override { fApplication.reset(); }

private:
    std::unique_ptr<kits::testing::HeadlessApplication> fApplication;
};

inline ::testing::Environment* const gViewingEnvironment =
    ::testing::AddGlobalTestEnvironment(new ViewingEnvironment);

/// A viewer on a file of a tree.
class ViewerFixture : public ::testing::Test
{
protected:
    void TearDown() override { Close(); }

    void Close()
    {
        if (fWindow != nullptr && fWindow->Lock()) {
            fWindow->Quit();
        }
        fWindow = nullptr;
    }

    /// What `read` says, read under the window's lock.
    template<class Read>
    auto Locked(Read read)
    {
        const BAutolock lock(fWindow);
        EXPECT_TRUE(lock.IsLocked());
        return read();
    }

    void WriteImage(const char* name, int width, int height)
    {
        QImage image(width, height, QImage::Format_RGB32);
        image.fill(Qt::red);
        ASSERT_TRUE(image.save(QString::fromStdString(fTree.Path(name)), "PNG"));
    }

    /// Without waiting for anything.
    void Begin(const std::string& name, BRect frame = BRect(50, 50, 300, 500))
    {
        fWindow = new norvane::ViewerWindow(frame, fTree.Path(name).c_str());
        fWindow->Show();
    }

    void OpenText(const std::string& name)
    {
        Begin(name);
        ASSERT_TRUE(kits::testing::WaitFor([this] { return Text() != nullptr; }));
        ASSERT_TRUE(kits::testing::WaitForFocus(fWindow));
    }

    void OpenImage(const std::string& name)
    {
        Begin(name);
        ASSERT_TRUE(kits::testing::WaitFor([this] {
            return Image() != nullptr && Locked([this] { return Image()->HasImage(); });
        }));
        ASSERT_TRUE(kits::testing::WaitForFocus(fWindow));
    }

    norvane::ViewedText* Text()
    {
        return dynamic_cast<norvane::ViewedText*>(
            Locked([this] { return fWindow->FindView("textView"); }));
    }
    norvane::TImageView* Image()
    {
        return dynamic_cast<norvane::TImageView*>(
            Locked([this] { return fWindow->FindView("imageView"); }));
    }
    BMenuItem* Item(const char* label)
    {
        return Locked([=, this] { return fWindow->KeyMenuBar()->FindItem(label); });
    }

    /// Types the key and waits until the window has done what it asks.
    void Key(char byte)
    {
        kits::testing::TypeKey(byte);
        ASSERT_TRUE(kits::testing::Sync(fWindow));
        // What the view has told the window of the key lies before this.
        ASSERT_TRUE(kits::testing::Sync(fWindow));
    }
    void Send(uint32 what)
    {
        fWindow->PostMessage(what);
        ASSERT_TRUE(kits::testing::Sync(fWindow));
    }
    void Scale(float scale)
    {
        BMessage message(norvane::kScaleImage);
        message.AddFloat("scale", scale);
        message.AddInt32("scale_mode", norvane::kFixedScale);
        fWindow->PostMessage(&message);
        ASSERT_TRUE(kits::testing::Sync(fWindow));
    }

    /// How far the view can be scrolled.
    float Range(BView* view, orientation direction)
    {
        return Locked([=] {
            float least = -1;
            float most = -1;
            view->ScrollBar(direction)->GetRange(&least, &most);
            EXPECT_EQ(least, 0);
            return most;
        });
    }
    float Value(BView* view, orientation direction)
    {
        return Locked([=] { return view->ScrollBar(direction)->Value(); });
    }

    TempTree fTree;
    norvane::ViewerWindow* fWindow = nullptr; // deletes itself
};
