#pragma once

#include <Rect.h>
#include <SupportDefs.h>

#include <memory>
#include <string>
#include <vector>

namespace kits {

/// What a view says of itself to assistive programs; made by the window's thread, then never
/// changed.
struct AccessibleNode
{
    enum class Role : uint8 {
        kWindow,
        kPane,
        kButton,
        kCheckBox,
        kStaticText,
        kTextField,
        kList,
        kListItem,
        kTable,
        kRow,
        kCell,
        kScrollBar,
        kProgressBar,
        kMenuBar,
        kMenu,
        kMenuItem,
    };
    enum State : uint32 {
        kFocusable = 1 << 0,
        kFocused = 1 << 1,
        kSelected = 1 << 2,
        kMarked = 1 << 3,
        kDisabled = 1 << 4,
        kDefault = 1 << 5,
    };

    int32 id = 0; // stable while the thing lives, unique in its window
    Role role = Role::kPane;
    uint32 states = 0;
    BRect box; // window units
    std::string name;
    std::string value;
    int32 rowCount = 0; // of tables and lists: all rows; children hold the visible ones only
    std::vector<std::shared_ptr<const AccessibleNode>> children;
};

/// What input methods ask for, of the view that has the focus.
struct InputMethodState
{
    // True for every view: dead keys and composed letters arrive in no other way. A commit to a
    // view that is no text field becomes the key messages of its characters.
    bool isEnabled = true;
    bool isTextField = false;
    int32 view = 0;   // the text field's token: another one makes the input method begin anew,
    int32 resets = 0; // and so does another number here
    BRect caret;      // window units
    std::string surroundingText;
    int32 caretOffset = 0;  // bytes into surroundingText
    int32 anchorOffset = 0; // bytes into surroundingText
};

/// The answers that a window prepares, so that the server never has to ask its thread.
/// Ownership: shared; never changed once published.
struct Published
{
    InputMethodState inputMethod;
    std::shared_ptr<const AccessibleNode> root; // null while nobody listens
};

} // namespace kits
