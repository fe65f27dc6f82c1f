#pragma once

#include "TextTransfer.h"
#include "interface/text/TextBuffer.h"
#include "interface/text/TextGeometry.h"
#include "interface/text/TextMovement.h"
#include "interface/text/TextUndo.h"
#include "interface/views/Ticker.h"
#include "interface/views/ViewAccess.h"

#include <GraphicsDefs.h>
#include <TextView.h>

#include <functional>
#include <memory>
#include <set>
#include <string>
#include <string_view>

class BClipboard;

namespace kits {

/// Sent by a text view to itself when it got other rows than its scroll bars say.
constexpr uint32 kRowsCorrected = '_TXR';

/// What a text view is made of, and what it does with it.
///
/// The selection reaches from where it began to the caret, which may be before it. Thread: the
/// view's.
struct TextViewState
{
    enum class Reach : uint8 { kCaret, kSelection }; // what a movement moves
    enum class Grain : uint8 { kCharacter, kWord, kLine };

    TextViewState(BTextView& owner, BRect textRect);

    // Editing (TextEditing.cpp)

    /// Replaces bytes through the view's hooks, and keeps how to take that back.
    void Edit(int32 from, int32 to, std::string_view inserted, TextAction action);
    /// The same in place of the selection, with what a person may enter; the caret goes behind it.
    void Enter(std::string_view entered, TextAction action);
    /// The part of a text that may be entered: allowed characters, as many as there is room for.
    std::string Allowed(std::string_view entered, int32 removedBytes) const;
    void Erase(int32 from, int32 to, TextAction action);
    void TakeBack();
    void DoAgain();
    /// Changes the text itself: what the hooks come down to.
    void Replace(int32 from, int32 to, std::string_view inserted);
    /// Takes all of another text, whose widest line is as wide as that, as far as known.
    void Adopt(TextBuffer& other, float widestLine);

    // Selection (TextSelecting.cpp)

    int32 Start() const { return anchor < caret ? anchor : caret; }
    int32 End() const { return anchor < caret ? caret : anchor; }
    bool HasSelection() const { return anchor != caret; }
    void SetSelection(int32 from, int32 to);
    void MoveTo(int32 offset, Reach reach);
    /// Moves by rows, keeping the x where that began.
    void MoveByRows(int32 rows, Reach reach);
    /// Moves to a row's edge.
    void MoveToEdge(bool isEnd, Reach reach);
    /// Moves as an arrow says: as seen, not as stored.
    void MoveAside(bool isRight, bool isByWord, Reach reach);
    /// What a press at an offset selects.
    void GetGrain(int32 offset, Grain size, int32* from, int32* to) const;
    /// Offers the selected text to who presses the middle button.
    void OfferSelection();
    /// The same when keys have selected since the last offer: Shift was released, or the focus
    /// goes.
    void OfferWhatKeysSelected();

    // Clipboard (TextTransfer.cpp)

    void CopyTo(BClipboard* clipboard) const;
    void PasteFrom(BClipboard* clipboard);
    /// Inserts what was selected last, in whatever program.
    void PasteSelection();
    /// Asks another program for its text, without waiting; false when none needs to be asked.
    bool AwaitPaste(ClipboardKind kind);
    void PasteArrived(int32 id);
    void GiveUpPaste();

    // Keys (TextKeys.cpp)

    /// Whether the key works here rather than as a shortcut.
    bool WantsKey(const BMessage& key) const;
    /// Whether the key worked something here.
    bool Key(const char* bytes, int32 count);

    // Mouse (TextMouse.cpp)

    void Press(BPoint where);
    void DragTo(BPoint where);
    void Release();
    /// Gives the pointer the shape it has over text, or takes that back.
    void ShapePointer();
    /// Goes on scrolling while the pointer is held outside.
    void DragTick();

    // Input methods (TextInput.cpp)

    void DescribeInput(BInputDescription* description) const;
    void TakeInput(const BMessage& message);
    void SelectAround(int32 fromUnit, int32 units);
    /// Makes what is previewed part of the text; the input method begins anew.
    void EndPreview();

    // Looks (TextPainting.cpp)

    void Draw(BRect updateRect);
    void FollowCorrections(BRect drawn);
    BRect CaretRect() const;
    void InvalidateRows(int32 first, int32 last);
    void InvalidateBelow(int32 first);
    void InvalidateSelection(int32 from, int32 to);
    /// Shows the caret for a whole blink from now on, if it is to be seen.
    void ShowCaret();
    void BlinkTick();
    bool HasCaret() const;

    // Scrolling (TextScrolling.cpp)

    /// Counts the rows that come into sight at a place of the view; returns that place, moved along
    /// with what is in sight now.
    BPoint CountSight(BPoint corner);
    /// Counts the rows within a view's height of an offset.
    void CountAround(int32 offset);
    void ScrollTo(int32 offset);
    void ScrollToCaret();
    void UpdateScrollBars();
    /// Keeps the text in sight after it got smaller.
    void LimitScrolling();
    float ContentHeight() const;
    float ContentWidth() const;

    BTextView& view;
    TextBuffer text;
    TextGeometry geometry{text};
    TextMovement movement{text};
    TextUndo undo;
    int32 anchor = 0;
    int32 caret = 0;
    double goalX = -1; // where a walk by rows began; below zero: none does

    rgb_color color = {0, 0, 0, 255};
    bool isEditable = true;
    bool isSelectable = true;
    bool doesUndo = true;
    bool indents = false;
    int32 maxBytes = INT32_MAX;
    std::set<uint32> disallowed;
    std::function<void()> edited; // called after a change that a person made

    struct AwaitedPaste
    {
        std::unique_ptr<ClipboardReading> reading; // null: none is awaited
        int32 anchor = 0;                          // the selection when it was asked for; these
        int32 caret = 0;                           // follow their text
    };
    AwaitedPaste paste;
    bool isOfferDue = false; // keys have selected what was not offered yet

    bool isUndoing = false; // hooks run for Undo() or Redo()
    bool wasUndone = false; // the last change was Undo(): it can be done again
    bool isDragging = false;
    Grain dragGrain = Grain::kCharacter;
    int32 dragFrom = 0; // what the press itself selected
    int32 dragTo = 0;
    BPoint dragPoint;
    std::unique_ptr<Ticker> dragTicker; // while the pointer is held outside
    std::unique_ptr<Ticker> blinkTicker;
    bool isCaretOn = false;
    mutable float widest = 0;   // the widest row seen so far
    int32 drawnCorrections = 0; // of geometry, that are on the screen
    int32 inputResets = 0;      // how often the input method is to begin anew
};

/// What the rest of the kit needs of a text view.
class TextViewAccess
{
public:
    static TextViewState& State(BTextView& view) { return *view.fText; }
    static const TextViewState& State(const BTextView& view) { return *view.fText; }
    static void Insert(BTextView& view, std::string_view text, int32 offset)
    {
        view.InsertText(text.data(), static_cast<int32>(text.size()), offset, nullptr);
    }
    static void Delete(BTextView& view, int32 from, int32 to) { view.DeleteText(from, to); }
};

} // namespace kits
