#include "NativeWindow.h"

#include "Fitting.h"
#include "FrontImage.h"
#include "InputMessages.h"
#include "InputMethod.h"
#include "ScreenInfo.h"
#include "Surface.h"
#include "WindowEvents.h"
#include "WindowFlags.h"
#include "X11Keyboard.h"

#include "app/LooperCore.h"

#include <Message.h>
#include <OS.h>

#include <QCursor>
#include <QGuiApplication>
#include <QScreen>
#include <QTimer>

#include <optional>
#include <utility>
#include <vector>

namespace kits {

namespace {

// The grey of windows that are not painted yet.
constexpr uint8 kBackground = 216;

// A window manager that leaves a window as it is answers what was asked with what the toolkit takes
// for no news. By then it has.
constexpr int kSettlingMs = 300;

Qt::CursorShape CursorFor(PointerShape shape)
{
    switch (shape) {
    case PointerShape::kText:
        return Qt::IBeamCursor;
    case PointerShape::kResizeHorizontal:
        return Qt::SplitHCursor;
    case PointerShape::kResizeVertical:
        return Qt::SplitVCursor;
    case PointerShape::kHand:
        return Qt::PointingHandCursor;
    case PointerShape::kWait:
        return Qt::WaitCursor;
    case PointerShape::kArrow:
        break;
    }
    return Qt::ArrowCursor;
}

// What panels leave of each screen.
std::vector<QRect> Rooms()
{
    std::vector<QRect> rooms;
    for (const QScreen* screen : QGuiApplication::screens()) {
        rooms.push_back(screen->availableGeometry());
    }
    return rooms;
}

// What panels leave of the screen that a frame is on.
QRect RoomAround(const QRect& frame)
{
    const std::vector<QRect> rooms = Rooms();
    const int number = AreaOf(frame, rooms);
    return number < 0 ? frame : rooms[static_cast<size_t>(number)];
}

} // namespace

NativeWindow::NativeWindow(int32 token, std::shared_ptr<LooperCore> core,
                           std::shared_ptr<FrontImage> front, std::shared_ptr<FrameNews> news,
                           const WindowShape& shape)
    : fToken(token), fCore(std::move(core)), fFront(std::move(front)), fNews(std::move(news)),
      fScale(ScreenInfo::Get().Scale()), fShape(shape),
      fPublished(std::make_shared<const Published>())
{
}

NativeWindow::~NativeWindow() = default;

void NativeWindow::Post(std::unique_ptr<BMessage> message) const
{
    if (fCore != nullptr) {
        fCore->Post(std::move(message));
    }
}

void NativeWindow::PostMove(std::unique_ptr<BMessage> message) const
{
    if (fCore != nullptr) {
        fCore->PostFoldingMouseMove(std::move(message));
    }
}

// Shape

void NativeWindow::CreateSurface()
{
    fSurface = std::make_unique<Surface>(*this, *fEvents);
    fAccessible.SetWindow(fSurface.get());
    fSurface->setTitle(QString::fromStdString(fShape.title));
    fSurface->setCursor(CursorFor(fPointer));
    ApplyFrame(RectFrom(fShape.frame));
}

void NativeWindow::ApplyFlags()
{
    Qt::WindowFlags flags = WindowFlagsFor(fShape);
    if (fOpener != 0 && (flags & Qt::WindowType_Mask) == Qt::Window) {
        // The toolkit tells the window manager of a parent only for dialogs and their like.
        flags = (flags & ~Qt::WindowFlags(Qt::WindowType_Mask)) | Qt::Dialog;
    }
    if (fSurface->flags() != flags) {
        fSurface->setFlags(flags);
    }
}

// A window of a fixed size is held at that of `frame`. No screen is asked for more than it has.
void NativeWindow::ApplyLimits(const QRect& frame)
{
    WindowShape shape = fShape;
    shape.frame = RectTo(frame);
    const SizeLimits limits = SizeLimitsFor(shape);
    const QSize largest = LargestSize(RoomAround(frame), HasTitle(fShape));
    fSurface->setMinimumSize(IsPopUp() ? limits.smallest : limits.smallest.boundedTo(largest));
    fSurface->setMaximumSize(limits.largest);
}

void NativeWindow::ApplyFrame(const QRect& frame)
{
    fKnown = frame; // what the screen makes of it is news
    QRect fitted = frame;
    if (IsPopUp()) {
        fitted = FitPopUp(frame, RoomAround(frame));
    } else if (!fSurface->isVisible()) {
        fitted = FitWindow(frame, Rooms(), HasTitle(fShape));
    } else if (frame.size() != fSurface->size()) {
        // Where a person put it stays the person's business, as does a size that a person gave it.
        fitted.setSize(frame.size().boundedTo(LargestSize(RoomAround(frame), HasTitle(fShape))));
    }
    // Limits first: the system holds even the program's own size against them.
    ApplyLimits(fitted);
    fSurface->setGeometry(fitted);
    GeometryChanged(fSurface->geometry());
    QTimer::singleShot(kSettlingMs, fSurface.get(),
                       [this] { GeometryChanged(fSurface->geometry()); });
}

void NativeWindow::SetShape(const WindowShape& shape)
{
    const WindowShape old = std::exchange(fShape, shape);
    if (fSurface == nullptr) {
        return;
    }
    if (old.title != shape.title) {
        fSurface->setTitle(QString::fromStdString(shape.title));
    }
    if (old.look != shape.look || old.feel != shape.feel || old.flags != shape.flags) {
        ApplyFlags();
    }
    FrameAsked(old.asks);
}

// Only what the window asked for anew counts: the rest may be older than what it is told next.
void NativeWindow::FrameAsked(const FrameAsks& before)
{
    const FrameAsks& asks = fShape.asks;
    const QRect asked = RectFrom(fShape.frame);
    QRect frame = fSurface->geometry();
    bool isAsked = asks.place != before.place || (IsPopUp() && asked != frame);
    if (isAsked) {
        frame.moveTopLeft(asked.topLeft());
    }
    if (asks.size != before.size && (asks.corrected == 0 || asks.corrected == fSerial)) {
        frame.setSize(asked.size());
        isAsked = true;
    } else if (asks.size != before.size) {
        // The window does not know the size that came since, and would take the news of it for
        // older than its wish.
        TellFrame(frame);
    }
    if (isAsked) {
        ApplyFrame(frame);
    } else {
        ApplyLimits(frame);
    }
}

// Coming and going

void NativeWindow::Prepare(WindowEvents& events, Surface* above)
{
    fEvents = &events;
    if (fSurface == nullptr) {
        CreateSurface();
    }
    ApplyFlags();
    if (above != nullptr) {
        fSurface->setTransientParent(above);
    }
    fSurface->create();
    x11::SetBackground(fSurface.get(), kBackground);
    x11::TellKeysAtFocus(fSurface.get());
}

void NativeWindow::Appear(bool takesFocus)
{
    fSurface->setProperty("_q_showWithoutActivating", !takesFocus);
    fSurface->setVisible(true);
}

void NativeWindow::SetShown(bool isShown)
{
    fIsShown = isShown;
    if (!isShown) {
        fFront->firstPresentTime = 0;
    }
}

void NativeWindow::Close()
{
    // The native window may stay for a while.
    fAccessible.Close();
    fIsClosed = true;
}

void NativeWindow::GoOutOfSight()
{
    fSurface->setVisible(false);
}

bool NativeWindow::HasSystemFocus() const
{
    const std::optional<uint32> focused = x11::FocusedWindow();
    return focused ? *focused == fSurface->winId()
                   : QGuiApplication::focusWindow() == fSurface.get();
}

void NativeWindow::Depart()
{
    if (fIsClosed) {
        fSurface.reset();
    } else {
        GoOutOfSight();
    }
}

void NativeWindow::Minimize(bool minimize)
{
    if (fSurface == nullptr) {
        return;
    }
    const Qt::WindowStates states = fSurface->windowStates();
    fSurface->setWindowStates(minimize ? states | Qt::WindowMinimized
                                       : states & ~Qt::WindowMinimized);
}

void NativeWindow::SetCursor(PointerShape shape)
{
    fPointer = shape;
    if (fSurface != nullptr) {
        fSurface->setCursor(CursorFor(shape));
    }
}

void NativeWindow::Publish(std::shared_ptr<const Published> published)
{
    if (published == nullptr) {
        return;
    }
    const InputMethodState before = fPublished->inputMethod;
    fPublished = std::move(published);
    fAccessible.Changed(fPublished);
    const bool isAnew = IsAnew(before, fPublished->inputMethod);
    if (isAnew && fEvents != nullptr) {
        fEvents->PreviewEnded(fToken);
    }
    // The toolkit cannot see a caret or a focus that move inside the window.
    if (fSurface != nullptr && QGuiApplication::focusWindow() == fSurface.get()) {
        TellInputMethod(isAnew);
    }
}

// Presenting

void NativeWindow::Present()
{
    if (fSurface != nullptr && fSurface->isExposed()) {
        PresentRegion(false);
    }
}

void NativeWindow::Exposed()
{
    PresentRegion(true);
}

void NativeWindow::PresentRegion(bool isAll)
{
    fFront->TakeDamage([this, isAll](const QImage& image, const QRegion& damage) {
        const QRegion all(QRect(QPoint(0, 0), fSurface->DeviceSize()));
        fSurface->Show(image, isAll ? all : damage);
    });
    if (!fIsShown) {
        return; // only until the focus has gone on: the next showing has its own first time
    }
    bigtime_t never = 0;
    fFront->firstPresentTime.compare_exchange_strong(never, system_time());
}

} // namespace kits
