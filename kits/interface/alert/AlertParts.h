#pragma once

#include "kernel/Mutex.h"

#include <Alert.h>
#include <View.h>

#include <string>

class BScrollBar;
class BTextView;

namespace kits {

/// What an alert tells the thread that waits for it.
class AlertAnswer
{
public:
    /// Only the first answer counts.
    void Give(int32 button);
    /// Waits at most that long; true once there is an answer.
    bool WaitFor(bigtime_t microseconds);
    /// The button that was pressed; -1 when the alert went without an answer.
    int32 Button() const;

private:
    mutable Mutex fLock;
    Condition fGiven;
    int32 fButton GUARDED_BY(fLock) = -1;
    bool fIsGiven GUARDED_BY(fLock) = false;
};

/// Fills an alert: the icon on its strip and the text beside it, which scrolls where there is no
/// room for all of it.
class AlertTextView : public BView
{
public:
    AlertTextView(BRect frame, const std::string& text, alert_type type);

    /// How high the view must be to show all of the text when it is that wide.
    float HeightFor(float width);
    /// Sets the text for a width of the view, in whole lines within `height` from its top.
    void SetRoom(float width, float height);
    /// Whether a line that begins with a tab, one of a list, would be broken at that width.
    bool BreaksAListLine(float width) const;
    alert_type Type() const { return fType; }
    void SetType(alert_type type);
    /// Where the text begins.
    float TextLeft() const;
    /// Scrolls as a key of a text says, a page up or down or to an end. False when the key is none
    /// of these, or all of the text is seen.
    bool ScrollByKey(char byte);

    // BView
    void Draw(BRect updateRect) override;

private:
    float TextRoom(float width) const;
    int32 CountLines(float textWidth);

    std::string fText;
    alert_type fType;
    BTextView* fTextView;             // a child
    BScrollBar* fScrollBar = nullptr; // a child; null while all of the text is seen
};

} // namespace kits
