#pragma once

#include <Point.h>
#include <Referenceable.h>
#include <ViewConstants.h>

#include <memory>
#include <string>

class BView;

/// What is shown in a small window below the pointer once that rests over a view: see
/// BView::SetToolTip().
///
/// Thread: that of the window over which it is shown, or whoever holds its lock. Ownership: shared,
/// by references; a view holds one to its tip.
class BToolTip : public BReferenceable
{
public:
    /// Made with one reference, the caller's.
    BToolTip();
    ~BToolTip() override;

    /// What the window shows, in its preferred size. Ownership: the tip's; while it is shown the
    /// view lies in that window.
    virtual BView* View() const = 0;

    /// A sticky tip stays while the pointer moves within its view.
    void SetSticky(bool enable) { fIsSticky = enable; }
    bool IsSticky() const { return fIsSticky; }
    /// Where its left top lies from the pointer on, where the screen has room; (0, 20) at first.
    void SetMouseRelativeLocation(BPoint location) { fLocation = location; }
    BPoint MouseRelativeLocation() const { return fLocation; }

private:
    BPoint fLocation{0, 20};
    bool fIsSticky = false;
};

/// A tip of text; long lines are wrapped, and "\n" begins a new one.
class BTextToolTip : public BToolTip
{
public:
    /// Copies the text; null counts as empty.
    explicit BTextToolTip(const char* text);
    ~BTextToolTip() override;

    // BToolTip
    BView* View() const override;

    const char* Text() const { return fText.c_str(); }
    /// Shown from the next time on.
    void SetText(const char* text);

private:
    std::string fText;
    mutable std::unique_ptr<BView> fView; // made when it is first asked for
    mutable bool fIsViewOld = false;      // it shows another text
};
