#pragma once

#include "MenuPlacement.h"
#include "MenuTracker.h"
#include "interface/views/ViewHost.h"

#include <Rect.h>

#include <functional>
#include <memory>
#include <vector>

class BMenu;
class BMenuItem;
class BMessage;
class BWindow;

namespace kits {

class PopUpHost;

/// How a menu that hangs nowhere is opened.
struct PopUpOrder
{
    BPoint leftTop;                  // screen units
    const BMessage* cause = nullptr; // what the window handles: a press, a key or anything else
    bool isToInvoke = false;         // what is chosen; else it is only told
    bool staysOpenAfterClick = true; // else the release of the button that is held closes it
    BRect clickToOpen;               // a release in it leaves the menu open, too; screen units
    /// Is told what was chosen, null for nothing, when all is over. It may delete the menu.
    std::function<void(BMenuItem*)> atEnd;
};

/// Menus while they are open: shows them, and leads the window's input to the tracker.
///
/// Menus tell it before they change; it closes then, so that nothing is chosen but what was seen.
/// When the menus are gone it goes on swallowing the press that closed them, up to its release.
/// Hooks of the window, its menus and items may change menus, end the session or let go of it.
/// Thread: the window's. Ownership: shared, so that it outlives the hook that let go of it.
class MenuSession : public InputInterceptor,
                    public std::enable_shared_from_this<MenuSession>,
                    private MenuTracker::Menus
{
public:
    explicit MenuSession(BWindow* window);
    ~MenuSession() override;

    /// Opens the menu of a title that the primary button went down on.
    void StartByPress(BMenu& bar, const BMessage& press, BMenuItem* title);
    /// Opens the first menu of a bar.
    void StartByKey(BMenu& bar);
    /// Opens a menu that hangs on no bar, under `anchor` (screen units).
    void StartWithoutBar(BMenu& menu, BRect anchor);
    /// Opens the menu of an item that stands in a field, not in a menu: the label of the marked
    /// item, or of the first, comes to lie at `label` (screen units) if the screen has room.
    /// `press` is the message of the button that did it; null for a key. The item lets go of the
    /// session before it goes.
    void StartOver(BMenuItem& opener, BPoint label, const BMessage* press);
    /// Opens a menu that hangs nowhere; by a key with its first item current. False when it did not
    /// open, or not for long: the end was told then.
    bool StartPopUp(BMenu& menu, const PopUpOrder& order);
    /// Whether a button is held while the window handles `cause`.
    static bool IsButtonHeld(const BMessage& cause);
    /// Nobody is to be told of the end.
    void TellNobody() { fAtEnd = nullptr; }
    /// Takes the menus off the screen and gives the input back at once: the bar or window goes.
    void Abandon();

    /// The next item, after `item` and round, that answers to a letter; -1 when there is none.
    /// `isTrigger` is set when the letter works it at once.
    static int32 FindByLetter(const BMenu& menu, int32 item, const char* letter, bool* isTrigger);

    // What a menu that is shown tells

    /// It is about to look or work differently.
    void MenuChanges();
    /// An item is about to leave its menu.
    void ItemLeaves(const BMenuItem* item);

    // InputInterceptor
    bool Intercept(BMessage* message) override;
    void Cancel() override;

private:
    struct Level
    {
        BMenu* menu = nullptr;           // says so before it goes
        std::unique_ptr<PopUpHost> host; // null for a bar
        BRect frame;                     // on the screen
    };

    // MenuTracker::Menus
    int32 CountItems(int32 level) const override;
    bool IsEnabled(int32 level, int32 item) const override;
    bool HasSubmenu(int32 level, int32 item) const override;
    MenuTracker::Place PlaceAt(BPoint screen) const override;
    int32 FindByLetter(int32 level, int32 item, const char* letter, bool* isTrigger) const override;
    void Select(int32 level, int32 item) override;
    void Open(int32 level, int32 item) override;
    void CloseAbove(int32 level) override;
    void Choose(int32 level, int32 item) override;
    void End() final;

    static bigtime_t WhenOf(const BMessage& message);
    static BRect ScreenAround(BRect anchor);
    void Close();
    void LetPointerRest();
    bool Rests(const BMessage& move);
    void Begin();
    void BeginAtBar(BMenu& bar);
    void Show(BMenu& menu, BRect anchor, MenuSide side);
    void ShowAt(BMenu& menu, BRect frame);
    void CloseTop();
    bool InterceptMouse(BMessage* message);
    bool InterceptRest(BMessage* message);
    void Key(const BMessage& message, const char* bytes);
    void LetGo();
    BMenu* MenuAt(int32 level) const;
    const Level& At(int32 level) const { return fLevels[static_cast<size_t>(level)]; }
    BMenuItem* ItemAt(int32 level, int32 item) const;
    BRect ScreenFrame(int32 level, const BMenuItem* item) const;
    void ScrollToItem(int32 level, const BMenuItem* item);
    void ScrollBy(float distance);

    BWindow* fWindow; // borrowed
    MenuTracker fTracker;
    std::vector<Level> fLevels; // the bar first, when there is one
    BMenuItem* fNext = nullptr; // about to be opened or chosen; null once it left its menu
    BPoint fPointer;            // where it was last
    BPoint fRestsAt;            // while it rests: a menu that opens below it is not pointed at
    bool fIsResting = false;
    bool fIsHoldingInput = false;
    bool fIsButtonDown = false;
    std::function<void(BMenuItem*)> fAtEnd;
    BMenuItem* fChosen = nullptr; // told at the end
    bool fIsToInvoke = true;
    bool fIsPopUp = false;
    bool fHasBegun = false; // the window was told of the menus' beginning, not yet of their end
};

} // namespace kits
