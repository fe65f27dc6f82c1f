#include <TextContents.h>

#include "interface/text/TextBuffer.h"
#include "interface/text/TextGeometry.h"
#include "server/ToolkitUse.h"

#include <Font.h>

#include <algorithm>
#include <array>
#include <utility>
#include <vector>

namespace {

// So many lines that are the widest by a rough measure are measured exactly.
constexpr size_t kCandidates = 64;

struct Candidate
{
    float roughWidth;
    int32 line;
};

// For heaps whose top is the narrowest.
bool IsWider(const Candidate& one, const Candidate& other)
{
    return one.roughWidth > other.roughWidth;
}

/// How wide bytes are on the average: kerning is left out, and letters of other scripts than the
/// first are as wide as any.
class RoughWidths
{
public:
    explicit RoughWidths(const BFont& font)
    {
        for (int byte = 0; byte < 0x80; ++byte) {
            const char letter[] = {static_cast<char>(byte), '\0'};
            const bool isShown = byte >= 0x20 && byte != 0x7f;
            At(byte) = isShown ? font.StringWidth(letter) : font.Size();
        }
        At('\t') = kTabWidth;
        for (int first = 0xc0; first < 0x100; ++first) {
            At(first) = font.Size();
        }
    }

    float Of(std::string_view line) const
    {
        float width = 0;
        for (const char byte : line) {
            width += fWidths[static_cast<uint8>(byte)];
        }
        return width;
    }

private:
    static constexpr float kTabWidth = 32;

    float& At(int byte) { return fWidths[static_cast<size_t>(byte)]; }

    std::array<float, 256> fWidths = {}; // what follows a letter's first byte adds nothing
};

std::vector<Candidate> FindCandidates(const kits::TextBuffer& text, const RoughWidths& widths)
{
    std::vector<Candidate> heap; // the narrowest is at its top
    for (int32 line = 0; line < text.CountLines(); ++line) {
        const Candidate found = {widths.Of(text.Line(line)), line};
        if (heap.size() == kCandidates && !IsWider(found, heap.front())) {
            continue;
        }
        if (heap.size() == kCandidates) {
            std::pop_heap(heap.begin(), heap.end(), IsWider);
            heap.pop_back();
        }
        heap.push_back(found);
        std::push_heap(heap.begin(), heap.end(), IsWider);
    }
    return heap;
}

} // namespace

BTextContents::BTextContents(std::string text) : fBuffer(std::make_unique<kits::TextBuffer>())
{
    fBuffer->TakeText(std::move(text));
}

BTextContents::~BTextContents() = default;

int32 BTextContents::Length() const
{
    return fBuffer->Length();
}

int32 BTextContents::CountLines() const
{
    return fBuffer->CountLines();
}

float BTextContents::MeasureWidestLine(const BFont& font)
{
    const kits::ToolkitUse use;
    if (!use) {
        return 0;
    }
    kits::TextGeometry geometry(*fBuffer);
    geometry.SetFont(font);
    for (const Candidate& candidate : FindCandidates(*fBuffer, RoughWidths(font))) {
        fWidest = std::max(fWidest, geometry.RowWidth(candidate.line));
    }
    return fWidest;
}
