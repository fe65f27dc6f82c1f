#pragma once

#include "AccessibleTree.h"
#include "FrameNews.h"
#include "Published.h"
#include "WindowShape.h"

#include <QRect>

#include <atomic>
#include <memory>

class BMessage;

namespace kits {

class FrontImage;
class LooperCore;
class Surface;
class WindowEvents;

/// The server's half of a window: what it was told, and the native window once it is shown.
///
/// It knows itself alone. How it comes and goes among the others is up to Showing, which of them
/// is in front to WindowOrder, and whom its input is for to WindowEvents.
/// Thread: the server's, apart from the constructor, Token() and Scale().
class NativeWindow : public std::enable_shared_from_this<NativeWindow>
{
public:
    NativeWindow(int32 token, std::shared_ptr<LooperCore> core, std::shared_ptr<FrontImage> front,
                 std::shared_ptr<FrameNews> news, const WindowShape& shape);
    ~NativeWindow();
    NativeWindow(const NativeWindow&) = delete;
    NativeWindow& operator=(const NativeWindow&) = delete;

    int32 Token() const { return fToken; }
    float Scale() const { return fScale; }

    // What the link asks for

    void SetShape(const WindowShape& shape);
    void Minimize(bool minimize);
    /// Shows the front image's damage; dropped while nothing of the window is on a screen.
    void Present();
    void SetCursor(PointerShape shape);
    void Publish(std::shared_ptr<const Published> published);

    // Coming and going

    /// The window that opened it; 0: none.
    void SetOpener(int32 opener) { fOpener = opener; }
    int32 Opener() const { return fOpener; }
    /// Makes the native window ready, still out of sight; it will stay above `above` (may be null).
    /// Ownership: borrows `events`, which outlives the native window.
    void Prepare(WindowEvents& events, Surface* above);
    /// Puts the native window onto the screen.
    void Appear(bool takesFocus);
    /// Whether it is shown, as far as its looper is concerned: one that leaves may be seen for a
    /// while longer.
    void SetShown(bool isShown);
    bool IsShown() const { return fIsShown; }
    /// Its looper wants it no more. Who still asks for it gets nothing that outlives this.
    void Close();
    /// The rest of hiding: while keys may still come, and when none can; deletes the native window
    /// when it is closed.
    void GoOutOfSight();
    void Depart();
    /// Whether the system sends keys to it, whatever the toolkit knows of that. Asks the system.
    bool HasSystemFocus() const;

    // What the system says

    void Exposed();
    void GeometryChanged(const QRect& geometry);
    void CloseAsked();
    void StatesChanged(Qt::WindowStates states);
    void ScaleMayHaveChanged();

    // Queries

    Surface* GetSurface() const { return fSurface.get(); }
    const WindowShape& Shape() const { return fShape; }
    bool IsPopUp() const { return fShape.kind != WindowShape::Kind::kWindow; }
    /// Whether the pointer goes through it.
    bool IsTip() const { return fShape.kind == WindowShape::Kind::kTip; }
    AccessibleTree& Accessible() { return fAccessible; }
    const Published& GetPublished() const { return *fPublished; }
    /// Null for none.
    LooperCore* Core() const { return fCore.get(); }
    FrontImage& Front() const { return *fFront; }

    /// Posts to the window's looper; what comes after it is gone is dropped.
    void Post(std::unique_ptr<BMessage> message) const;
    /// The same for a move, which takes the place of one that waits.
    void PostMove(std::unique_ptr<BMessage> message) const;

private:
    void CreateSurface();
    void ApplyFlags();
    void ApplyLimits(const QRect& frame);
    void ApplyFrame(const QRect& frame);
    void FrameAsked(const FrameAsks& before);
    void TellFrame(const QRect& frame);
    void PresentRegion(bool isAll);

    const int32 fToken;
    const std::shared_ptr<LooperCore> fCore;
    const std::shared_ptr<FrontImage> fFront;
    const std::shared_ptr<FrameNews> fNews;
    std::atomic<float> fScale;
    WindowShape fShape;
    QRect fKnown;       // the frame that the window takes to be its own: as told, or asked for
    uint32 fSerial = 0; // of the news told last
    Qt::WindowStates fStates;
    PointerShape fPointer = PointerShape::kArrow;
    std::shared_ptr<const Published> fPublished; // never null
    WindowEvents* fEvents = nullptr;             // null until there is a surface
    std::unique_ptr<Surface> fSurface;
    AccessibleTree fAccessible; // gone before the surface it speaks of
    int32 fOpener = 0;
    bool fIsShown = false;
    bool fIsClosed = false;
};

} // namespace kits
