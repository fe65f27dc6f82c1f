#pragma once

#include <SupportDefs.h>

#include <string>

namespace norvane {

class ColumnListView;
class ColumnOwner;

/// What a column carries, as bits.
enum CLVColumnFlags : uint32 {
    CLV_SORT_KEYABLE = 0x001,
    CLV_NOT_MOVABLE = 0x002,
    CLV_NOT_RESIZABLE = 0x004,
    CLV_LOCK_AT_BEGINNING = 0x008,
    CLV_LOCK_AT_END = 0x010,
    CLV_HIDDEN = 0x020,
    CLV_MERGE_WITH_RIGHT = 0x040,
    CLV_LOCK_WITH_RIGHT = 0x080,
    CLV_EXPANDER = 0x100,
    CLV_PUSH_PASS = 0x200
};

enum CLVSortMode { Ascending = 0, Descending = 1, NoSort = 2 };

/// One column of a ColumnListView.
///
/// Ownership: the list it is added to deletes it.
class CLVColumn
{
public:
    static constexpr float kSmallestMinimum = 4;
    /// Broader than any screen, and yet every place in a list of such columns is exact.
    static constexpr float kLargestWidth = 10'000;
    static constexpr float kExpanderWidth = 20;

    /// An expander column has no label, a fixed width of its own, and ignores most flags.
    explicit CLVColumn(const char* label, float width = 20, uint32 flags = 0,
                       float minimumWidth = 20);
    virtual ~CLVColumn();
    CLVColumn(const CLVColumn&) = delete;
    CLVColumn& operator=(const CLVColumn&) = delete;

    /// Changes the width, within the minimum and the largest; what is shown moves along.
    virtual void SetWidth(float width);
    /// Shows or hides the column.
    void SetShown(bool isShown);

    /// The label, null for an expander column.
    const char* Label() const { return fHasLabel ? fLabel.c_str() : nullptr; }
    float Width() const { return fWidth; }
    float MinimumWidth() const { return fMinimumWidth; }
    /// Where the column begins and ends in the list, valid after a layout.
    float Begin() const { return fBegin; }
    float End() const { return fEnd; }
    uint32 Flags() const { return fFlags; }
    bool IsShown() const { return (fFlags & CLV_HIDDEN) == 0; }
    /// Whether the last layout indents this column by the outline level.
    bool IsShifted() const { return fIsShifted; }
    CLVSortMode SortMode() const { return fSortMode; }
    /// What it was added to; null before, and once it is removed.
    ColumnOwner* Parent() const { return fParent; }

private:
    friend class ColumnListView;

    std::string fLabel;
    bool fHasLabel = false;
    float fWidth;
    float fMinimumWidth;
    float fBegin = 0;
    float fEnd = 0;
    uint32 fFlags;
    bool fIsShifted = false;
    CLVSortMode fSortMode = NoSort;
    ColumnOwner* fParent = nullptr;
};

} // namespace norvane
