#include <TabView.h>

#include <utility>

BTab::BTab(BView* contents) : fView(contents) {}

BTab::~BTab()
{
    delete fView; // which leaves its container
}

void BTab::SetLabel(const char* label)
{
    fHasLabel = label != nullptr;
    fLabel = label != nullptr ? label : "";
    if (fOwner != nullptr) {
        fOwner->InvalidateTabs();
    }
}

const char* BTab::Label() const
{
    if (!fHasLabel && fView != nullptr && fView->Name() != nullptr) {
        return fView->Name();
    }
    return fLabel.c_str();
}

void BTab::SetView(BView* contents)
{
    if (contents == fView) {
        return;
    }
    if (fOwner != nullptr) {
        fOwner->TakeOut(*this);
    }
    delete std::exchange(fView, contents);
    if (fOwner != nullptr) {
        fOwner->PutIn(*this);
        fOwner->InvalidateTabs();
    }
}

void BTab::SetEnabled(bool enabled)
{
    fIsEnabled = enabled;
    if (fOwner != nullptr) {
        fOwner->InvalidateTabs();
    }
}

bool BTab::IsSelected() const
{
    return fOwner != nullptr && fOwner->TabAt(fOwner->Selection()) == this;
}
