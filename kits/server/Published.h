#pragma once

#include <Rect.h>
#include <SupportDefs.h>
#include <ViewDescription.h>

#include <memory>
#include <string>
#include <vector>

namespace kits {

/// What a view says of itself to assistive programs; made by the window's thread, then never
/// changed.
struct AccessibleNode
{
    using Role = BViewDescription::Role;
    using State = BViewDescription::State;

    int32 id = 0; // stable while the thing lives, unique in its window
    Role role = Role::kPane;
    uint32 states = 0; // of State
    BRect box;         // window units
    std::string name;
    std::string value;
    int32 rowCount = 0; // of tables and lists: all rows; children hold the visible ones only
    std::vector<std::shared_ptr<const AccessibleNode>> children;
};

/// What input methods ask for, of the view that has the focus; the caret in window units.
struct InputMethodState : BInputDescription
{
    // True for every view: dead keys and composed letters arrive in no other way. A commit to a
    // view that is no text field becomes the key messages of its characters.
    bool isEnabled = true;
    int32 view = 0; // the text field's token: another one makes the input method begin anew
};

/// The answers that a window prepares, so that the server never has to ask its thread.
/// Ownership: shared; never changed once published.
struct Published
{
    InputMethodState inputMethod;
    std::shared_ptr<const AccessibleNode> root; // null while nobody listens
    std::vector<BRect> dropAreas;               // where entries may be dropped; window units
};

} // namespace kits
