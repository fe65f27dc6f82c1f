#pragma once

#include <Messenger.h>
#include <TextView.h>

namespace norvane {

/// A one-line field for a new name, edited in place: Enter asks its target to take the text, Escape
/// to drop it.
///
/// The message of the commit code has "pos" (int32), the row that the field was opened for. The
/// field stays until the target removes it. So that the target knows the text was not asked for any
/// more, a field that loses the focus, while its window stays active, asks to be dropped.
class EditControl : public BTextView
{
public:
    /// All of `text` is selected once the field has the focus.
    EditControl(BRect frame, int32 position, const char* text, BHandler* target, uint32 commitCode,
                uint32 cancelCode);
    ~EditControl() override;

    /// The row that the field was opened for.
    int32 Position() const { return fPosition; }

    // BTextView
    void AttachedToWindow() override;
    void KeyDown(const char* bytes, int32 byteCount) override;
    void FrameResized(float newWidth, float newHeight) override;
    void MakeFocus(bool focus = true) override;

private:
    void PlaceText();
    void Commit();
    void Cancel();
    bool SendAgain();

    int32 fPosition;
    BMessenger fTarget;
    uint32 fCommitCode;
    uint32 fCancelCode;
    bool fIsDone = false; // the target was told, and nothing was typed since
};

} // namespace norvane
