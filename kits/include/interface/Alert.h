#pragma once

#include <Window.h>

#include <memory>
#include <string>
#include <vector>

class BButton;
class BInvoker;

namespace kits {
class AlertAnswer;
class AlertTextView;
} // namespace kits

/// Which icon an alert shows; B_EMPTY_ALERT shows none.
enum alert_type {
    B_EMPTY_ALERT = 0,
    B_INFO_ALERT,
    B_IDEA_ALERT,
    B_WARNING_ALERT,
    B_STOP_ALERT,
};

/// How an alert's buttons stand.
enum button_spacing {
    B_EVEN_SPACING = 0,
    B_OFFSET_SPACING, // the leftmost button stands apart from the others
};

/// A window with a text and one to three buttons that waits for an answer.
///
/// The rightmost button is the default one. Escape presses the button labelled "Cancel", or the
/// only button. Answers count only once the alert was on the screen long enough to be read.
/// Ownership: deletes itself once it is answered.
class BAlert : public BWindow
{
public:
    /// Makes the alert, hidden; Go() shows it. A null `button2` or `button3` is left out. `width`
    /// says whether all buttons are as wide as the widest.
    BAlert(const char* title, const char* text, const char* button1, const char* button2 = nullptr,
           const char* button3 = nullptr, button_width width = B_WIDTH_AS_USUAL,
           alert_type type = B_INFO_ALERT);
    BAlert(const char* title, const char* text, const char* button1, const char* button2,
           const char* button3, button_width width, button_spacing spacing, alert_type type);
    ~BAlert() override;

    /// Sets the key that presses a button, without modifiers. Button 0 is the leftmost.
    void SetShortcut(int32 button, char key);
    /// That key; 0 for none and for a button that is not there.
    char Shortcut(int32 button) const;

    /// Shows the alert and waits; returns the index of the button that was pressed.
    /// A window whose thread waits here goes on painting but takes no input.
    /// Thread: any but the server's. The alert is gone afterwards.
    int32 Go();
    /// Shows the alert and returns at once; the answer is sent as "which" (int32) of the invoker's
    /// message. Ownership: adopts the invoker (null for none).
    status_t Go(BInvoker* invoker);

    /// The n-th button, or null.
    BButton* ButtonAt(int32 button) const;
    /// Lends the text given.
    const char* Text() const { return fText.c_str(); }
    /// The kind of the alert, as its icon shows it.
    alert_type Type() const;
    /// Shows the icon of another kind; one that comes or goes makes the text move.
    void SetType(alert_type type);

    /// Where an alert of that size goes: centred over the active window, within the screen.
    static BPoint AlertPosition(float width, float height);

    // BWindow
    void MessageReceived(BMessage* message) override;
    void DispatchMessage(BMessage* message, BHandler* handler) override;
    bool QuitRequested() override;

private:
    void AddButtons(BView* parent, const char* const labels[3], button_width width);
    void LayOut();
    float ButtonsWidth() const;
    void PlaceButtons(float top, float offsetGap);
    bool AnswerByKey(const BMessage& key);
    void PlaceOnScreen();
    void Answer(int32 button);

    std::string fText;
    const button_spacing fSpacing;
    kits::AlertTextView* fTextView; // a child
    std::vector<BButton*> fButtons; // children, from the left
    std::vector<char> fShortcuts;
    std::shared_ptr<kits::AlertAnswer> fAnswer; // shared with the thread that waits
    std::unique_ptr<BInvoker> fInvoker;
};
