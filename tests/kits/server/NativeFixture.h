#pragma once

#include "Recorder.h"

#include <ApplicationEnvironment.h>
#include <Window.h>

#include "server/FrontImage.h"
#include "server/WindowLink.h"

#include <QImage>

#include <gtest/gtest.h>

#include <memory>

/// A native window without a BWindow: the looper behind it records what the server posts.
class TestWindow
{
public:
    TestWindow(const char* title, BRect frame, uint32 flags = 0) : fLooper(new Recorder(title))
    {
        fShape.title = std::string(title);
        fShape.frame = frame;
        fShape.flags = flags;
        fLink = std::make_unique<kits::WindowLink>(fLooper, fShape);
    }
    ~TestWindow()
    {
        fLink.reset();
        fLooper->Release();
        if (fLooper->Lock()) {
            fLooper->Quit();
        }
    }
    TestWindow(const TestWindow&) = delete;
    TestWindow& operator=(const TestWindow&) = delete;

    /// Fills the first frame with a colour and shows the window.
    void Show(kits::ShowRequest request = {}, QColor color = Qt::red)
    {
        Paint(color);
        fLink->Show(request);
    }
    void Paint(QColor color)
    {
        const int width = fShape.frame.IntegerWidth() + 1;
        const int height = fShape.frame.IntegerHeight() + 1;
        QImage canvas(QSize(width, height) * static_cast<double>(fLink->Scale()),
                      QImage::Format_RGB32);
        canvas.setDevicePixelRatio(static_cast<double>(fLink->Scale()));
        canvas.fill(color);
        if (fLink->Front().Update(canvas, QRegion(canvas.rect()))) {
            fLink->Present();
        }
    }
    bool WaitForActivation() const { return fLooper->WaitForCount(B_WINDOW_ACTIVATED, 1); }

    kits::WindowLink& Link() const { return *fLink; }
    Recorder& Looper() const { return *fLooper; }
    kits::WindowShape& Shape() { return fShape; }
    int32 Token() const { return fLink->Token(); }

private:
    Recorder* fLooper; // ends itself in Quit()
    kits::WindowShape fShape;
    std::unique_ptr<kits::WindowLink> fLink;
};

/// Waits until the window's looper has handled what was posted to it.
inline bool Sync(const TestWindow& window)
{
    constexpr uint32 kMark = 'Mark';
    kits::testing::SyncServer();
    const size_t before = window.Looper().Count(kMark);
    window.Looper().PostMessage(kMark);
    return window.Looper().WaitForCount(kMark, before + 1);
}

class NativeFixture : public ::testing::Test
{
protected:
    NativeFixture() : fA("A", BRect(50, 60, 249, 209)), fB("B", BRect(90, 100, 189, 159)) {}

    static kits::ShowRequest OpenedBy(const TestWindow& opener)
    {
        kits::ShowRequest request;
        request.opener = opener.Token();
        return request;
    }
    static kits::ShowRequest ModalFor(const TestWindow& opener)
    {
        kits::ShowRequest request = OpenedBy(opener);
        request.isModal = true;
        request.isExemptFromModal = true;
        return request;
    }
    void ShowA()
    {
        fA.Show();
        ASSERT_TRUE(fA.WaitForActivation());
    }

    TestWindow fA;
    TestWindow fB;
};
