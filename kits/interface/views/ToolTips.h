#pragma once

#include "PopUpHost.h"

#include <MessageRunner.h>
#include <Point.h>
#include <Referenceable.h>
#include <ToolTip.h>

#include <memory>
#include <optional>

class BMessage;
class BView;
class BWindow;

namespace kits {

/// To the window itself: the pointer may have rested long enough.
constexpr uint32 kTipDue = 'kTip';

/// The tips of a window's views: one at a time is shown, once the pointer has rested.
///
/// Views are asked for theirs when the pointer rests, and, while one is shown, when it moves. Any
/// key, button or wheel, and whatever else takes the window's attention, takes the tip away until
/// the pointer moves. Thread: the window's, or one that holds its lock.
class ToolTips
{
public:
    explicit ToolTips(BWindow& window) : fWindow(window) {}
    ToolTips(const ToolTips&) = delete;
    ToolTips& operator=(const ToolTips&) = delete;

    /// Lends those of a window.
    static ToolTips& Of(BWindow& window);

    /// Looks at a message before the window's views get it; true when it is done with.
    bool Saw(const BMessage& message);
    /// Takes a tip away, and shows none before the pointer moves.
    void Cancel();
    /// A view is about to leave the window.
    void ViewGone(const BView* view);
    /// Shows a tip of the view now, at the pointer.
    void Show(BView& view, BToolTip* tip);
    /// Takes the view's tip away.
    void Hide(const BView& view);
    /// The tip that is shown, lent; null for none.
    const BToolTip* Shown() const { return fHost != nullptr ? fTip.Get() : nullptr; }

private:
    void Moved(const BMessage& message);
    void Due();
    void Order(bigtime_t delay);
    BToolTip* Ask(BView& view) const;
    void Open(BView& view, BToolTip* tip);
    void Close();

    BWindow& fWindow;
    BPoint fWhere{-1, -1};  // of the pointer, in the window
    BView* fView = nullptr; // under it while it rests, or is shown a tip of
    bigtime_t fMovedAt = 0;
    bigtime_t fClosedAt = 0; // when the last tip went because of the pointer
    bool fIsResting = false; // and a tip may come of it
    std::optional<BMessageRunner> fDue;
    BReference<BToolTip> fTip; // shown; it goes after its window
    std::unique_ptr<PopUpHost> fHost;
};

} // namespace kits
