#include "panes/PatternMarking.h"

#include "MessageCodes.h"
#include "panes/NamePatterns.h"
#include "panes/PaneMarks.h"
#include "panes/PatternHistory.h"
#include "panes/PatternWin.h"

#include <AppDefs.h>
#include <Autolock.h>
#include <Locker.h>
#include <Message.h>
#include <View.h>
#include <Window.h>

#include <limits>
#include <string>
#include <vector>

namespace norvane {

namespace {

/// Of all panes, while the program runs.
struct SharedHistory
{
    BLocker lock{"patterns"};
    PatternHistory patterns; // guarded by the lock
};

SharedHistory& History()
{
    static SharedHistory history;
    return history;
}

std::vector<std::string> LastPatterns()
{
    const BAutolock lock(History().lock);
    return History().patterns.Patterns();
}

void MarkByPattern(const BMessage& message, PaneMarks& marks)
{
    const std::string text = message.GetString("text", "");
    const NamePatterns patterns(text);
    if (patterns.IsEmpty()) {
        return;
    }
    {
        const BAutolock lock(History().lock);
        History().patterns.Add(text);
    }
    if (message.GetBool("marks", true)) {
        marks.MarkMatching(patterns);
    } else {
        marks.UnmarkMatching(patterns);
    }
}

} // namespace

void AskForPattern(BView& list, PatternUse use)
{
    if (list.Window() != nullptr) {
        auto* question = new PatternWin(list.Window()->Frame(), &list, use, LastPatterns());
        question->Show();
    }
}

bool MarkAsTold(const BMessage& message, PaneMarks& marks)
{
    switch (message.what) {
    case kPatternTyped:
        MarkByPattern(message, marks);
        return true;
    case B_SELECT_ALL:
        marks.Mark(0, std::numeric_limits<int32>::max());
        return true;
    default:
        return false;
    }
}

} // namespace norvane
