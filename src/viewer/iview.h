#pragma once

#include <View.h>

#include <memory>
#include <string>

class BBitmap;

namespace norvane {

/// How large an image is shown.
enum ScaleMode : int32 {
    kFixedScale = 0,
    kStretched = 1,  // as large as the view
    kLargestFit = 2, // as large as the screen allows: worked out once, then a fixed scale
    kSameMode = 3,
};

/// An image, drawn at a chosen scale or stretched to the view; scrolls where it is larger.
///
/// The image comes later than the view; until then, and when there is none, the view is empty but
/// for what is to be said. Thread: its window's.
class TImageView : public BView
{
public:
    TImageView(BRect frame, float scale, int32 scaleMode);
    ~TImageView() override;

    /// Takes the image, and works out a scale that was waiting for it.
    void SetImage(std::unique_ptr<BBitmap> image);
    /// There is none, for that reason.
    void SetTrouble(const std::string& trouble);
    bool HasImage() const { return fImage != nullptr; }
    const BBitmap* Image() const { return fImage.get(); }

    /// A scale above zero and a mode below kSameMode replace the current ones.
    void SetImageScale(float scale, int32 scaleMode);
    /// Makes the image larger or smaller by a factor, unless it is stretched; what is at a point of
    /// the view stays there as far as it can.
    void ZoomBy(float factor, BPoint where);
    float Scale() const { return fScale; }
    int32 Mode() const { return fMode; }
    /// How large the image is at its scale; -1 where nothing limits it, 0 without a window.
    void GetMaxSize(float* width, float* height) const;
    /// Makes the scroll bars say what of the image is seen.
    void FixupScrollbars();

    // BView
    void AttachedToWindow() override;
    void MessageReceived(BMessage* message) override;
    void Draw(BRect updateRect) override;
    void FrameResized(float width, float height) override;
    void KeyDown(const char* bytes, int32 byteCount) override;
    bool TakesDrops() const override { return true; }
    void Describe(BViewDescription* description) const override;

private:
    float ScaleThatFits() const;
    BRect ImageRect() const;
    void FixupBar(orientation direction, float room, float most);
    void DrawTrouble();
    void AskToZoom(float factor, BPoint where);
    bool ZoomKey(char key);
    void ScrollBy(orientation direction, float share);

    std::unique_ptr<BBitmap> fImage; // null: not loaded yet, or not to be had
    std::string fTrouble;            // why there is none; empty while it is being loaded
    float fScale = 1.0f;
    int32 fMode = kFixedScale;
    BPoint fPlace; // the view's left top where it was made
};

} // namespace norvane
