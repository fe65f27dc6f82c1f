#pragma once

#include <Rect.h>
#include <SupportDefs.h>

#include <string>
#include <vector>

/// What a view says of itself to assistive programs, to its window and to tests: BView::Describe().
/// An extension of the platform. Plain values.
struct BViewDescription
{
    /// What kind of thing it is.
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
        kColumnHeader,
        kScrollBar,
        kProgressBar,
        kMenuBar,
        kMenu,
        kMenuItem,
        kMenuField,
        kTabList,
        kTab,
    };
    /// What holds of it, as bits.
    enum State : uint32 {
        kFocusable = 1 << 0,
        kFocused = 1 << 1,
        kSelected = 1 << 2,
        kMarked = 1 << 3,
        kDisabled = 1 << 4,
        kDefault = 1 << 5,
        kHidesText = 1 << 6, // nobody is told the value
    };

    /// Something that the view shows and that is no view itself: a row, a menu's title.
    struct Part
    {
        const void* thing = nullptr; // tells it from others while it lives; only compared
        Role role = Role::kListItem; // what kind of thing it is
        uint32 states = 0;           // of State
        BRect frame;                 // view units
        std::string name;            // what it is called
    };

    bool wantsParts = true;  // asked by the caller: without it `parts` may stay empty
    Role role = Role::kPane; // what kind of thing the view is
    uint32 states = 0;       // of State
    std::string name;        // what it is called: its label
    std::string value;       // what it holds, as text
    int32 rowCount = 0;      // of lists and tables: all rows
    std::vector<Part> parts; // those in sight only, in their order
};

/// What an input method is told of the view that has the focus: BView::DescribeInput().
/// An extension of the platform. Plain values.
struct BInputDescription
{
    bool isTextField = false;    // whether it takes text now
    bool hidesText = false;      // nothing is suggested, learned or told of it
    int32 resets = 0;            // another number makes the input method begin anew
    BRect caret;                 // view units
    std::string surroundingText; // what stands around the caret
    int32 caretOffset = 0;       // bytes into surroundingText
    int32 anchorOffset = 0;      // bytes into surroundingText
};
