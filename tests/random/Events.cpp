#include "Events.h"

#include "Screen.h"

#include <testing/Driver.h>

#include <InterfaceDefs.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <iterator>
#include <unistd.h>

using namespace kits::testing;

namespace {

constexpr bigtime_t kDragPatience = 30'000;

constexpr size_t kKept = 50;
constexpr size_t kLength = 160;
char gLast[kKept][kLength];
size_t gCount = 0;

template<typename... Arguments>
void Note(const char* format, Arguments... arguments)
{
    char* line = gLast[gCount % kKept];
    const int used = std::snprintf(line, kLength, "%zu: ", gCount + 1);
    std::snprintf(line + used, kLength - static_cast<size_t>(used), format, arguments...);
    gCount++;
}

struct NamedKey
{
    char byte;
    const char* name;
};

constexpr NamedKey kSteering[] = {
    {B_ENTER, "Enter"},   {B_ENTER, "Enter"},         {B_ESCAPE, "Escape"},
    {B_SPACE, "Space"},   {B_INSERT, "Insert"},       {B_INSERT, "Insert"},
    {B_TAB, "Tab"},       {B_DELETE, "Delete"},       {B_HOME, "Home"},
    {B_END, "End"},       {B_BACKSPACE, "Backspace"}, {B_PAGE_UP, "Page Up"},
    {B_ESCAPE, "Escape"}, {B_PAGE_DOWN, "Page Down"},
};
constexpr NamedKey kArrows[] = {
    {B_DOWN_ARROW, "Down"}, {B_UP_ARROW, "Up"},       {B_DOWN_ARROW, "Down"},
    {B_LEFT_ARROW, "Left"}, {B_RIGHT_ARROW, "Right"},
};
// No 't', which starts another program. 'q' is typed less often: it ends this one.
constexpr NamedKey kCommands[] = {
    {'c', "C"},
    {'x', "X"},
    {'v', "V"},
    {'v', "V"},
    {'g', "G"},
    {'p', "P"},
    {'d', "D"},
    {'e', "E"},
    {'n', "N"},
    {'s', "S"},
    {'o', "O"},
    {'1', "1"},
    {'2', "2"},
    {'3', "3"},
    {'4', "4"},
    {'a', "A"},
    {'z', "Z"},
    {B_UP_ARROW, "Up"},
    {B_DOWN_ARROW, "Down"},
    {B_LEFT_ARROW, "Left"},
    {B_RIGHT_ARROW, "Right"},
};
constexpr const char* kTexts[] = {"new name",
                                  "~/work",
                                  "~/work/many\n",
                                  "/",
                                  "..\n",
                                  "a/b",
                                  "~/work/odd\n",
                                  "other 7\n",
                                  ".hidden\n",
                                  "~/work/nested/a\n",
                                  "\xc3\xa4\xe4\xbd\xa0",
                                  "x\n",
                                  "~\n"};
constexpr const char* kMenuLetters = "fnvawhoredc";

uint32 OrNone(bool isHeld, uint32 modifier)
{
    return isHeld ? modifier : 0;
}

template<typename Table>
const auto& PickFrom(const Table& table, uint32 number)
{
    return table[number % std::size(table)];
}

} // namespace

struct Events::Choice
{
    uint32 weight;
    void (Events::*act)();
};

const Events::Choice Events::kChoices[] = {
    {10, &Events::TypeLetter},     {3, &Events::TypeDigit},     {5, &Events::TypeSign},
    {30, &Events::TypeSteering},   {22, &Events::TypeArrow},    {8, &Events::TypeFunction},
    {14, &Events::TypeCommand},    {2, &Events::TypeSomeText},  {2, &Events::UseMenuKeys},
    {14, &Events::ClickSomewhere}, {6, &Events::DragSomething}, {4, &Events::TurnSomeWheel},
};

Events::Events(uint32_t seed, int done) : fDice(seed)
{
    fDice.discard(fDrawn.size() * static_cast<unsigned>(done));
    gCount = static_cast<size_t>(done);
}

void Events::DoOne()
{
    std::generate(fDrawn.begin(), fDrawn.end(), std::ref(fDice));
    fUsed = 0;
    uint32 all = 0;
    for (const Choice& choice : kChoices) {
        all += choice.weight;
    }
    uint32 drawn = Draw(all);
    const Choice* chosen = kChoices;
    while (drawn >= chosen->weight) {
        drawn -= chosen->weight;
        chosen++;
    }
    (this->*chosen->act)();
    AwaitShortQueues();
}

void Events::PrintLast()
{
    for (size_t i = gCount > kKept ? gCount - kKept : 0; i < gCount; i++) {
        const char* line = gLast[i % kKept];
        [[maybe_unused]] ssize_t written = write(STDERR_FILENO, line, std::strlen(line));
        written = write(STDERR_FILENO, "\n", 1);
    }
}

uint32 Events::Draw(uint32 limit)
{
    return fDrawn[fUsed++ % fDrawn.size()] % limit;
}

uint32 Events::Modifiers()
{
    const uint32 drawn = Draw(12);
    return OrNone(drawn == 0, B_COMMAND_KEY) | OrNone(drawn == 1 || drawn == 2, B_SHIFT_KEY);
}

void Events::TypeNamed(char byte, const char* name, uint32 modifiers)
{
    Note("key %s%s%s", (modifiers & B_COMMAND_KEY) != 0 ? "Ctrl+" : "",
         (modifiers & B_SHIFT_KEY) != 0 ? "Shift+" : "", name);
    TypeKey(byte, modifiers);
}

void Events::TypeLetter()
{
    const char name[] = {static_cast<char>('a' + Draw(26)), '\0'};
    TypeNamed(name[0], name, OrNone(Draw(6) == 0, B_SHIFT_KEY));
}

void Events::TypeDigit()
{
    const char name[] = {static_cast<char>('0' + Draw(10)), '\0'};
    TypeNamed(name[0], name, 0);
}

void Events::TypeSign()
{
    const char name[] = {"+-*./"[Draw(5)], '\0'};
    TypeNamed(name[0], name, Modifiers());
}

void Events::TypeSteering()
{
    const NamedKey& key = PickFrom(kSteering, Draw(1000));
    TypeNamed(key.byte, key.name, Modifiers());
}

void Events::TypeArrow()
{
    const NamedKey& key = PickFrom(kArrows, Draw(1000));
    const uint32 modifiers = Modifiers();
    const int32 repeats = Draw(4) == 0 ? static_cast<int32>(Draw(12)) : 0;
    Note("key %s held for %d repeats, modifiers %x", key.name, static_cast<int>(repeats),
         static_cast<unsigned>(modifiers));
    HoldKey(key.byte, repeats, modifiers);
}

void Events::TypeFunction()
{
    const int32 number = static_cast<int32>(Draw(8));
    const uint32 modifiers = Modifiers();
    Note("key F%d, modifiers %x", static_cast<int>(number + 1), static_cast<unsigned>(modifiers));
    TypeFunctionKey(B_F1_KEY + number, modifiers);
}

void Events::TypeCommand()
{
    const NamedKey& key = PickFrom(kCommands, Draw(1000));
    if (Draw(1500) == 0) {
        TypeNamed('q', "Q", B_COMMAND_KEY);
        return;
    }
    // Panes are taken away as often as they are added.
    const bool isShifted = key.byte == 'p' ? Draw(2) == 0 : Draw(10) == 0;
    TypeNamed(key.byte, key.name, B_COMMAND_KEY | OrNone(isShifted, B_SHIFT_KEY));
}

void Events::TypeSomeText()
{
    const char* text = PickFrom(kTexts, Draw(1000));
    const bool isCommitted = Draw(4) == 0;
    Note("%s \"%s\"", isCommitted ? "commit" : "type", text);
    if (isCommitted) {
        CommitText(text);
    } else {
        TypeText(text);
    }
}

void Events::UseMenuKeys()
{
    const char letter = kMenuLetters[Draw(static_cast<uint32>(std::strlen(kMenuLetters)))];
    Note("key Alt, then %c", letter);
    PressModifier(B_OPTION_KEY);
    ReleaseModifier(B_OPTION_KEY);
    TypeKey(letter);
}

namespace {

BPoint PointIn(const BRect& frame, uint32 across, uint32 down)
{
    const auto part = [](float from, float to, uint32 number) {
        return from + (to - from) * static_cast<float>(number % 10000) / 10000;
    };
    return BPoint(part(frame.left, frame.right, across), part(frame.top, frame.bottom, down));
}

/// A point of any window on the screen.
bool FindPoint(uint32 window, uint32 across, uint32 down, BPoint* point)
{
    const std::vector<SeenWindow> seen = SeenWindows();
    if (seen.empty()) {
        return false;
    }
    *point = PointIn(seen[window % seen.size()].frame, across, down);
    return true;
}

} // namespace

void Events::ClickSomewhere()
{
    const uint32 window = Draw(1000);
    const uint32 across = Draw(10000);
    const uint32 down = Draw(10000);
    const uint32 button = Draw(5) == 0 ? B_SECONDARY_MOUSE_BUTTON : B_PRIMARY_MOUSE_BUTTON;
    const uint32 clicks = std::max<uint32>(1, Draw(6) / 2 + (Draw(8) == 0 ? 1 : 0));
    const uint32 modifiers = Modifiers();
    BPoint point;
    if (!FindPoint(window, across, down, &point)) {
        Note("no window to click");
        return;
    }
    Note("%d clicks of button %d at %d,%d, modifiers %x", static_cast<int>(clicks),
         static_cast<int>(button), static_cast<int>(point.x), static_cast<int>(point.y),
         static_cast<unsigned>(modifiers));
    MoveMouseAt(point, modifiers);
    for (uint32 click = 0; click < clicks; click++) {
        PressMouseAt(point, button, modifiers);
        ReleaseMouseAt(point, button, modifiers);
    }
}

void Events::DragSomething()
{
    const uint32 window = Draw(1000);
    const uint32 across = Draw(10000);
    const uint32 down = Draw(10000);
    const uint32 windowTo = Draw(1000);
    const uint32 acrossTo = Draw(10000);
    const uint32 downTo = Draw(10000);
    const uint32 button = Draw(6) == 0 ? B_SECONDARY_MOUSE_BUTTON : B_PRIMARY_MOUSE_BUTTON;
    const uint32 modifiers = Modifiers();
    const bool isPatient = Draw(2) == 0;
    BPoint from;
    BPoint to;
    if (!FindPoint(window, across, down, &from) || !FindPoint(windowTo, acrossTo, downTo, &to)) {
        Note("no window to drag in");
        return;
    }
    Note("drag of button %d from %d,%d to %d,%d, modifiers %x%s", static_cast<int>(button),
         static_cast<int>(from.x), static_cast<int>(from.y), static_cast<int>(to.x),
         static_cast<int>(to.y), static_cast<unsigned>(modifiers), isPatient ? "" : ", hasty");
    MoveMouseAt(from, modifiers);
    PressMouseAt(from, button, modifiers);
    constexpr int kSteps = 6;
    for (int step = 1; step <= kSteps; step++) {
        const float part = static_cast<float>(step) / kSteps;
        MoveMouseAt(BPoint(from.x + (to.x - from.x) * part, from.y + (to.y - from.y) * part),
                    modifiers);
        if (step == 2 && isPatient) {
            WaitForDrag(true, kDragPatience);
        }
    }
    ReleaseMouseAt(to, button, modifiers);
}

void Events::TurnSomeWheel()
{
    const uint32 window = Draw(1000);
    const uint32 across = Draw(10000);
    const uint32 down = Draw(10000);
    const int notches = static_cast<int>(Draw(9)) - 4;
    const uint32 modifiers = Modifiers();
    BPoint point;
    if (!FindPoint(window, across, down, &point)) {
        Note("no window to turn the wheel in");
        return;
    }
    Note("wheel by %d at %d,%d, modifiers %x", notches, static_cast<int>(point.x),
         static_cast<int>(point.y), static_cast<unsigned>(modifiers));
    TurnWheelAt(point, static_cast<float>(notches), modifiers);
}
