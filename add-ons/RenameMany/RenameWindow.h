#pragma once

#include "RenameMany/RenameWorker.h"

#include <EntryRef.h>
#include <Window.h>

#include <memory>
#include <string>
#include <vector>

class BButton;
class BCheckBox;
class BMenu;
class BMessageRunner;
class BStringView;
class BTextControl;

namespace rename_many {

class RenameList;

// Of the window, to itself.
constexpr uint32 kRulesChanged = 'RnRu';
constexpr uint32 kRenameTick = 'RnTk';
constexpr uint32 kNextFault = 'RnNx';
constexpr uint32 kDoRename = 'RnDo';
constexpr uint32 kDoUndo = 'RnUn';
constexpr uint32 kDoClose = 'RnCl';

/// Asks for the new names of many entries, shows all of them while a person types, renames, and
/// offers to take that back.
///
/// Ownership: create with `new`; it deletes itself.
class RenameWindow : public BWindow
{
public:
    /// The entries, in the order in which they are counted.
    explicit RenameWindow(const std::vector<entry_ref>& refs);
    ~RenameWindow() override;

    // BWindow
    void DispatchMessage(BMessage* message, BHandler* handler) override;
    void MessageReceived(BMessage* message) override;
    void WindowActivated(bool active) override;
    bool QuitRequested() override;

private:
    enum class State : uint8 { kEditing, kRenaming, kRenamed, kUndoing };

    void BuildContents();
    float AddNameRows(float top);
    float AddReplaceRows(float top);
    void AddLetters(float top);
    void AddNames(float top, float bottom);
    void AddButtons(float top);
    bool ReadRules(Rules* rules, std::string* error) const;
    void RulesChanged(bool looks);
    void Rename();
    void Undo();
    void Close();
    void TakeNews();
    void TakeReport(const RenameWorker::Report& report);
    void ShowPreview();
    void ShowProgress();
    void ShowSummary(const std::string& text, bool isWrong);
    void SetState(State state);
    static void SetInputEnabled(BView* input, bool isEnabled);
    bool IsWorking() const { return fState == State::kRenaming || fState == State::kUndoing; }

    std::unique_ptr<RenameWorker> fWorker;  // never null
    std::unique_ptr<BMessageRunner> fTicks; // while it works
    State fState = State::kEditing;
    std::string fError; // of the numbers

    BView* fGround = nullptr; // children, from here on
    float fDivider = 0;
    BTextControl* fPattern = nullptr;
    BTextControl* fStart = nullptr;
    BTextControl* fStep = nullptr;
    BTextControl* fDigits = nullptr;
    BTextControl* fSearch = nullptr;
    BTextControl* fReplacement = nullptr;
    BCheckBox* fIsExpression = nullptr;
    BMenu* fLetters = nullptr;
    BCheckBox* fEndingToo = nullptr;
    std::vector<BView*> fInputs;
    RenameList* fList = nullptr;
    BStringView* fSummary = nullptr;
    BButton* fNext = nullptr;
    BButton* fClose = nullptr;
    BButton* fRename = nullptr;
    BButton* fUndo = nullptr;
};

} // namespace rename_many
