#pragma once

#include "Checksums/SumJob.h"

#include <EntryRef.h>
#include <Window.h>

#include <memory>
#include <string>
#include <vector>

class BButton;
class BMessageRunner;
class BStatusBar;
class BStringView;
class BTextControl;

namespace checksums {

class SumList;

// Of the window, to itself.
constexpr uint32 kPastedChanged = 'CsPa';
constexpr uint32 kSumTick = 'CsTk';
constexpr uint32 kCopySums = 'CsCp';
constexpr uint32 kSaveSums = 'CsSv';
constexpr uint32 kSumsSaved = 'CsSd';
constexpr uint32 kStopOrClose = 'CsCl';
constexpr float kFullBar = 1000; // however much there is to be read

/// Shows the sums of files as they come, and compares, copies and saves them.
///
/// Ownership: create with `new`; it deletes itself.
class SumWindow : public BWindow
{
public:
    explicit SumWindow(const std::vector<entry_ref>& refs);
    ~SumWindow() override;

    // BWindow
    void DispatchMessage(BMessage* message, BHandler* handler) override;
    void MessageReceived(BMessage* message) override;
    bool QuitRequested() override;

private:
    void BuildContents();
    void AddSums(float top, float bottom);
    void AddButtons(float top);
    void ShowState();
    void ShowMatch();
    void Copy();
    void Save();
    void Saved(const BMessage& message);

    const entry_ref fNeighbour;             // what is saved goes beside it
    std::shared_ptr<SumJob> fJob;           // never null
    std::unique_ptr<BMessageRunner> fTicks; // while it works
    bool fIsSaving = false;

    BView* fGround = nullptr; // children, from here on
    BTextControl* fPasted = nullptr;
    BStringView* fMatch = nullptr;
    SumList* fList = nullptr;
    BStatusBar* fBar = nullptr;
    BStringView* fSummary = nullptr;
    BButton* fCopy = nullptr;
    BButton* fSave = nullptr;
    BButton* fClose = nullptr;
};

} // namespace checksums
