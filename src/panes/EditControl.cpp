#include "panes/EditControl.h"

#include <InterfaceDefs.h>
#include <Message.h>
#include <Window.h>

#include <cmath>

namespace norvane {

namespace {

constexpr float kMargin = 2;
constexpr const char* kSentAgain = "sent again";

} // namespace

EditControl::EditControl(BRect frame, int32 position, const char* text, BHandler* target,
                         uint32 commitCode, uint32 cancelCode)
    : BTextView(frame, "editcontrol", BRect(), B_FOLLOW_LEFT | B_FOLLOW_TOP,
                B_WILL_DRAW | B_NAVIGABLE),
      fPosition(position), fTarget(target), fCommitCode(commitCode), fCancelCode(cancelCode)
{
    SetSingleLine(true);
    SetText(text);
    PlaceText();
}

EditControl::~EditControl() = default;

// One line in the middle of the frame.
void EditControl::PlaceText()
{
    const BRect bounds(0, 0, Frame().Width(), Frame().Height());
    const float spare = bounds.Height() + 1 - LineHeight();
    SetTextRect(BRect(kMargin, std::floor(spare / 2), bounds.right - kMargin, bounds.bottom));
}

void EditControl::AttachedToWindow()
{
    BTextView::AttachedToWindow();
    PlaceText();
    Select(0, TextLength());
}

void EditControl::FrameResized(float newWidth, float newHeight)
{
    BTextView::FrameResized(newWidth, newHeight);
    PlaceText();
}

void EditControl::KeyDown(const char* bytes, int32 byteCount)
{
    const char byte = byteCount == 1 ? bytes[0] : '\0';
    if (byte == B_ESCAPE) {
        Cancel();
    } else if (byte == B_ENTER) {
        Commit();
    } else if (!fIsDone || !SendAgain()) {
        fIsDone = false; // the target kept the field, and a person goes on
        BTextView::KeyDown(bytes, byteCount);
    }
}

/// What is typed after Enter is not for this field: it comes again behind the message that closes
/// it, once.
bool EditControl::SendAgain()
{
    const BMessage* key = Window()->CurrentMessage();
    if (key == nullptr || key->what != B_KEY_DOWN || key->HasBool(kSentAgain)) {
        return false;
    }
    BMessage again(*key);
    again.AddBool(kSentAgain, true);
    return Window()->PostMessage(&again) == B_OK;
}

void EditControl::MakeFocus(bool focus)
{
    const bool hadFocus = IsFocus();
    BTextView::MakeFocus(focus);
    if (hadFocus && !focus) {
        Cancel();
    }
}

void EditControl::Commit()
{
    if (fIsDone) {
        return;
    }
    fIsDone = true;
    BMessage message(fCommitCode);
    message.AddInt32("pos", fPosition);
    fTarget.SendMessage(&message);
}

void EditControl::Cancel()
{
    if (fIsDone) {
        return;
    }
    fIsDone = true;
    fTarget.SendMessage(fCancelCode);
}

} // namespace norvane
