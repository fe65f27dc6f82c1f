#pragma once

#include "FrameNews.h"
#include "ShowRequest.h"
#include "WindowShape.h"

#include <SupportDefs.h>

#include <memory>

class BLooper;

namespace kits {

class FrontImage;
class NativeWindow;
struct DragRequest;
struct Published;

/// A window's end of its native window. The native window is made by the first Show().
///
/// Thread: any thread but the server's; calls of one link are made under its looper's lock.
/// Show, Hide and the destructor wait for the server; the rest is queued and returns at once.
/// Ownership: the window owns its link; destroying it deletes the native window.
class WindowLink
{
public:
    /// Input and window messages (see InputMessages.h) are posted to `looper`, held by token: what
    /// comes after it is gone is dropped. For a pop-up `looper` is the window that owns the menu.
    WindowLink(BLooper* looper, const WindowShape& shape);
    ~WindowLink();
    WindowLink(const WindowLink&) = delete;
    WindowLink& operator=(const WindowLink&) = delete;

    /// Names this native window in ShowRequest::opener and in messages ("window"); never reused,
    /// never 0.
    int32 Token() const { return fToken; }

    void SetShape(const WindowShape& shape);
    /// The first frame must be in the front image already: the window appears with it.
    void Show(const ShowRequest& request);
    void Hide();
    void Activate();
    void Minimize(bool minimize);
    /// Asks for the front image's damage to be shown. Posted only when FrontImage::Update said so.
    void Present();
    /// While on, every mouse event of all our windows, and of the screen where the system allows
    /// it, goes to this window's looper with "screen_where" and the token of the window below
    /// ("window"). For menus.
    void SetMouseCapture(bool on);
    /// The pointer's shape over this window; an arrow until told otherwise.
    void SetCursor(PointerShape shape);
    void Publish(std::shared_ptr<const Published> published);
    /// Drags something from this window, while a button is held on it.
    void Drag(DragRequest request);

    FrontImage& Front() { return *fFront; }
    /// Where the screen puts what kFrameChanged tells of.
    FrameNews& News() { return *fNews; }
    /// Device pixels per unit of the screen the window is on; of the main screen before it is
    /// shown.
    float Scale() const;

private:
    int32 fToken;
    std::shared_ptr<FrontImage> fFront;
    std::shared_ptr<FrameNews> fNews;
    std::shared_ptr<NativeWindow> fNative; // server thread only, apart from copying the pointer
};

} // namespace kits
