#pragma once

#include <View.h>

#include <memory>

class BClipboard;
class BTextContents;

namespace kits {
class TextViewAccess;
struct TextViewState;
} // namespace kits

/// What Undo() would take back, for a menu item's label.
enum undo_state {
    B_UNDO_UNAVAILABLE, // nothing
    B_UNDO_TYPING,      // what was typed
    B_UNDO_CUT,         // what was cut
    B_UNDO_PASTE,       // what was pasted
    B_UNDO_CLEAR,       // what Clear() took away
    B_UNDO_DROP,        // what was dropped
};

/// Part of a text drawn in one font and colour. Here all of a text has those of its first run.
struct text_run
{
    int32 offset;    // of its first byte
    BFont font;      // what it is set in
    rgb_color color; // what it is drawn in
};

/// Runs in the order of their offsets.
struct text_run_array
{
    int32 count;      // of `runs`
    text_run runs[1]; // as many as `count` says
};

/// Shows text and lets a person edit it: caret, selection, clipboard, undo, input methods.
///
/// Offsets count bytes. Bytes that are not UTF-8 are shown as U+FFFD and kept as they are; so is
/// every byte that is not edited. Offsets in the middle of a character mean its beginning.
/// Lines are rows on the screen, counted from 0; of wrapped text beyond 64 KiB rows that were not
/// asked for yet are counted roughly, and those behind get other numbers once they are. Lines of
/// more than 4 KiB are set without kerning and ligatures, so that any length is edited at one
/// speed. Units: beyond 16 million view units places are as exact as a float is. Thread: as the
/// view's.
class BTextView : public BView
{
public:
    /// Sets the text in `textRect` (view coordinates) with the plain font, in black on white.
    BTextView(BRect frame, const char* name, BRect textRect, uint32 resizingMode,
              uint32 flags = B_WILL_DRAW);
    /// The same with a font and a colour; null for the usual ones.
    BTextView(BRect frame, const char* name, BRect textRect, const BFont* initialFont,
              const rgb_color* initialColor, uint32 resizingMode, uint32 flags);
    ~BTextView() override;

    // BView
    void Describe(BViewDescription* description) const override;
    bool DescribeInput(BInputDescription* description) const override;
    bool WantsKey(const BMessage& key) const override;
    void AttachedToWindow() override;
    void DetachedFromWindow() override;
    void Draw(BRect updateRect) override;
    void MouseDown(BPoint where) override;
    void MouseUp(BPoint where) override;
    void MouseMoved(BPoint where, uint32 transit, const BMessage* dragMessage) override;
    void WindowActivated(bool active) override;
    void KeyDown(const char* bytes, int32 byteCount) override;
    void FrameResized(float newWidth, float newHeight) override;
    void MakeFocus(bool focus = true) override;
    void MessageReceived(BMessage* message) override;
    void SetFont(const BFont* font, uint32 mask = B_FONT_ALL) override;
    void ScrollTo(BPoint where) override;
    using BView::ScrollTo;
    void GetPreferredSize(float* width, float* height) override;
    void ResizeToPreferred() override;

    // Text

    /// Replaces all of the text; the caret goes to its beginning, and nothing can be undone. Null
    /// counts as empty.
    void SetText(const char* text, const text_run_array* runs = nullptr);
    void SetText(const char* text, int32 length, const text_run_array* runs = nullptr);
    /// Replaces all of the text by one that was made ready elsewhere, without copying it. Where it
    /// begins with the text so far, what is selected and seen stays; else it is as after SetText().
    /// InsertText() sees nothing of it. An extension of the platform.
    void AdoptText(std::unique_ptr<BTextContents> contents);
    /// Inserts at the caret or over the selection; the caret goes behind it.
    void Insert(const char* text, const text_run_array* runs = nullptr);
    void Insert(const char* text, int32 length, const text_run_array* runs = nullptr);
    void Insert(int32 offset, const char* text, int32 length, const text_run_array* runs = nullptr);
    /// Removes the selection, or the bytes from `start` to `end`; can be undone.
    void Delete();
    void Delete(int32 start, int32 end);
    /// Lends the text, until it changes; "" when empty.
    const char* Text() const;
    /// The number of bytes.
    int32 TextLength() const;
    /// The text as it is now, for another thread to read; not copied, but the next change of the
    /// text copies it. An extension of the platform.
    std::shared_ptr<const std::string> ShareText();
    /// Copies bytes and ends them with a NUL: `buffer` has room for `length` + 1. Fewer at the end.
    void GetText(int32 offset, int32 length, char* buffer) const;
    /// The byte at an offset, 0 outside the text.
    uint8 ByteAt(int32 offset) const;

    // Clipboard and undo

    /// Moves the selection to the clipboard, copies it there, or puts what the clipboard holds in
    /// its place. Cut() and Paste() do nothing where the text is not editable, Copy() where it is
    /// not selectable.
    virtual void Cut(BClipboard* clipboard);
    virtual void Copy(BClipboard* clipboard);
    /// Another program that has the text is not waited for: the window goes on, the text comes when
    /// it comes, where it was asked for, and the keys typed meanwhile act behind it. One that is
    /// silent for a second, or not done within five, gives a beep and nothing else.
    virtual void Paste(BClipboard* clipboard);
    /// Removes the selection of an editable text; can be undone.
    void Clear();
    /// Whether the view takes text that is pasted now: it is editable and there is some.
    virtual bool AcceptsPaste(BClipboard* clipboard);
    /// Whether the view takes that message: it is editable, and there is text in it.
    virtual bool AcceptsDrop(const BMessage* message);
    /// Takes back the last step: a word typed, a run of deletions, a paste.
    virtual void Undo(BClipboard* clipboard = nullptr);
    /// Does again what Undo() took back; whether there is something to take back or do again. An
    /// extension of the platform.
    virtual void Redo();
    bool CanUndo() const;
    bool CanRedo() const;
    /// What Undo() would take back; `isRedo` (may be null) tells whether the last change was an
    /// Undo().
    virtual undo_state UndoState(bool* isRedo) const;
    /// Sets whether steps are kept; those kept so far are forgotten when not.
    void SetDoesUndo(bool undo);
    bool DoesUndo() const;

    // Selection

    /// Selects from `start` to `end`; the caret, where both are the same, is at `end`.
    virtual void Select(int32 start, int32 end);
    /// Selects all of the text.
    void SelectAll();
    /// Tells the selection; both are the caret's place when it is empty. Null is left out.
    void GetSelection(int32* start, int32* end) const;
    /// Finds the word at an offset.
    virtual void FindWord(int32 offset, int32* from, int32* to);

    // Places

    /// The number of lines, at least 1; and the one that the caret is on.
    int32 CountLines() const;
    int32 CurrentLine() const;
    /// Puts the caret to the beginning of a line, the nearest there is, and scrolls it into sight.
    void GoToLine(int32 line);
    /// The line that holds a byte or lies at a point's height, the nearest there is.
    int32 LineAt(int32 offset) const;
    int32 LineAt(BPoint point) const;
    /// The left top of the character at an offset, and its line's height.
    BPoint PointAt(int32 offset, float* height = nullptr) const;
    /// The offset nearest to a point.
    int32 OffsetAt(BPoint point) const;
    /// The offset at which a line begins; that of the text's end for a line behind the last.
    int32 OffsetAt(int32 line) const;
    /// How far a line's text reaches, and how high each line is; 0 for the width of none.
    float LineWidth(int32 line = 0) const;
    float LineHeight(int32 line = 0) const;
    /// How wide the widest line is, as far as that is known: of the lines that were seen, and of all
    /// of a text that was measured before it was adopted. An extension of the platform.
    float WidestLine() const;
    /// The height of the lines from `startLine` to `endLine`, both included.
    float TextHeight(int32 startLine, int32 endLine) const;
    /// Makes `region` what the bytes from `start` to `end` cover, in view coordinates.
    void GetTextRegion(int32 start, int32 end, BRegion* region) const;
    /// Scrolls a byte, or the selection's moving end, into sight, as little as needed.
    virtual void ScrollToOffset(int32 offset);
    void ScrollToSelection();

    // Looks

    /// Where the text is set; its height follows the text.
    void SetTextRect(BRect rect);
    /// That place, as high as the text.
    BRect TextRect() const;
    /// Sets what the text is drawn with; null keeps it.
    void SetFontAndColor(const BFont* font, uint32 mode = B_FONT_ALL,
                         const rgb_color* color = nullptr);
    /// Tells them; null is left out. `mode` gets B_FONT_ALL, since all of the text has the same.
    void GetFontAndColor(BFont* font, uint32* mode, rgb_color* color = nullptr) const;
    /// Sets the distance between tab stops, in view units.
    void SetTabWidth(float width);
    float TabWidth() const;
    /// Sets whether lines end at the text rectangle's right edge; they end at line breaks alone
    /// unless set.
    void SetWordWrap(bool wrap);
    bool DoesWordWrap() const;
    /// B_ALIGN_LEFT sets right-to-left text at the right edge, where it begins.
    void SetAlignment(alignment flag);
    /// What SetAlignment() set.
    alignment Alignment() const;

    // Manners

    /// Sets whether a person can select and copy; true at first.
    void MakeSelectable(bool selectable = true);
    bool IsSelectable() const;
    /// Sets whether a person can change the text; true at first.
    void MakeEditable(bool editable = true);
    bool IsEditable() const;
    /// Limits the text a person enters, in bytes; what does not fit is left out by whole
    /// characters. A longer text stays as it is.
    void SetMaxBytes(int32 max);
    /// That limit, INT32_MAX when there is none.
    int32 MaxBytes() const;
    /// Keeps a person from entering a character, a code point; AllowChar() lets it in again.
    void DisallowChar(uint32 character);
    void AllowChar(uint32 character);
    /// Shows a bullet for every character, as for a password. What is hidden is not cut, not
    /// copied, not offered as a selection, and told neither to input methods nor to assistive
    /// programs; words in it are not told apart. The text stays.
    void HideTyping(bool enabled);
    /// Whether the text is hidden.
    bool IsTypingHidden() const;
    /// Sets whether Enter begins the new line with the blanks of the one above; false at first.
    void SetAutoindent(bool indents);
    bool DoesAutoindent() const;
    /// Makes all of the text one line: line breaks and tabs are shown as signs, and those that are
    /// entered or pasted become blanks. No more than 64 KiB are entered. An extension of the
    /// platform.
    void SetSingleLine(bool isSingle);
    bool IsSingleLine() const;

protected:
    /// Puts bytes into the text; whoever overrides it sees every insertion and may change it.
    virtual void InsertText(const char* text, int32 length, int32 offset,
                            const text_run_array* runs);
    /// Takes bytes out of the text.
    virtual void DeleteText(int32 start, int32 end);

private:
    friend class kits::TextViewAccess;

    std::unique_ptr<kits::TextViewState> fText;
};
