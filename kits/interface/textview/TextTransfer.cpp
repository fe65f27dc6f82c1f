#include "TextTransfer.h"

#include "TextViewState.h"

#include "app/ClipboardHooks.h"

#include <Clipboard.h>
#include <Message.h>
#include <TypeConstants.h>

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

} // namespace

void OfferPrimary(std::string_view text)
{
    const ClipboardHooks& hooks = GetClipboardHooks();
    if (hooks.offer != nullptr) {
        hooks.offer(ClipboardKind::kPrimary, std::string(text));
    }
}

std::string FetchPrimary()
{
    const ClipboardHooks& hooks = GetClipboardHooks();
    return hooks.fetch != nullptr ? hooks.fetch(ClipboardKind::kPrimary).text : std::string();
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
    const std::string pasted = TextOf(clipboard);
    if (!pasted.empty()) {
        Enter(pasted, TextAction::kPasting);
    }
}

void TextViewState::PasteSelection()
{
    const std::string pasted = FetchPrimary();
    if (!pasted.empty()) {
        Enter(pasted, TextAction::kPasting);
    }
}

} // namespace kits
