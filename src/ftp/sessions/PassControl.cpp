#include "ftp/sessions/PassControl.h"

#include <AppDefs.h>
#include <InterfaceDefs.h>
#include <Message.h>
#include <TextView.h>

#include <string_view>

namespace norvane {

namespace {

bool IsContinuation(char byte)
{
    return (static_cast<unsigned char>(byte) & 0xC0) == 0x80;
}

/// A lead byte with its continuation bytes each; those that follow none are one, too.
std::vector<std::string> CharactersOf(std::string_view text)
{
    std::vector<std::string> characters;
    for (const char byte : text) {
        if (characters.empty() || !IsContinuation(byte)) {
            characters.emplace_back();
        }
        characters.back() += byte;
    }
    return characters;
}

/// What an input method shows before it is agreed to would be shown as it is.
filter_result SkipPreview(BMessage* message, BHandler**, BMessageFilter*)
{
    const bool isPreview =
        message->HasString("be:string") && !message->GetBool("be:confirmed", false);
    return isPreview ? B_SKIP_MESSAGE : B_DISPATCH_MESSAGE;
}

} // namespace

PassControl::PassControl(BRect frame, const char* name, const char* label, const char* text,
                         BMessage* message)
    : BTextControl(frame, name, label, "", message)
{
    BTextView* view = TextView();
    view->SetDoesUndo(false);
    view->AddFilter(new myFilter(this)); // adopted
    view->AddFilter(new BMessageFilter(B_INPUT_METHOD_EVENT, &SkipPreview));
    PassControl::SetText(text);
}

PassControl::~PassControl() = default;

void PassControl::SetText(const char* text)
{
    BTextControl::SetText(text != nullptr ? text : "");
}

void PassControl::PushChar(BMessage* key)
{
    std::string bytes;
    int8 byte = 0;
    for (int32 index = 0; key->FindInt8("byte", index, &byte) == B_OK; index++) {
        bytes += static_cast<char>(byte);
    }
    TextView()->Insert(TextLength(), bytes.data(), static_cast<int32>(bytes.size()));
}

void PassControl::PopChar()
{
    if (TextLength() > 0) {
        TextView()->Delete(TextLength() - 1, TextLength());
    }
}

void PassControl::TextInserted(int32 offset, std::string* text)
{
    const std::vector<std::string> added = CharactersOf(*text);
    fCharacters.insert(fCharacters.begin() + offset, added.begin(), added.end());
    Join();
    text->assign(added.size(), '*');
}

void PassControl::TextDeleted(int32 start, int32 end)
{
    fCharacters.erase(fCharacters.begin() + start, fCharacters.begin() + end);
    Join();
}

void PassControl::Join()
{
    fText.clear();
    for (const std::string& character : fCharacters) {
        fText += character;
    }
}

myFilter::myFilter(BHandler* control) : BMessageFilter(B_KEY_DOWN), fControl(control) {}

filter_result myFilter::Filter(BMessage* message, BHandler** target)
{
    const uint32 modifiers = static_cast<uint32>(message->GetInt32("modifiers", 0));
    int8 byte = 0;
    if ((modifiers & B_COMMAND_KEY) != 0 || message->FindInt8("byte", &byte) != B_OK) {
        return B_DISPATCH_MESSAGE;
    }
    switch (byte) {
    case B_TAB:
        *target = fControl;
        return B_DISPATCH_MESSAGE;
    case B_ENTER:
    case B_DELETE:
        return B_SKIP_MESSAGE;
    default:
        return B_DISPATCH_MESSAGE; // the control sees what becomes of it in its text
    }
}

} // namespace norvane
