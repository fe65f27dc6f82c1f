#pragma once

#include "panes/PatternHistory.h"
#include "panes/PatternMarking.h"

#include <Messenger.h>
#include <Window.h>

#include <string>
#include <vector>

class BHandler;
class BStringView;
class BTextControl;

namespace norvane {

/// Asks for a pattern of names. The last one stands in the field, selected; the arrows up and down
/// go through those before it.
///
/// The answer is a kPatternTyped: string "text", bool "marks". A window that is closed otherwise
/// answers nothing.
class PatternWin : public BWindow
{
public:
    /// Centred on `frame`, hidden; stays above the handler's window. The newest pattern is the
    /// first.
    PatternWin(BRect frame, BHandler* target, PatternUse use, std::vector<std::string> last);
    ~PatternWin() override;

    // BWindow
    void WindowActivated(bool active) override;
    void MessageReceived(BMessage* message) override;

    /// Shows the pattern before the one shown, or after.
    void ShowOlder();
    void ShowNewer();

private:
    void BuildContents(const std::string& text);
    void AddButtons(BView& background, float width, float top);
    void ShowPattern(const std::string& text);
    void Answer();

    const BMessenger fTarget;
    const PatternUse fUse;
    HistoryWalk fHistory;
    BStringView* fLabel = nullptr; // the views are borrowed from the window's tree
    BTextControl* fField = nullptr;
};

} // namespace norvane
