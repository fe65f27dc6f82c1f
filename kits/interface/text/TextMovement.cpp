#include "TextMovement.h"

#include "TextBuffer.h"
#include "TextCutting.h"
#include "TextDecoding.h"
#include "TextPieces.h"

#include <QTextBoundaryFinder>

namespace kits {

namespace {

// How much of a long line is read to either side of an offset.
constexpr int32 kReach = 1024;

// The line around an offset, as the boundary finder reads it; of a long one the part at hand.
struct Place
{
    Place(const TextBuffer& text, int32 offset)
        : line(text.LineOf(offset)), start(text.LineStart(line)), end(text.LineEnd(line)),
          isLong(end - start > TextPieces::kWholeBytes),
          from(isLong ? start + SafeCut(text.Line(line), offset - kReach - start) : start),
          to(isLong ? start + SafeCut(text.Line(line), offset + kReach - start) : end),
          shown(text.Part(from, to), text.Showing()), unit(shown.UnitOf(offset - from))
    {
    }

    // Both find their way from wherever the finder stands; past the ends they stay there.
    int32 Next(QTextBoundaryFinder& finder) const
    {
        finder.setPosition(unit);
        const qsizetype next = finder.toNextBoundary();
        return next < 0 ? to : OffsetOf(next);
    }
    int32 Previous(QTextBoundaryFinder& finder) const
    {
        finder.setPosition(unit);
        const qsizetype previous = finder.toPreviousBoundary();
        return previous < 0 ? from : OffsetOf(previous);
    }
    int32 OffsetOf(qsizetype place) const { return from + shown.ByteOf(static_cast<int32>(place)); }

    int32 line;
    int32 start; // of the line
    int32 end;
    bool isLong;
    int32 from; // of what is read
    int32 to;
    DecodedText shown;
    int32 unit;
};

bool BeginsWord(const QTextBoundaryFinder& finder)
{
    return (finder.boundaryReasons() & QTextBoundaryFinder::StartOfItem) != 0;
}

} // namespace

int32 TextMovement::NextCharacter(int32 offset) const
{
    const Place place(fText, offset);
    if (offset >= place.end) {
        return place.line + 1 < fText.CountLines() ? fText.LineStart(place.line + 1) : place.end;
    }
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, place.shown.Text());
    return place.Next(finder);
}

int32 TextMovement::PreviousCharacter(int32 offset) const
{
    const Place place(fText, offset);
    if (offset <= place.start) {
        return place.line > 0 ? place.start - 1 : 0;
    }
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, place.shown.Text());
    return place.Previous(finder);
}

int32 TextMovement::NextWord(int32 offset) const
{
    const Place place(fText, offset);
    if (offset >= place.end) {
        return NextCharacter(offset);
    }
    if (fText.HidesText()) {
        return place.end; // where words begin would tell of them
    }
    QTextBoundaryFinder finder(QTextBoundaryFinder::Word, place.shown.Text());
    finder.setPosition(place.unit);
    qsizetype next = finder.toNextBoundary();
    while (next >= 0 && next < place.shown.Text().size() && !BeginsWord(finder)) {
        next = finder.toNextBoundary();
    }
    return next < 0 ? place.to : place.OffsetOf(next);
}

int32 TextMovement::PreviousWord(int32 offset) const
{
    const Place place(fText, offset);
    if (offset <= place.start) {
        return PreviousCharacter(offset);
    }
    if (fText.HidesText()) {
        return place.start;
    }
    QTextBoundaryFinder finder(QTextBoundaryFinder::Word, place.shown.Text());
    finder.setPosition(place.unit);
    qsizetype previous = finder.toPreviousBoundary();
    while (previous > 0 && !BeginsWord(finder)) {
        previous = finder.toPreviousBoundary();
    }
    return previous < 0 ? place.from : place.OffsetOf(previous);
}

void TextMovement::GetWord(int32 offset, int32* from, int32* to) const
{
    const Place place(fText, offset);
    if (fText.HidesText()) {
        *from = place.start;
        *to = place.end;
        return;
    }
    QTextBoundaryFinder finder(QTextBoundaryFinder::Word, place.shown.Text());
    finder.setPosition(place.unit);
    *from = finder.isAtBoundary() ? offset : place.Previous(finder);
    *to = place.Next(finder);
    if (*from == place.end && place.end > place.start) {
        *from = place.Previous(finder); // behind the last word
    }
}

void TextMovement::GetLine(int32 offset, int32* from, int32* to) const
{
    const int32 line = fText.LineOf(offset);
    *from = fText.LineStart(line);
    *to = line + 1 < fText.CountLines() ? fText.LineStart(line + 1) : fText.Length();
}

} // namespace kits
