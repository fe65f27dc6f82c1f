#include "TextTransfer.h"

#include "TextViewState.h"
#include "interface/views/WindowAccess.h"

#include <Beep.h>
#include <Clipboard.h>
#include <Message.h>
#include <TypeConstants.h>

#include <cstring>
#include <utility>

// What a text view takes from the clipboard and gives to it.

namespace kits {

namespace {

constexpr char kTextField[] = "text/plain";

std::string TextOf(BClipboard* clipboard)
{
    std::string found;
    if (clipboard == nullptr || !clipboard->Lock()) {
        return found;
    }
    const void* data = nullptr;
    ssize_t size = 0;
    const BMessage* message = clipboard->Data();
    if (message != nullptr && message->FindData(kTextField, B_MIME_TYPE, &data, &size) == B_OK) {
        found.assign(static_cast<const char*>(data), static_cast<size_t>(size));
    }
    clipboard->Unlock();
    return found;
}

bool IsDesktops(const BClipboard* clipboard)
{
    return clipboard != nullptr && std::strcmp(clipboard->Name(), be_clipboard->Name()) == 0;
}

} // namespace

void OfferPrimary(SharedText text)
{
    const ClipboardHooks& hooks = GetClipboardHooks();
    if (hooks.offer != nullptr) {
        hooks.offer(ClipboardKind::kPrimary, std::move(text));
    }
}

ClipboardReading::ClipboardReading()
    : fId([] {
          static std::atomic<int32> last{0};
          return ++last;
      }())
{
}

std::unique_ptr<ClipboardReading> ClipboardReading::Start(ClipboardKind kind,
                                                          const BMessenger& target)
{
    std::unique_ptr<ClipboardReading> reading(new ClipboardReading);
    ClipboardReading* self = reading.get();
    const status_t started = reading->fThread.Start("paste", [self, kind, target] {
        self->fContent = GetClipboardHooks().fetch(kind, &self->fIsCancelled);
        BMessage arrived(kPasteArrived);
        arrived.AddInt32("paste", self->fId);
        target.SendMessage(&arrived);
    });
    return started == B_OK ? std::move(reading) : nullptr;
}

ClipboardReading::~ClipboardReading()
{
    fIsCancelled = true;
    fThread.Join();
}

ClipboardContent ClipboardReading::Take()
{
    fThread.Join();
    return std::move(fContent);
}

void TextViewState::CopyTo(BClipboard* clipboard) const
{
    if (!HasSelection() || text.HidesText() || clipboard == nullptr || !clipboard->Lock()) {
        return;
    }
    clipboard->Clear();
    if (BMessage* data = clipboard->Data()) {
        const std::string_view selected = text.Part(Start(), End());
        data->AddData(kTextField, B_MIME_TYPE, selected.data(),
                      static_cast<ssize_t>(selected.size()));
        clipboard->Commit();
    }
    clipboard->Unlock();
}

void TextViewState::PasteFrom(BClipboard* clipboard)
{
    if (IsDesktops(clipboard) && AwaitPaste(ClipboardKind::kClipboard)) {
        return;
    }
    const std::string pasted = TextOf(clipboard);
    if (!pasted.empty()) {
        Enter(pasted, TextAction::kPasting);
    }
}

void TextViewState::PasteSelection()
{
    ClipboardContent own;
    const ClipboardHooks& hooks = GetClipboardHooks();
    if (AwaitPaste(ClipboardKind::kPrimary) || hooks.peek == nullptr ||
        !hooks.peek(ClipboardKind::kPrimary, &own) || own.text.IsEmpty()) {
        return;
    }
    Enter(own.text.View(), TextAction::kPasting);
}

// Another program is waited for without the window, which goes on living. What is typed meanwhile
// waits with the paste: it was meant to come behind it.
bool TextViewState::AwaitPaste(ClipboardKind kind)
{
    ClipboardContent own;
    const ClipboardHooks& hooks = GetClipboardHooks();
    if (hooks.peek == nullptr || hooks.fetch == nullptr || view.Window() == nullptr ||
        hooks.peek(kind, &own)) {
        return false;
    }
    GiveUpPaste();
    paste.reading = ClipboardReading::Start(kind, BMessenger(&view));
    if (paste.reading == nullptr) {
        beep();
        return true;
    }
    paste.anchor = anchor;
    paste.caret = caret;
    WindowAccess::HoldKeys(*view.Window());
    return true;
}

void TextViewState::PasteArrived(int32 id)
{
    if (paste.reading == nullptr || paste.reading->Id() != id) {
        return; // given up meanwhile
    }
    const ClipboardContent content = paste.reading->Take();
    if (content.isOwnerSilent) {
        beep();
    } else if (isEditable && !content.text.IsEmpty()) {
        EndPreview();
        // Where it was asked for, though the mouse may have moved the caret.
        SetSelection(paste.anchor, paste.caret);
        Enter(content.text.View(), TextAction::kPasting);
    }
    GiveUpPaste();
}

void TextViewState::GiveUpPaste()
{
    if (paste.reading == nullptr) {
        return;
    }
    paste.reading.reset();
    if (view.Window() != nullptr) {
        WindowAccess::ReleaseKeys(*view.Window());
    }
}

} // namespace kits
