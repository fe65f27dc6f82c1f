#pragma once

#include "properties/PropertiesReading.h"

#include <View.h>

#include <memory>
#include <string>

class BCheckBox;
class BScrollBar;
class BStringView;

namespace norvane {

class FactsView;
class ModeGrid;

/// All that a properties window shows but its buttons, for a BScrollView with a vertical bar: the
/// name, what is known, the permissions.
///
/// The bar is shown only while not all has room; what gets the focus scrolls into sight, and the
/// keys for pages and lines scroll. Thread: the window's, or with it locked.
class PropertiesPage : public BView
{
public:
    explicit PropertiesPage(BRect frame);
    ~PropertiesPage() override;

    /// Shows what was read; the permissions only at the first time, since they are the person's
    /// from then on.
    void SetTo(const ReadProperties& read);
    /// What is changed by now: the grid's number, and how many entries in folders that concerns.
    void ModeTouched(const Tally& contents, bool isCounted);
    /// Whether anything may be changed.
    void SetEnabled(bool isEnabled);
    ModeChange Change() const;
    /// Whether what is in the folders is to be changed, too.
    bool GoesInside() const;

    /// Scrolls until `place` is seen, as far as it can be.
    void Reveal(BRect place);
    /// The height of all that it shows, and the least width for that.
    float ContentsHeight() const { return fContentsHeight; }
    float LeastWidth() const;

    // BView
    void Draw(BRect updateRect) override;
    void AttachedToWindow() override;
    void FrameResized(float width, float height) override;
    void KeyDown(const char* bytes, int32 byteCount) override;
    void TargetedByScrollView(BScrollView* scrollView) override;

private:
    void ShowLines(const ReadProperties& read);
    float Divider() const;
    void Place();
    float PlaceInside(float left, float top);
    void PutAt(BView* view, float left, float top, float height) const;
    float RightEdge() const;
    void FitBar();
    void DrawHead();

    std::string fTitle; // the name, or how many
    std::string fKind;
    std::shared_ptr<const BBitmap> fIcon;
    FactsView* fFacts = nullptr; // this and those below are children
    FactsView* fMore = nullptr;
    std::unique_ptr<ModeGrid> fGrid;
    BCheckBox* fInside = nullptr;
    BStringView* fRule = nullptr; // what that means
    BStringView* fPreview = nullptr;
    BScrollBar* fBar = nullptr; // the scroll view's
    bool fHidesBar = false;
    bool fHasModes = false;   // shown
    bool fHasFolders = false; // among what is shown
    float fLineAbove = 0;     // the permissions
    float fLineBelow = 0;
    float fContentsHeight = 0;
};

} // namespace norvane
