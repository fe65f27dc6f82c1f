#pragma once

#include <SupportDefs.h>

namespace norvane {

class DirView;
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
    kMarkAndMeasure,
    kMarkAndGoOn,
    kToggleMarks,
    kMarkAll,
    kUnmarkAll,
    kHelp,
    kRefresh,
    kCopy,
    kMove,
    kRename,
    kNewFolder,
    kQuery,
    kTypeAhead,
};

struct KeyMeaning
{
    PaneCommand command = PaneCommand::kNone;
    bool isUsedUp = false; // else the key goes on to the list
};

KeyMeaning MeaningOf(const KeyPress& key);

/// Carries out what the keys of a list are for.
///
/// Thread: the list's window's.
class PaneKeys
{
public:
    PaneKeys(DirView& list, PaneRows& rows, PaneMarks& marks)
        : fList(list), fRows(rows), fMarks(marks)
    {
    }

    /// True when the key is used up.
    bool KeyDown(const KeyPress& key);

private:
    void CarryOut(PaneCommand command, const KeyPress& key);
    void MarkSelected();
    void MarkSelectedAndGoOn();
    void StartCopy(const char* type);
    void TypeAhead(const KeyPress& key);
    void Post(uint32 code);

    DirView& fList;
    PaneRows& fRows;
    PaneMarks& fMarks;
};

} // namespace norvane
