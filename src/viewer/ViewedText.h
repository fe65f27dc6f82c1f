#pragma once

#include <TextView.h>

namespace norvane {

/// The text of a viewer: read-only, unwrapped at first. Entries that are dropped on it are the
/// window's.
class ViewedText : public BTextView
{
public:
    explicit ViewedText(BRect frame);

    // BView
    bool TakesDrops() const override { return true; }
    void KeyDown(const char* bytes, int32 byteCount) override;

private:
    bool FunctionKey();
};

} // namespace norvane
