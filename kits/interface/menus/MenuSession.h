#pragma once

#include "MenuTracker.h"
#include "interface/views/ViewHost.h"

#include <Rect.h>

#include <memory>
#include <vector>

class BMenu;
class BMenuBar;
class BMenuItem;
class BMessage;
class BWindow;

namespace kits {

class PopUpHost;

/// The menus of a bar while they are open: shows them, and leads the window's input to the tracker.
///
/// When the menus are gone it goes on swallowing the press that closed them, up to its release.
/// Thread: the window's.
class MenuSession : public InputInterceptor, private MenuTracker::Menus
{
public:
    explicit MenuSession(BMenuBar& bar);
    ~MenuSession() override;

    void StartByPress(const BMessage& press, int32 title);
    void StartByKey();
    /// Takes all menus off the screen.
    void Cancel();
    /// Whether menus are open.
    bool IsOpen() const { return fTracker.IsActive(); }

    // InputInterceptor
    bool Intercept(BMessage* message) override;

private:
    struct Level
    {
        BMenu* menu = nullptr;
        std::unique_ptr<PopUpHost> host; // null for the bar
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
    void End() override;

    void Begin();
    bool InterceptMouse(BMessage* message);
    bool InterceptRest(BMessage* message);
    void Key(const BMessage& message, const char* bytes);
    void LetGo();
    const Level& At(int32 level) const { return fLevels[static_cast<size_t>(level)]; }
    BMenuItem* ItemAt(int32 level, int32 item) const;
    BRect ScreenFrame(int32 level, const BMenuItem* item) const;
    void ScrollToItem(int32 level, const BMenuItem* item);
    void ScrollBy(float distance);

    BMenuBar& fBar;
    BWindow* fWindow; // borrowed; the bar's
    MenuTracker fTracker;
    std::vector<Level> fLevels; // the bar first
    BPoint fPointer;            // where it was last
    bool fIsHoldingInput = false;
    bool fIsButtonDown = false;
};

} // namespace kits
