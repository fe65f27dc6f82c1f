#pragma once

#include <View.h>

#include <string>

class BTextView;

namespace norvane {

class FilterText;

/// Whoever a filter's field is for.
class FilterOwner
{
public:
    virtual ~FilterOwner() = default;

    /// Another text is in the field.
    virtual void FilterTyped(const std::string& text) = 0;
    /// The text got the focus, or lost it.
    virtual void FilterFocused(bool isFocused) = 0;
    /// The keys go to the list again; the filter stays.
    virtual void FilterLeft() = 0;
    /// The filter is to end. The field may be deleted in here.
    virtual void FilterCancelled() = 0;
    /// A key that is for the list, not for the text.
    virtual void FilterPassesKey(const char* bytes, int32 byteCount) = 0;
};

/// The strip below a pane's list with the text that names are to hold.
///
/// Thread: its window's. Ownership: borrows the owner for its whole life.
class FilterField : public BView
{
public:
    FilterField(FilterOwner& owner, const std::string& text);
    ~FilterField() override;

    // BView
    void Describe(BViewDescription* description) const override;
    void Draw(BRect updateRect) override;
    void FrameResized(float width, float height) override;
    void MouseDown(BPoint where) override;

    /// Resizes the strip, and the text in it.
    void ResizeTo(float width, float height);
    /// Keys go to the text from now on, behind what is there.
    void Take();
    bool HasFocus() const;
    BTextView* TextView() const;

private:
    void LayOut();

    FilterText* fText; // a child
};

} // namespace norvane
