#pragma once

#include <SupportDefs.h>

namespace kits {

/// Where the parts of a scroll bar lie along it, and which value a place means. Plain arithmetic.
///
/// Units: view units along the bar, counted from its first one; a part covers [start, start +
/// length).
class ScrollGeometry
{
public:
    enum class Part : uint8 {
        kNone,
        kLessArrow,
        kMoreArrow,
        kLessPage, // the trough before the thumb
        kMorePage,
        kThumb,
    };

    struct Values
    {
        float min = 0;
        float max = 0;
        float value = 0;
        float proportion = 0;
    };

    /// `length` and `breadth` count units, edges included.
    ScrollGeometry(float length, float breadth, const Values& values);

    /// How long each of the two arrows is, the bar's edge included.
    float ArrowLength() const { return fArrowLength; }
    float TroughStart() const { return fArrowLength; }
    float TroughLength() const;
    /// False when there is nothing to scroll or no room for a thumb.
    bool HasThumb() const { return fThumbLength > 0; }
    float ThumbStart() const { return fThumbStart; }
    float ThumbLength() const { return fThumbLength; }

    Part PartAt(float position) const;
    /// The value, in whole units and within the range, of a thumb that begins at `start`, however
    /// far outside.
    float ValueOfThumbAt(float start) const;

private:
    Values fValues;
    float fLength;
    float fArrowLength;
    float fThumbStart = 0;
    float fThumbLength = 0;
};

} // namespace kits
