#include "panes/DirPane.h"
#include "panes/DirView.h"

// The filter of a pane: between its list and the field.

namespace norvane {

// The list

void DirView::OpenFilter()
{
    if (auto* pane = dynamic_cast<DirPane*>(fPane)) {
        fRows.BeginFilter();
        pane->OpenFilter();
    }
}

bool DirView::EndFilter()
{
    if (!fRows.IsFiltered()) {
        return false;
    }
    fRows.EndFilter();
    RefreshNote();
    ShowFilterField();
    return true;
}

void DirView::ShowFilterField()
{
    if (auto* pane = dynamic_cast<DirPane*>(fPane)) {
        pane->ShowFilter();
    }
}

// The pane

void DirPane::OpenFilter()
{
    ShowFilter();
    fFilter->Take();
}

void DirPane::ShowFilter()
{
    if (fList->Rows().IsFiltered() == (fFilter != nullptr)) {
        return;
    }
    if (fFilter == nullptr) {
        fFilter = new FilterField(*this, fList->Rows().FilterText());
        AddChild(fFilter); // adopted
    } else {
        if (fFilter->HasFocus()) {
            SetFocus();
        }
        fFilter->RemoveSelf();
        delete fFilter;
        fFilter = nullptr;
    }
    LayOut(Bounds().Width(), Bounds().Height());
    fList->ScrollToSelection();
}

void DirPane::FilterTyped(const std::string& text)
{
    fList->SetFilter(text);
}

void DirPane::FilterFocused(bool isFocused)
{
    HightlighHeader(isFocused);
}

/// An empty field hides nothing: nobody wants it to stay.
void DirPane::FilterLeft()
{
    SetFocus();
    if (fList->Rows().FilterText().empty()) {
        fList->EndFilter();
    }
}

void DirPane::FilterCancelled()
{
    fList->EndFilter();
}

void DirPane::FilterPassesKey(const char* bytes, int32 byteCount)
{
    fList->KeyDown(bytes, byteCount);
}

} // namespace norvane
