#include "viewer/TextReading.h"

#include "fileops/engine/ProblemList.h"
#include "viewer/SizeText.h"

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
    Reading(const BFont& font, TextTaker& taker) : fFont(font), fTaker(taker) {}

    status_t Open(const std::string& path);
    /// Reads on up to `end`; false when that was not reached, or nobody wants it any more.
    bool ReadTo(int64 end);
    void HandOver(std::string text);

    int64 Size() const { return fSize; }
    status_t Status() const { return fStatus; }
    std::string& Text() { return fText; }

private:
    const BFont& fFont;
    TextTaker& fTaker;
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
    const bool isMeasured = static_cast<int64>(text.size()) <= kMeasuredTextBytes;
    auto contents = std::make_unique<BTextContents>(std::move(text));
    if (isMeasured) {
        contents->MeasureWidestLine(fFont);
    }
    fTaker.TakeText(std::move(contents));
}

void ReadAll(Reading& reading, TextTaker& taker, std::string* remark)
{
    const int64 end = std::min(reading.Size(), kMostTextBytes);
    reading.Text().reserve(static_cast<size_t>(end));
    if (end > kFirstTextBytes && reading.ReadTo(kFirstTextBytes)) {
        reading.HandOver(reading.Text());
    }
    reading.ReadTo(end);
    if (!taker.WantsMore()) {
        return;
    }
    const int64 read = static_cast<int64>(reading.Text().size());
    if (reading.Status() != B_OK) {
        *remark = "the first " + SizeText(read) + ": " + ReasonFor(reading.Status());
    } else if (end < reading.Size()) {
        *remark = "the first " + SizeText(read) + " of " + SizeText(reading.Size());
    }
    reading.HandOver(std::move(reading.Text()));
}

} // namespace

void ReadText(const std::string& path, const BFont& font, TextTaker& taker, std::string* trouble,
              std::string* remark)
{
    try {
        Reading reading(font, taker);
        const status_t status = reading.Open(path);
        if (status == B_OK) {
            ReadAll(reading, taker, remark);
        } else {
            *trouble = ReasonFor(status);
        }
    } catch (const std::bad_alloc&) {
        *trouble = ReasonFor(B_NO_MEMORY);
    }
}

} // namespace norvane
