#pragma once

#include <AppDefs.h>

namespace kits {
class CursorAccess;
}

/// What a pointer can look like.
enum BCursorID {
    B_CURSOR_ID_SYSTEM_DEFAULT = 1,
    B_CURSOR_ID_I_BEAM = 2,            // over text
    B_CURSOR_ID_RESIZE_EAST_WEST = 18, // over an edge that can be dragged sideways
};

/// A shape of the pointer, for BView::SetViewCursor(). The desktop's theme draws it.
///
/// Thread: any thread. Ownership: whoever made it; views keep the shape, not the object.
class BCursor
{
public:
    /// Names one of the desktop's shapes; an unknown one is the ordinary pointer.
    constexpr explicit BCursor(BCursorID id) : fId(id) {}

private:
    friend class kits::CursorAccess;

    BCursorID fId;
};
