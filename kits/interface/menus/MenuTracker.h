#pragma once

#include <Point.h>
#include <Rect.h>
#include <SupportDefs.h>

#include <vector>

namespace kits {

/// What a person does with open menus, as a plain state machine: it is told of input and tells what
/// to show.
///
/// Level 0 is the bar, level 1 the menu that hangs on it, and so on; without a bar level 0 is the
/// menu that was opened by itself. While the tracker works all input is its own. Each call to
/// Menus may end it: then nothing more is asked or shown.
class MenuTracker
{
public:
    struct Place
    {
        int32 level = -1; // -1: on no menu
        int32 item = -1;  // -1: on a menu's edge

        bool operator==(const Place& other) const = default;
    };

    /// The menus that are tracked.
    class Menus
    {
    public:
        virtual ~Menus() = default;

        virtual int32 CountItems(int32 level) const = 0;
        /// Whether an item can be chosen or opened; never a separator.
        virtual bool IsEnabled(int32 level, int32 item) const = 0;
        virtual bool HasSubmenu(int32 level, int32 item) const = 0;
        /// Which item of the topmost level is at a point of the screen.
        virtual Place PlaceAt(BPoint screen) const = 0;
        /// The next item, after `item` and round, that answers to a letter; -1 when there is none.
        /// `isTrigger` is set when the letter works it at once.
        virtual int32 FindByLetter(int32 level, int32 item, const char* letter,
                                   bool* isTrigger) const = 0;

        /// Marks the item (-1: none) of a level as the current one.
        virtual void Select(int32 level, int32 item) = 0;
        /// Shows the submenu of an item as the next level.
        virtual void Open(int32 level, int32 item) = 0;
        /// Takes the menus of higher levels off the screen.
        virtual void CloseAbove(int32 level) = 0;
        /// All menus go; then the item does its work.
        virtual void Choose(int32 level, int32 item) = 0;
        /// All menus go.
        virtual void End() = 0;
    };

    explicit MenuTracker(Menus& menus) : fMenus(menus) {}

    /// Begins with a press on a title of the bar.
    void StartByPress(int32 title, BPoint screen, bigtime_t when);
    /// Begins by a key: the first menu opens with its first item current.
    void StartByKey();
    /// Begins with a menu that is open already and hangs on no bar; `item` is its current one.
    void StartWithoutBar(int32 item = -1);
    /// The same where a press opened it.
    void StartWithoutBarByPress(int32 item, BPoint screen, bigtime_t when);

    /// After a press that opened a menu: whether a short click leaves it open, and where (screen
    /// units; not valid: nowhere) any release does.
    void SetStaysOpen(bool afterClick, BRect within);

    void Press(BPoint screen, bigtime_t when);
    void Move(BPoint screen);
    void Release(BPoint screen, bigtime_t when);
    /// A key by its byte (see B_UP_ARROW...) or the UTF-8 character it makes.
    void Key(const char* bytes);
    /// Something else ended it: the window lost the keyboard, was moved or went.
    void Cancel();

    bool IsActive() const { return !fSelected.empty(); }
    /// How many levels are on the screen, the bar included; 0 when it is over.
    int32 CountLevels() const { return static_cast<int32>(fSelected.size()); }
    int32 Selected(int32 level) const;

private:
    int32 Top() const { return CountLevels() - 1; }
    int32 FirstMenu() const { return fHasBar ? 1 : 0; }
    void Select(int32 level, int32 item);
    void OpenItem(int32 level, int32 item);
    void CloseAbove(int32 level);
    void OpenTitle(int32 title);
    void PressToOpen(BPoint screen, bigtime_t when);
    void Point(Place place);
    void Choose(Place place);
    void Step(int32 direction);
    void SelectEnd(int32 direction);
    void GoLeft();
    void GoRight();
    void Escape();
    void Enter();
    void Letter(const char* letter);
    void SelectFirst(int32 level);
    int32 NextEnabled(int32 level, int32 from, int32 direction) const;
    void Finish();

    Menus& fMenus;
    std::vector<int32> fSelected; // the current item of each level that is open
    bool fHasBar = true;
    bool fIsPressed = false; // a button is held since a press on a menu
    bool fIsOpening = false; // that press opened the first menu: a short one leaves it open
    bool fStaysOpenAfterClick = true;
    BRect fStaysOpenWithin; // not valid: nowhere
    BPoint fPressPoint;
    bigtime_t fPressTime = 0;
};

} // namespace kits
