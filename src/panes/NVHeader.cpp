#include "panes/NVHeader.h"

#include "panes/DirPane.h"
#include "panes/StripDrawing.h"

#include <Font.h>
#include <String.h>
#include <ViewDescription.h>

namespace norvane {

NVHeader::NVHeader(BRect frame, const char* text, const char* name, uint32 resizingMode)
    : BView(frame, name, resizingMode, B_WILL_DRAW | B_FULL_UPDATE_ON_RESIZE), fText(text),
      fBaseline(StripBaseline())
{
    SetSelected(false);
}

void NVHeader::Describe(BViewDescription* description) const
{
    description->role = BViewDescription::Role::kStaticText;
    description->name = fText;
}

void NVHeader::Draw(BRect)
{
    DrawStrip(*this, fText.c_str(), fBaseline);
}

void NVHeader::MouseDown(BPoint)
{
    if (auto* pane = dynamic_cast<DirPane*>(Parent())) {
        pane->SetFocus();
    }
}

bool NVHeader::GetToolTipAt(BPoint where, BToolTip** tip)
{
    std::string text = BFont::VisibleText(fText.c_str()).String();
    text += fVolume.empty() ? "" : "\n" + fVolume;
    SetToolTip(text.c_str());
    return BView::GetToolTipAt(where, tip);
}

void NVHeader::SetSelected(bool isSelected)
{
    fIsSelected = isSelected;
    const rgb_color background = isSelected ? DirPane::kSelection : DirPane::kBackground;
    SetViewColor(background);
    SetLowColor(background);
    SetHighColor(isSelected ? DirPane::kWhite : DirPane::kBlack);
    Invalidate();
}

} // namespace norvane
