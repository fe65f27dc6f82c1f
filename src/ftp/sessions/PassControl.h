#pragma once

#include <MessageFilter.h>
#include <TextControl.h>

#include <string>
#include <vector>

namespace norvane {

/// A text control for passwords: shows an asterisk for each character and keeps the real text.
///
/// Whatever way text comes or goes, typed, pasted, dropped, by an input method or by the program,
/// asterisks and real text change together. What is copied from it are asterisks; nothing can be
/// undone, since that would have to remember the text.
class PassControl : public BTextControl
{
public:
    /// Ownership: adopts `message`, which may be null.
    PassControl(BRect frame, const char* name, const char* label, const char* text,
                BMessage* message);
    ~PassControl() override;

    /// Replaces the real text; null counts as empty.
    void SetText(const char* text) override;
    /// Adds all "byte" entries of a key's message at the end.
    void PushChar(BMessage* key);
    /// Removes the last character.
    void PopChar();
    /// Lends the real text, until it changes.
    // NOLINTNEXTLINE(readability-identifier-naming): the name it is known by
    const char* actualText() const { return fText.c_str(); }

protected:
    // BTextControl
    void TextInserted(int32 offset, std::string* text) override;
    void TextDeleted(int32 start, int32 end) override;

private:
    void Join();

    std::vector<std::string> fCharacters; // one for each asterisk, however broken its bytes
    std::string fText;                    // all of them
};

/// Keeps keys from a PassControl's text view that are not for it.
///
/// Tab goes to the control, which moves the focus; Enter and Delete do nothing.
// NOLINTNEXTLINE(readability-identifier-naming): the name it is known by
class myFilter : public BMessageFilter
{
public:
    /// Ownership: borrows `control`, whose text view owns the filter.
    explicit myFilter(BHandler* control);

    // BMessageFilter
    filter_result Filter(BMessage* message, BHandler** target) override;

private:
    BHandler* const fControl;
};

} // namespace norvane
