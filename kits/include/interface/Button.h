#pragma once

#include <Control.h>

#include <memory>

namespace kits {
class Ticker;
}

/// A labelled button that sends its message when it is clicked or pressed by Space or Enter.
class BButton : public BControl
{
public:
    /// Ownership: adopts `message`, which may be null.
    BButton(BRect frame, const char* name, const char* label, BMessage* message,
            uint32 resizingMode = B_FOLLOW_LEFT | B_FOLLOW_TOP,
            uint32 flags = B_WILL_DRAW | B_NAVIGABLE);
    ~BButton() override;

    // BView
    void Draw(BRect updateRect) override;
    void MouseDown(BPoint where) override;
    void AttachedToWindow() override;
    void DetachedFromWindow() override;
    void MessageReceived(BMessage* message) override;
    void KeyDown(const char* bytes, int32 byteCount) override;
    void MouseUp(BPoint where) override;
    void MouseMoved(BPoint where, uint32 transit, const BMessage* dragged) override;
    void GetPreferredSize(float* width, float* height) override;
    void ResizeToPreferred() override;
    void Describe(BViewDescription* description) const override;

    /// Makes this the window's default button, which answers Enter; the former one loses it.
    /// The frame grows by the default mark's breadth, so that the face keeps its place and size.
    virtual void MakeDefault(bool isDefault);
    bool IsDefault() const { return fIsDefault; }

    // BControl
    void SetLabel(const char* label) override;
    status_t Invoke(BMessage* message = nullptr) override;

private:
    void DrawOutline(BRect frame, rgb_color color);
    void DrawDefaultMark();
    void DrawFace(BRect face, bool isDown);
    void DrawLabel(BRect face, bool isDown);
    BRect Face() const;

    std::unique_ptr<kits::Ticker> fFlash; // while a press by a key is shown
    bool fIsDefault = false;
};
