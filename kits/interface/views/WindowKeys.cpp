#include "WindowKeys.h"

#include "ViewAccess.h"
#include "WindowState.h"

#include <AppDefs.h>
#include <InterfaceDefs.h>
#include <Message.h>
#include <View.h>
#include <ViewDescription.h>
#include <Window.h>

#include <algorithm>
#include <cctype>
#include <cstring>

namespace kits {

namespace {

constexpr uint32 kShortcutModifiers = B_SHIFT_KEY | B_COMMAND_KEY | B_OPTION_KEY;

uint32 ModifiersOf(const BMessage& message)
{
    return static_cast<uint32>(message.GetInt32("modifiers", 0));
}

const char* BytesOf(const BMessage& message)
{
    const char* bytes = nullptr;
    return message.FindString("bytes", &bytes) == B_OK && bytes != nullptr ? bytes : "";
}

bool IsByte(const char* bytes, char byte)
{
    return bytes[0] == byte && bytes[1] == '\0';
}

uint32 LowerCase(uint32 key)
{
    return key < 128 ? static_cast<uint32>(std::tolower(static_cast<int>(key))) : key;
}

const WindowShortcut* FindShortcut(const WindowState& state, const BMessage& message)
{
    const uint32 modifiers = ModifiersOf(message) & kShortcutModifiers;
    const char* candidate = nullptr;
    for (int32 i = 0; message.FindString("kits:shortcut", i, &candidate) == B_OK; ++i) {
        const uint32 key = LowerCase(static_cast<uint8>(candidate[0]));
        for (const WindowShortcut& shortcut : state.shortcuts) {
            if (shortcut.key == key && shortcut.modifiers == modifiers && candidate[1] == '\0') {
                return &shortcut;
            }
        }
    }
    return nullptr;
}

bool InvokeShortcut(const WindowState& state, const BMessage& message)
{
    const WindowShortcut* shortcut = FindShortcut(state, message);
    if (shortcut == nullptr) {
        return false;
    }
    // Held keys and keys typed before the window was seen work nothing, and reach no view either.
    if (!message.HasInt32("be:key_repeat") && !message.HasBool("kits:early")) {
        BMessage copy(*shortcut->message);
        copy.AddInt64("when", message.GetInt64("when", 0));
        shortcut->target.SendMessage(&copy);
    }
    return true;
}

BViewDescription SelfOf(const BView& view)
{
    BViewDescription self;
    self.wantsParts = false;
    view.Describe(&self);
    return self;
}

bool IsButton(const BView* view)
{
    return view != nullptr && SelfOf(*view).role == BViewDescription::Role::kButton;
}

bool IsDisabled(const BViewDescription& view)
{
    return (view.states & BViewDescription::kDisabled) != 0;
}

BView* FindCancelButton(BView& view)
{
    const BViewDescription self = SelfOf(view);
    if (self.role == BViewDescription::Role::kButton && !IsDisabled(self) &&
        !view.IsHidden(nullptr) && self.name == "Cancel") {
        return &view;
    }
    for (BView* child : ViewAccess::Children(view)) {
        if (BView* found = FindCancelButton(*child)) {
            return found;
        }
    }
    return nullptr;
}

// Enter for the default button, Escape for one that says "Cancel". True when the key is done with.
bool PressButton(BWindow& window, WindowState& state, const char* bytes, uint32 modifiers)
{
    if ((modifiers & (B_COMMAND_KEY | B_OPTION_KEY)) != 0) {
        return false;
    }
    BView* button = nullptr;
    if (IsByte(bytes, B_ENTER) && !IsButton(state.focus)) {
        button = state.defaultButton;
    } else if (IsByte(bytes, B_ESCAPE)) {
        button = FindCancelButton(*state.host->Root());
    }
    if (button == nullptr || button->IsHidden()) {
        return false;
    }
    if (window.TakesAnswers() && !IsDisabled(SelfOf(*button))) {
        const char enter[] = {B_ENTER, '\0'};
        button->KeyDown(enter, 1);
    }
    return true;
}

bool OpensMenus(const BMessage& message, const char* bytes)
{
    const uint32 modifiers = ModifiersOf(message) & kShortcutModifiers;
    return IsByte(bytes, B_FUNCTION_KEY) && message.GetInt32("key", 0) == B_F10_KEY &&
           modifiers == 0 && !message.HasInt32("be:key_repeat");
}

bool OpenMenus(const WindowState& state)
{
    return state.keyMenus != nullptr && state.keyMenus->OpenByKey();
}

void CollectNavigable(BView& view, std::vector<BView*>& found)
{
    if (ViewAccess::HidesItself(view)) {
        return;
    }
    if ((view.Flags() & B_NAVIGABLE) != 0) {
        found.push_back(&view);
    }
    for (BView* child : ViewAccess::Children(view)) {
        CollectNavigable(*child, found);
    }
}

} // namespace

bool MoveFocus(WindowState& state, bool isForward, FocusOn what)
{
    std::vector<BView*> order;
    CollectNavigable(*state.host->Root(), order);
    if (what == FocusOn::kButtons) {
        std::erase_if(order, [](const BView* view) { return !IsButton(view); });
    }
    if (order.empty()) {
        return false;
    }
    const auto place = std::find(order.begin(), order.end(), state.focus);
    const size_t count = order.size();
    size_t next = isForward ? 0 : count - 1;
    if (place != order.end()) {
        next = (static_cast<size_t>(place - order.begin()) + (isForward ? 1 : count - 1)) % count;
    }
    order[next]->MakeFocus(true);
    return true;
}

void KeyDown(BWindow& window, WindowState& state, BMessage* message, BHandler& target)
{
    const char* bytes = BytesOf(*message);
    auto* view = dynamic_cast<BView*>(&target);
    const bool isWanted = view != nullptr && view->WantsKey(*message);
    if (!isWanted) {
        if (InvokeShortcut(state, *message) ||
            (state.keyMenus != nullptr && state.keyMenus->InvokeShortcut(*message))) {
            return;
        }
        if (OpensMenus(*message, bytes) && OpenMenus(state)) {
            return;
        }
        if (PressButton(window, state, bytes, ModifiersOf(*message))) {
            return;
        }
    }
    if (view != nullptr) {
        view->KeyDown(bytes, static_cast<int32>(std::strlen(bytes)));
    } else if (IsByte(bytes, B_TAB) && (ModifiersOf(*message) & B_COMMAND_KEY) == 0) {
        MoveFocus(state, (ModifiersOf(*message) & B_SHIFT_KEY) == 0);
    } else {
        target.MessageReceived(message);
    }
}

void KeyUp(BMessage* message, BHandler& target)
{
    const char* bytes = BytesOf(*message);
    if (auto* view = dynamic_cast<BView*>(&target)) {
        view->KeyUp(bytes, static_cast<int32>(std::strlen(bytes)));
    } else {
        target.MessageReceived(message);
    }
}

// Alt pressed and released with nothing in between opens the menus.
void ModifiersChanged(WindowState& state, BMessage* message, BHandler& target)
{
    if (!message->GetBool("kits:alt_alone", false) || !OpenMenus(state)) {
        target.MessageReceived(message);
    }
}

} // namespace kits

// The window's side

BMenuBar* BWindow::KeyMenuBar() const
{
    return fState->keyMenus != nullptr ? fState->keyMenus->Bar() : nullptr;
}

void BWindow::AddShortcut(uint32 key, uint32 modifiers, BMessage* message)
{
    AddShortcut(key, modifiers, message, this);
}

void BWindow::AddShortcut(uint32 key, uint32 modifiers, BMessage* message, BHandler* target)
{
    std::unique_ptr<BMessage> adopted(message);
    RemoveShortcut(key, modifiers);
    if (adopted != nullptr) {
        fState->shortcuts.push_back({kits::LowerCase(key),
                                     (modifiers | B_COMMAND_KEY) & kits::kShortcutModifiers,
                                     std::move(adopted), BMessenger(target)});
    }
}

void BWindow::RemoveShortcut(uint32 key, uint32 modifiers)
{
    const uint32 lower = kits::LowerCase(key);
    const uint32 held = (modifiers | B_COMMAND_KEY) & kits::kShortcutModifiers;
    auto& shortcuts = fState->shortcuts;
    shortcuts.erase(std::remove_if(shortcuts.begin(), shortcuts.end(),
                                   [lower, held](const kits::WindowShortcut& shortcut) {
                                       return shortcut.key == lower && shortcut.modifiers == held;
                                   }),
                    shortcuts.end());
}
