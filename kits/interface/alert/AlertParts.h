#pragma once

#include "interface/text/TextLines.h"
#include "kernel/Mutex.h"

#include <Alert.h>
#include <View.h>

#include <string>
#include <vector>

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

/// Fills an alert: the icon on its strip and the text beside it.
class AlertTextView : public BView
{
public:
    AlertTextView(BRect frame, const std::string& text, alert_type type);

    /// Breaks the text for a width of the whole view and tells how high it must be then.
    float HeightFor(float width);
    /// Whether a line that begins with a tab, one of a list, would be broken at that width.
    bool BreaksAListLine(float width) const;
    alert_type Type() const { return fType; }
    void SetType(alert_type type);
    /// Where the text begins.
    float TextLeft() const;

    // BView
    void Draw(BRect updateRect) override;

private:
    std::string fText;
    alert_type fType;
    std::vector<std::string> fLines;
};

} // namespace kits
