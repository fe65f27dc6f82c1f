#include "MessageCodes.h"
#include "viewer/FileFollowing.h"
#include "viewer/HexView.h"
#include "viewer/ViewedText.h"
#include "viewer/ViewerWindow.h"

#include <Beep.h>
#include <Font.h>
#include <Menu.h>
#include <MenuItem.h>
#include <Message.h>
#include <ScrollBar.h>

#include <memory>
#include <string>

// What a viewer reads its text as, and how it follows one that grows.

namespace norvane {

namespace {

// So near to the end of a text one is at it.
constexpr float kNearTheEnd = 16;

bool IsAtEnd(const BView& text)
{
    const BScrollBar* bar = text.ScrollBar(B_VERTICAL);
    float most = 0;
    bar->GetRange(nullptr, &most);
    return bar->Value() >= most - kNearTheEnd;
}

} // namespace

BMenu* ViewerWindow::EncodingMenu()
{
    fEncodingMenu = new BMenu("Encoding");
    fEncodingMenu->SetRadioMode(true);
    for (const TextEncoding encoding : {TextEncoding::kUtf8, TextEncoding::kUtf16Le,
                                        TextEncoding::kUtf16Be, TextEncoding::kLatin1}) {
        auto message = std::make_unique<BMessage>(kChooseEncoding);
        message->AddInt32("encoding", static_cast<int32>(encoding));
        fEncodingMenu->AddItem(new BMenuItem(NameOf(encoding), message.release())); // adopted
    }
    fEncodingMenu->SetTargetForItems(this);
    return fEncodingMenu;
}

void ViewerWindow::MarkEncoding(TextEncoding encoding)
{
    fEncodingMenu->ItemAt(static_cast<int32>(encoding) - 1)->SetMarked(true);
}

/// Reads all of the text again.
void ViewerWindow::ReadAs(TextEncoding encoding)
{
    if (fText == nullptr) {
        return;
    }
    fChosen = encoding;
    fIsTextRead = false;
    fLoading =
        std::make_unique<FileLoading>(fPath, encoding, BMessenger(nullptr, this), *be_plain_font);
}

void ViewerWindow::TextIsRead(const TextOutcome& outcome)
{
    fRead = outcome;
    fIsTextRead = outcome.trouble.empty();
    MarkEncoding(outcome.encoding);
    if (fFollowing == nullptr) {
        return;
    }
    if (fEndsAtEnd) {
        fText->ScrollToOffset(fText->TextLength());
    }
    AskForGrowth();
}

void ViewerWindow::ToggleFollowing()
{
    if (fText == nullptr) {
        beep();
        return;
    }
    fFollowItem->SetMarked(fFollowing == nullptr);
    if (fFollowing != nullptr) {
        fFollowing.reset();
        return;
    }
    fFollowing = std::make_unique<FileFollowing>(fPath, BMessenger(nullptr, this));
    fText->ScrollToOffset(fText->TextLength());
    fEndsAtEnd = true;
    AskForGrowth();
}

void ViewerWindow::FileChanged(const BMessage& message)
{
    if (fFollowing != nullptr && fFollowing->IsAbout(message, fRead.node)) {
        AskForGrowth();
    }
}

void ViewerWindow::AskForGrowth()
{
    if (fFollowing != nullptr && fIsTextRead) {
        fFollowing->Ask(fRead.bytesRead);
    }
}

void ViewerWindow::TakeGrowth()
{
    const FilePart part = fFollowing != nullptr ? fFollowing->Take() : FilePart();
    if (!part.isRead || part.fileSize < 0 || !fIsTextRead) {
        return;
    }
    if (part.node != fRead.node || part.fileSize < fRead.bytesRead) {
        fEndsAtEnd = IsAtEnd(*fText);
        ReadAs(fChosen); // another file, or the same begun anew
        return;
    }
    const int64 room = TextLimits().most - fText->TextLength();
    if (part.start != fRead.bytesRead || part.bytes.empty() || room <= 0) {
        return;
    }
    size_t taken = 0;
    const std::string text = TextOf(part.bytes, fRead.encoding, &taken);
    fRead.bytesRead += static_cast<int64>(taken);
    Append(text);
    if (taken > 0 && fRead.bytesRead < part.fileSize) {
        AskForGrowth();
    }
}

void ViewerWindow::Append(const std::string& text)
{
    const bool wasAtEnd = IsAtEnd(*fText);
    fText->Insert(fText->TextLength(), text.data(), static_cast<int32>(text.size()));
    if (wasAtEnd) {
        fText->ScrollToOffset(fText->TextLength());
    }
    if (!fWrapItem->IsMarked()) {
        UnwrapText();
    }
}

} // namespace norvane
