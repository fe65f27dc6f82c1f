#pragma once

#include <Messenger.h>
#include <OS.h>

#include <memory>
#include <string>

namespace add_ons {

struct ProgressState;

/// Shows how far long work is, in a small window with a button that stops it. Work that is done
/// within half a second shows nothing.
///
/// Thread: that of the work; the window has its own. Ownership: the window goes with this object.
class Progress
{
public:
    explicit Progress(const char* title);
    ~Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    /// How much there is to do; without it the bar stays empty. Units: bytes, as of Advance().
    void SetTotal(int64 total);
    /// What is done now: a name, shown cut in its middle.
    void At(const std::string& name);
    void Advance(int64 amount);
    /// Whether the person wants it stopped. Cheap: ask often.
    bool WasStopped() const;

private:
    void ShowWhenLong();

    const std::string fTitle;
    const bigtime_t fStart;
    std::shared_ptr<ProgressState> fState; // with the window
    BMessenger fWindow;                    // invalid until it is shown
    bool fIsShown = false;
};

} // namespace add_ons
