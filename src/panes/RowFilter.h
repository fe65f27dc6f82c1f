#pragma once

#include "panes/FolderTotals.h"
#include "panes/NamePart.h"
#include "panes/RowOrder.h"

#include <string>
#include <vector>

class BList;

namespace norvane {

class PaneRows;

/// Keeps rows out of a list whose names do not hold a text, and knows where among the others they
/// stand.
///
/// While it is on it has all rows in their order, and of each by which of the texts, typed one
/// after the other, it went: so a longer text looks through the rows that are still shown, and the
/// former text has its rows back without a look at any name. While it is off the list's rows are
/// all there are. ".." is always shown. Plain data: the rows are borrowed.
class RowFilter : public RowSequence
{
public:
    explicit RowFilter(const PaneRows& shown) : fShown(shown) {}

    // RowSequence, of all rows
    int32 CountRows() const override;
    DirListItem* RowAt(int32 index) const override;

    bool IsOn() const { return fIsOn; }
    const std::string& Text() const;
    /// Goes on, without a text, from the rows that the list has.
    void Begin();
    /// Goes off; all rows are to be shown.
    void End();
    /// False when the same rows are shown as before.
    bool SetText(const std::string& text);

    /// The rows that are to be shown.
    BList Shown() const;
    /// How many of the rows before an index are.
    int32 ShownBefore(int32 index) const;
    /// Files that are not.
    const FolderTotals& HiddenTotals() const { return fHiddenTotals; }

    // Changes of rows; but for Judge() only while it is on
    void Clear();
    /// These are all rows now, each judged before.
    void SetRows(const BList& rows);
    /// Notes in a row whether it is shown, by its name. False when that stays as it was. Its place
    /// learns of it by the functions around this one.
    bool Judge(DirListItem* row);
    void Insert(int32 index, DirListItem* row);
    void Remove(int32 index);
    /// Takes over what Judge() found of a row, and a new place for it.
    void Move(int32 from, int32 to);
    /// A row that changes is counted out before and in afterwards.
    void CountOut(const DirListItem& row);
    void CountIn(const DirListItem& row);

private:
    uint8 LevelOf(const DirListItem& row) const;
    void Hide(DirListItem* row, uint8 level);

    const PaneRows& fShown;
    bool fIsOn = false;
    std::vector<NamePart> fTexts;    // each narrower than the one before
    std::vector<DirListItem*> fRows; // all
    std::vector<uint8> fLevels;      // of each: 0, or which text keeps it out, counted from 1
    FolderTotals fHiddenTotals;
};

} // namespace norvane
