#pragma once

#include <SupportDefs.h>

#include <deque>
#include <string>

namespace kits {

/// One change of a text: at `offset`, `removed` went and `inserted` came.
struct TextChange
{
    int32 offset = 0;
    std::string removed;
    std::string inserted;
};

/// What a change came from; it says which changes are taken back together.
enum class TextAction : uint8 {
    kTyping,
    kErasing,
    kCutting,
    kPasting,
    kClearing,
    kOther,
};

/// The changes of a text that can be taken back, and those that were.
///
/// Typing is joined up to the beginning of the next word, deletions key by key while they touch;
/// moving the caret ends both.
class TextUndo
{
public:
    struct Step
    {
        TextChange change;
        TextAction action = TextAction::kOther;
        int32 selectionStart = 0; // before the change
        int32 selectionEnd = 0;
    };

    /// Keeps a change that was made; what was taken back before cannot be done again any more.
    void Record(const Step& step);
    /// The next change begins a step of its own.
    void EndRun() { fIsRunning = false; }
    void Clear();

    bool CanUndo() const { return !fDone.empty(); }
    bool CanRedo() const { return !fUndone.empty(); }
    /// The step to take back, or to do again, which moves to the other side. Ownership: lends,
    /// until the next call.
    const Step& TakeBack();
    const Step& DoAgain();
    /// What Undo would take back.
    TextAction LastAction() const;

private:
    bool Join(const Step& step);
    void Limit();

    std::deque<Step> fDone;
    std::deque<Step> fUndone;
    size_t fBytes = 0; // that fDone holds
    bool fIsRunning = false;
};

} // namespace kits
