#pragma once

#include <View.h>

#include <string>

namespace norvane {

/// The strip above a pane's list that shows its folder; blue when the pane has the focus.
class NVHeader : public BView
{
public:
    NVHeader(BRect frame, const char* text, const char* name, uint32 resizingMode);

    // BView
    void Describe(BViewDescription* description) const override;
    void Draw(BRect updateRect) override;
    void MouseDown(BPoint where) override;
    bool GetToolTipAt(BPoint where, BToolTip** tip) override;

    /// The caller has it redrawn.
    void SetText(const char* text) { fText = text; }
    const std::string& Text() const { return fText; }
    void SetSelected(bool isSelected);
    bool IsSelected() const { return fIsSelected; }
    /// What the tip says of the volume, below the whole path.
    void SetVolume(const std::string& text) { fVolume = text; }

private:
    std::string fText;
    std::string fVolume;
    int fBaseline;
    bool fIsSelected = false;
};

} // namespace norvane
