#pragma once

#include <View.h>

#include <string>

/// Draws one line of text that a person cannot change.
class BStringView : public BView
{
public:
    /// Copies the text; null counts as empty.
    BStringView(BRect frame, const char* name, const char* text,
                uint32 resizingMode = B_FOLLOW_LEFT | B_FOLLOW_TOP, uint32 flags = B_WILL_DRAW);

    /// Changes the text; drawn again only when it differs. Null counts as empty.
    void SetText(const char* text);
    const char* Text() const { return fText.c_str(); }
    void SetAlignment(alignment flag);
    alignment Alignment() const { return fAlignment; }
    /// Shortens text that is wider than the view: B_TRUNCATE_MIDDLE for paths, B_TRUNCATE_END.
    /// By default the text is cut off at the edge. An extension of the platform.
    void SetTruncation(uint32 mode);

    // BView
    void Describe(BViewDescription* description) const override;
    void AttachedToWindow() override;
    void Draw(BRect updateRect) override;
    void GetPreferredSize(float* width, float* height) override;
    void ResizeToPreferred() override;

private:
    std::string fText;
    alignment fAlignment = B_ALIGN_LEFT;
    bool fIsTruncated = false;
    uint32 fTruncation = 0;
};
