#include "viewer/TextReading.h"

#include "fileops/engine/ProblemList.h"
#include "viewer/RoughSize.h"

#include <Entry.h>
#include <File.h>
#include <TextContents.h>

#include <algorithm>
#include <new>
#include <sys/stat.h>
#include <utility>
#include <vector>

namespace norvane {

namespace {

constexpr size_t kPieceBytes = size_t{1024} * 1024;

/// One file on its way into a text.
class Reading
{
public:
    Reading(TextEncoding encoding, const BFont& font, TextTaker& taker, const TextLimits& limits)
        : fEncoding(encoding), fFont(font), fTaker(taker), fLimits(limits)
    {
    }

    status_t Open(const std::string& path);
    /// Reads on up to `end`; false when that was not reached, or nobody wants it any more.
    /// Reads what the limits allow and hands it over; tells how much, when that is not all.
    TextOutcome ReadAll();

private:
    bool ReadTo(int64 end);
    void HandOver(std::string text);
    TextEncoding EncodingOf(const std::string& text, bool isWhole) const;

    const TextEncoding fEncoding;
    const BFont& fFont;
    TextTaker& fTaker;
    const TextLimits& fLimits;
    BFile fFile;
    int64 fSize = 0;
    status_t fStatus = B_OK;
    std::string fText;
    std::vector<char> fPiece = std::vector<char>(kPieceBytes);
};

status_t Reading::Open(const std::string& path)
{
    // Looked at before it is opened: whoever waits at the other end of a FIFO would notice that.
    const BEntry entry(path.c_str(), true);
    struct stat st;
    status_t status = entry.GetStat(&st);
    if (status == B_OK && !S_ISREG(st.st_mode)) {
        status = B_BAD_VALUE;
    }
    if (status == B_OK) {
        status = fFile.SetTo(&entry, B_READ_ONLY);
    }
    off_t size = 0;
    if (status == B_OK) {
        status = fFile.GetSize(&size);
    }
    fSize = size;
    return status;
}

// False when the end was not reached, or nobody wants it any more.
bool Reading::ReadTo(int64 end)
{
    while (static_cast<int64>(fText.size()) < end && fTaker.WantsMore()) {
        const size_t wanted = std::min(kPieceBytes, static_cast<size_t>(end) - fText.size());
        const ssize_t count = fFile.Read(fPiece.data(), wanted);
        if (count < 0) {
            fStatus = static_cast<status_t>(count);
            return false;
        }
        if (count == 0) {
            return false; // it became shorter
        }
        fText.append(fPiece.data(), static_cast<size_t>(count));
    }
    return static_cast<int64>(fText.size()) >= end;
}

void Reading::HandOver(std::string text)
{
    const bool isMeasured = static_cast<int64>(text.size()) <= fLimits.measured;
    auto contents = std::make_unique<BTextContents>(std::move(text));
    if (isMeasured) {
        contents->MeasureWidestLine(fFont);
    }
    fTaker.TakeText(std::move(contents));
}

TextEncoding Reading::EncodingOf(const std::string& text, bool isWhole) const
{
    return fEncoding != TextEncoding::kGuessed ? fEncoding : GuessEncoding(text, isWhole);
}

TextOutcome Reading::ReadAll()
{
    TextOutcome outcome;
    fFile.GetNodeRef(&outcome.node);
    const int64 end = std::min(fSize, fLimits.most);
    fText.reserve(static_cast<size_t>(end));
    if (end > fLimits.first && ReadTo(fLimits.first)) {
        HandOver(TextOf(fText, EncodingOf(fText, false), nullptr));
    }
    ReadTo(end);
    if (!fTaker.WantsMore()) {
        return outcome;
    }
    const std::string read = "the first " + RoughSize(static_cast<int64>(fText.size()));
    if (fStatus != B_OK) {
        outcome.remark = read + ": " + ReasonFor(fStatus);
    } else if (end < fSize) {
        outcome.remark = read + " of " + RoughSize(fSize);
    }
    outcome.encoding = EncodingOf(fText, end == fSize);
    outcome.bytesRead = static_cast<int64>(fText.size());
    if (outcome.encoding != TextEncoding::kUtf8) {
        size_t taken = 0;
        fText = TextOf(fText, outcome.encoding, &taken);
        outcome.bytesRead = static_cast<int64>(taken);
    }
    HandOver(std::move(fText));
    return outcome;
}

} // namespace

TextOutcome ReadText(const std::string& path, TextEncoding encoding, const BFont& font,
                     TextTaker& taker, const TextLimits& limits)
{
    TextOutcome outcome;
    try {
        Reading reading(encoding, font, taker, limits);
        const status_t status = reading.Open(path);
        if (status == B_OK) {
            outcome = reading.ReadAll();
        } else {
            outcome.trouble = ReasonFor(status);
        }
    } catch (const std::bad_alloc&) {
        outcome.trouble = ReasonFor(B_NO_MEMORY);
    }
    return outcome;
}

} // namespace norvane
