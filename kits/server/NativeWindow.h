#pragma once

#include "AccessibleTree.h"
#include "FrameNews.h"
#include "Published.h"
#include "ShowRequest.h"
#include "WindowShape.h"

#include <QRect>

#include <atomic>
#include <memory>

class BMessage;

namespace kits {

class FrontImage;
class LooperCore;
class Surface;

/// The server's half of a window: what it was told, and the native window once it is shown.
///
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
    void Show(const ShowRequest& request);
    void Hide();
    /// Hides and deletes the native window, once nothing is on its way to it any more.
    void Destroy();
    /// The rest of Hide() or Destroy(): while keys may still come, and when none can.
    void GoOutOfSight();
    void Depart();
    /// Whether the system sends keys to it, whatever the toolkit knows of that. Asks the system.
    bool HasSystemFocus() const;
    void Activate();
    void Minimize(bool minimize);
    /// Shows the front image's damage; dropped while nothing of the window is on a screen.
    void Present();
    void SetCapture(bool on);
    void SetCursor(PointerShape shape);
    void Publish(std::shared_ptr<const Published> published);

    // What the system says

    void Exposed();
    void GeometryChanged(const QRect& geometry);
    void CloseAsked();
    /// Passes a request to close on that came while another window kept input from this one.
    void ServeClose();
    void StatesChanged(Qt::WindowStates states);
    void ScaleMayHaveChanged();

    // Queries

    Surface* GetSurface() const { return fSurface.get(); }
    const WindowShape& Shape() const { return fShape; }
    bool IsPopUp() const { return fShape.kind == WindowShape::Kind::kPopUp; }
    AccessibleTree& Accessible() { return fAccessible; }
    const Published& GetPublished() const { return *fPublished; }
    LooperCore& Core() const { return *fCore; }
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
    const NativeWindow* ShownOpener() const;
    int32 KeysOpener() const;
    void Raise();
    bool IsBehindQuestion() const;
    void HandOverKeys(int32 from);
    bool Leave();
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
    std::unique_ptr<Surface> fSurface;
    AccessibleTree fAccessible; // gone before the surface it speaks of
    int32 fOpener = 0;
    bool fIsShown = false;
    bool fIsCloseAsked = false; // and waits until nothing blocks the window
    bool fIsDestroyed = false;
};

} // namespace kits
