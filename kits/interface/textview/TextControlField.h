#pragma once

#include <TextView.h>

class BTextControl;

namespace kits {

/// The one-line text view inside a text control.
class FieldTextView : public BTextView
{
public:
    FieldTextView(BTextControl& control, BRect frame, uint32 flags);

    // BTextView
    void Describe(BViewDescription* description) const override;
    void KeyDown(const char* bytes, int32 byteCount) override;
    void MakeFocus(bool focus = true) override;

protected:
    void InsertText(const char* text, int32 length, int32 offset,
                    const text_run_array* runs) override;
    void DeleteText(int32 start, int32 end) override;

private:
    BTextControl& fControl;
};

} // namespace kits
