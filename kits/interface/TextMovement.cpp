#include "TextMovement.h"

#include "TextBuffer.h"
#include "TextDecoding.h"

#include <QTextBoundaryFinder>

namespace kits {

namespace {

// The line around an offset, as the boundary finder reads it.
struct Place
{
    Place(const TextBuffer& text, int32 offset)
        : line(text.LineOf(offset)), start(text.LineStart(line)), end(text.LineEnd(line)),
          shown(text.Part(start, end), text.IsSingleLine()), unit(shown.UnitOf(offset - start))
    {
    }

    // Both find their way from wherever the finder stands; past the ends they stay there.
    int32 Next(QTextBoundaryFinder& finder) const
    {
        finder.setPosition(unit);
        const qsizetype next = finder.toNextBoundary();
        return next < 0 ? end : start + shown.ByteOf(static_cast<int32>(next));
    }
    int32 Previous(QTextBoundaryFinder& finder) const
    {
        finder.setPosition(unit);
        const qsizetype previous = finder.toPreviousBoundary();
        return previous < 0 ? start : start + shown.ByteOf(static_cast<int32>(previous));
    }

    int32 line;
    int32 start;
    int32 end;
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
    QTextBoundaryFinder finder(QTextBoundaryFinder::Word, place.shown.Text());
    finder.setPosition(place.unit);
    qsizetype next = finder.toNextBoundary();
    while (next >= 0 && next < place.shown.Text().size() && !BeginsWord(finder)) {
        next = finder.toNextBoundary();
    }
    return next < 0 ? place.end : place.start + place.shown.ByteOf(static_cast<int32>(next));
}

int32 TextMovement::PreviousWord(int32 offset) const
{
    const Place place(fText, offset);
    if (offset <= place.start) {
        return PreviousCharacter(offset);
    }
    QTextBoundaryFinder finder(QTextBoundaryFinder::Word, place.shown.Text());
    finder.setPosition(place.unit);
    qsizetype previous = finder.toPreviousBoundary();
    while (previous > 0 && !BeginsWord(finder)) {
        previous = finder.toPreviousBoundary();
    }
    return previous < 0 ? place.start
                        : place.start + place.shown.ByteOf(static_cast<int32>(previous));
}

void TextMovement::GetWord(int32 offset, int32* from, int32* to) const
{
    const Place place(fText, offset);
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
