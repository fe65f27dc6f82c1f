#pragma once

#include <View.h>

#include <string>

/// A bar that shows how far something is, with a line of text above it: label and text at the left,
/// trailing text and trailing label at the right.
///
/// The frame keeps its left, top and width; the height is set when the bar is attached or resized:
/// one line of text (15, also without any text), the bar and one unit. Only what changed is drawn
/// again.
class BStatusBar : public BView
{
public:
    /// Makes an empty bar; null labels are empty.
    BStatusBar(BRect frame, const char* name, const char* label = nullptr,
               const char* trailingLabel = nullptr);

    /// Sets the colour of the filled part.
    void SetBarColor(rgb_color color);
    /// Sets the height of the bar alone. At the start: 16.
    void SetBarHeight(float height);
    /// Replaces the text after the label.
    void SetText(const char* text);
    /// Replaces the text before the trailing label.
    void SetTrailingText(const char* text);
    /// Sets the value at which the bar is full. At the start: 100.
    void SetMaxValue(float max);

    /// Adds `delta` to the value, kept within 0..MaxValue(), and replaces the texts that are not
    /// null.
    virtual void Update(float delta, const char* text = nullptr,
                        const char* trailingText = nullptr);
    /// Empties the bar: value 0, texts empty, maximum 100; the labels are replaced (null: none).
    virtual void Reset(const char* label = nullptr, const char* trailingLabel = nullptr);

    /// How far the bar is, of MaxValue().
    float CurrentValue() const { return static_cast<float>(fValue); }
    float MaxValue() const { return static_cast<float>(fMax); }
    /// The colour of the filled part, and the height of the bar alone.
    rgb_color BarColor() const { return fBarColor; }
    float BarHeight() const { return fBarHeight; }
    /// Lends the texts beside the labels, until they change.
    const char* Text() const { return fText.c_str(); }
    const char* TrailingText() const { return fTrailingText.c_str(); }
    /// Lends the labels, until they change.
    const char* Label() const { return fLabel.c_str(); }
    const char* TrailingLabel() const { return fTrailingLabel.c_str(); }

    // BView
    void Describe(BViewDescription* description) const override;
    void AttachedToWindow() override;
    void MessageReceived(BMessage* message) override;
    void Draw(BRect updateRect) override;
    void FrameResized(float width, float height) override;
    void GetPreferredSize(float* width, float* height) override;

private:
    BRect TextLine() const;
    BRect BarFrame() const;
    float FilledWidth() const;
    void TakeOwnHeight();
    void SetLeftText(const std::string& label, const std::string& text);
    void SetRightText(const std::string& text, const std::string& label);
    void InvalidateTexts();
    void ShowValue(double value, double max);
    void DrawTexts();
    void DrawBar();

    std::string fLabel;
    std::string fText;
    std::string fTrailingText;
    std::string fTrailingLabel;
    double fValue = 0; // a float stops counting bytes at 16 MiB
    double fMax = 100;
    float fBarHeight = 16;
    rgb_color fBarColor;
};
