#pragma once

#include <SupportDefs.h>

class QEvent;

namespace kits {

/// What reaches a native window but is not its own affair: whom it is for depends on the others.
/// Thread: the server's.
class WindowEvents
{
public:
    virtual ~WindowEvents() = default;

    /// An event of that window. Returns false when it is none of the keyboard, the pointer or an
    /// input method's text.
    virtual bool Input(int32 window, const QEvent& event) = 0;
    /// The window's text field shows no preview any more.
    virtual void PreviewEnded(int32 window) = 0;
    /// Somebody wants the window closed, and its flags allow it.
    virtual void CloseAsked(int32 window) = 0;
};

} // namespace kits
