#pragma once

#include <SupportDefs.h>

class BMessage;
class BView;

namespace norvane {

class PaneMarks;

/// What is done with the rows whose names match a pattern.
enum class PatternUse : uint8 { kMark, kUnmark };

/// Has a window ask for a pattern; the list is told of it by kPatternTyped. Nothing outside a
/// window. Thread: the list's window's.
void AskForPattern(BView& list, PatternUse use);

/// Does what such an answer says, or marks all rows on B_SELECT_ALL. False for any other message.
/// Thread: the list's window's.
bool MarkAsTold(const BMessage& message, PaneMarks& marks);

} // namespace norvane
