#pragma once

#include "panes/RangeMarks.h"

#include <SupportDefs.h>

class BMessage;

namespace norvane {

class ColumnListView;
class PaneMarks;
class PaneRows;

/// A key as it reached a list.
struct KeyPress
{
    const char* bytes;
    int32 byteCount;
    int32 functionKey = 0; // of B_FUNCTION_KEY
    uint32 modifiers = 0;
    bool isRepeat = false;
};

/// What a key is for.
enum class PaneCommand : uint8 {
    kNone,
    kTrash,
    kUp,
    kBack,
    kForward,
    kMarkAndMeasure,
    kMarkAndGoOn,
    kToggleMarks,
    kMarkAll,
    kUnmarkAll,
    kHelp,
    kRefresh,
    kLister,
    kEditor,
    kCopy,
    kMove,
    kRename,
    kNewFolder,
    kQuery,
    kTypeAhead,
    kStop,
    kMarkTo,
    kMarkMatching,
    kUnmarkMatching,
    kFilter,
    kProperties,
    kMenu,
    kScrollLeft,
    kScrollRight,
};

struct KeyMeaning
{
    PaneCommand command = PaneCommand::kNone;
    bool isUsedUp = false; // else the key goes on to the list
};

KeyMeaning MeaningOf(const KeyPress& key);

/// A list as what its keys command.
class KeyTarget
{
public:
    virtual ~KeyTarget() = default;

    virtual void Trash() = 0;
    virtual void NavigateUp() = 0;
    virtual void GoBack() = 0;
    virtual void GoForward() = 0;
    /// Breaks off what the place shown is doing; false when that is nothing.
    virtual bool CancelWork() = 0;
    /// Starts measuring what is selected.
    virtual int64 GetSize() = 0;
    virtual void Refresh() = 0;
    virtual void DoRename() = 0;
    virtual void OpenLister() = 0;
    virtual void OpenEditor() = 0;
    virtual void OpenRowMenu() = 0;
    /// The message that carries what is chosen; null when nothing is. Returned to the caller.
    virtual BMessage* GetRefMsg(int32 index) = 0;
    virtual void NotifyParent(uint32 code) = 0;
    /// Opens the field for what names are to hold.
    virtual void OpenFilter() = 0;
    /// False when there is no filter.
    virtual bool EndFilter() = 0;
};

/// Carries out what the keys of a list are for.
///
/// Thread: the list's window's.
class PaneKeys
{
public:
    PaneKeys(ColumnListView& list, PaneRows& rows, PaneMarks& marks, KeyTarget& target)
        : fList(list), fRows(rows), fMarks(marks), fTarget(target), fRange(rows, marks)
    {
    }

    /// True when the key is used up.
    bool KeyDown(const KeyPress& key);
    /// A row goes away.
    void Forget(const DirListItem* row) { fRange.Forget(row); }
    void ForgetAll() { fRange.End(); }

private:
    void CarryOut(PaneCommand command, const KeyPress& key);
    void ChangeMarks(PaneCommand command, const KeyPress& key);
    void MarkSelected();
    void MarkSelectedAndGoOn();
    void MarkTo(const KeyPress& key);
    void StartCopy(const char* type);
    void Stop();
    void TypeAhead(const KeyPress& key);
    void ScrollSideways(float direction);
    void Post(uint32 code);

    ColumnListView& fList;
    PaneRows& fRows;
    PaneMarks& fMarks;
    KeyTarget& fTarget;
    RangeMarks fRange;
};

} // namespace norvane
