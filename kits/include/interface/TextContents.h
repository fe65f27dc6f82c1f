#pragma once

#include <SupportDefs.h>

#include <memory>
#include <string>

class BFont;
class BTextView;

namespace kits {
class TextBuffer;
} // namespace kits

/// A text that is made ready on a thread of its own, for BTextView::AdoptText(): a large one is
/// read, its lines are found and measured without any window waiting for that, and it is handed
/// over without a copy. An extension of the platform.
///
/// Thread: any, one at a time.
class BTextContents
{
public:
    /// Takes the text, of 2 GiB at most, and finds its lines.
    explicit BTextContents(std::string text);
    BTextContents(const BTextContents&) = delete;
    BTextContents& operator=(const BTextContents&) = delete;
    ~BTextContents();

    /// The number of bytes, and of lines, at least 1.
    int32 Length() const;
    int32 CountLines() const;
    /// How wide the widest line is in that font, and keeps it for who adopts the text. All lines
    /// are measured roughly, and those that may be the widest exactly: 10 ms for a MiB at most.
    /// Where thousands of lines of some other script than Latin are about as wide as each other, a
    /// wider one may be missed; it is found when it is seen. 0 without a running application.
    float MeasureWidestLine(const BFont& font);

private:
    friend class BTextView;

    std::unique_ptr<kits::TextBuffer> fBuffer; // never null
    float fWidest = 0;
};
