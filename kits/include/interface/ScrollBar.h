#pragma once

#include <View.h>

#include <memory>
#include <string>

namespace kits {
class BarFollower;
class ScrollGeometry;
class ScrollPress;
} // namespace kits

/// A bar with arrows and a thumb that scrolls its target view; the view scrolled otherwise moves
/// the thumb.
///
/// Thread: call with the window locked once the bar is in one.
class BScrollBar : public BView
{
public:
    /// Names the target (null: none yet), which reports its scrolling from now on.
    BScrollBar(BRect frame, const char* name, BView* target, float min, float max,
               orientation direction);
    ~BScrollBar() override;

    /// Moves thumb and target to `value`, kept within the range and rounded to a whole unit.
    void SetValue(float value);
    float Value() const { return fValue; }
    /// The part of the contents that is visible, 0 to 1: the thumb's share of the trough.
    /// 1 hides the thumb; 0 draws it at its usual size.
    void SetProportion(float proportion);
    float Proportion() const { return fProportion; }
    /// Sets the smallest and largest value; a value outside is brought inside. min == max disables
    /// the bar.
    void SetRange(float min, float max);
    void GetRange(float* min, float* max) const;
    /// Sets how far an arrow and a click into the trough scroll. At the start: 1 and 10.
    void SetSteps(float smallStep, float largeStep);
    void GetSteps(float* smallStep, float* largeStep) const;
    /// Changes the view that is scrolled; null scrolls none.
    void SetTarget(BView* target);
    /// Looks the target up by name in the bar's window. Without a window or such a view there is
    /// none.
    void SetTarget(const char* targetName);
    BView* Target() const { return fTarget; }
    orientation Orientation() const { return fOrientation; }

    /// Is told of every new value; scrolls the target along the bar's direction.
    virtual void ValueChanged(float newValue);

    // BView
    void AttachedToWindow() override;
    void DetachedFromWindow() override;
    void MessageReceived(BMessage* message) override;
    void MouseDown(BPoint where) override;
    void MouseUp(BPoint where) override;
    void MouseMoved(BPoint where, uint32 transit, const BMessage* dragged) override;
    void Draw(BRect updateRect) override;
    void FrameResized(float width, float height) override;
    void WindowActivated(bool active) override;
    void Describe(BViewDescription* description) const override;
    void GetPreferredSize(float* width, float* height) override;

private:
    friend class kits::BarFollower;

    kits::ScrollGeometry Geometry() const;
    bool IsUsable() const;
    void Redraw();
    void StepByPart();
    void EndTracking();
    BRect Along(float start, float length) const;
    void DrawTrough(BRect trough);
    void DrawArrow(BRect box, bool isLess);
    BRect ArrowFace(BRect box, bool isLess) const;
    void DrawThumb(BRect thumb);
    void DrawGrip(BRect face);

    BView* fTarget = nullptr; // borrowed; the view clears it when it goes away
    std::string fTargetName;
    orientation fOrientation;
    float fMin = 0;
    float fMax = 0;
    float fSmallStep = 1;
    float fLargeStep = 10;
    float fValue = 0;
    float fProportion = 0;
    std::unique_ptr<kits::BarFollower> fFollower; // never null; what the target knows of the bar
    std::unique_ptr<kits::ScrollPress> fPress;    // null unless a press is being followed
};
