#include "DragAndDrop.h"

#include "DraggedMessage.h"
#include "InputDispatcher.h"
#include "InputRouter.h"
#include "NativeWindow.h"
#include "OfferedFiles.h"
#include "Published.h"
#include "Surface.h"
#include "WindowTable.h"
#include "X11Keyboard.h"

#include "app/LooperCore.h"
#include "app/MessageAccess.h"
#include "app/MessageDelivery.h"
#include "kernel/WorkerThread.h"
#include "storage/FileAddresses.h"

#include <AppDefs.h>
#include <InputConstants.h>
#include <Message.h>

#include <QCursor>
#include <QDrag>
#include <QDropEvent>
#include <QGuiApplication>
#include <QMetaType>
#include <QMimeData>
#include <QPixmap>
#include <QStringList>
#include <QTimer>
#include <QVariant>

#include <atomic>
#include <utility>

namespace kits {

namespace {

constexpr char kFilesType[] = "text/uri-list";
// Says nothing to other programs; a drag without any type would be none.
constexpr char kOwnType[] = "application/x-norvane-drag";

/// What other programs get of what is dragged.
class DraggedData : public QMimeData
{
public:
    explicit DraggedData(std::shared_ptr<OfferedFiles> files) : fFiles(std::move(files)) {}

    // QMimeData
    QStringList formats() const override
    {
        QStringList types = {QString::fromLatin1(kOwnType)};
        if (fFiles != nullptr) {
            types.prepend(QString::fromLatin1(kFilesType));
        }
        return types;
    }
    bool hasFormat(const QString& type) const override { return formats().contains(type); }

protected:
    QVariant retrieveData(const QString& type, QMetaType) const override
    {
        if (fFiles == nullptr || type != QLatin1String(kFilesType)) {
            return QByteArray();
        }
        return QByteArray::fromStdString(fFiles->Addresses());
    }

private:
    const std::shared_ptr<OfferedFiles> fFiles; // null when there are none
};

std::atomic<DragAndDrop::Runner> gHeadlessRunner{nullptr};

// Null but on the headless platform.
DragAndDrop::Runner HeadlessRunner()
{
    const bool isHeadless = QGuiApplication::platformName() == QLatin1String("offscreen");
    return isHeadless ? gHeadlessRunner.load() : nullptr;
}

bool HasFiles(const QDropEvent& event)
{
    return event.mimeData() != nullptr &&
           event.mimeData()->hasFormat(QString::fromLatin1(kFilesType));
}

// What the drop will be. Within the program the modifiers say it; another program says it itself,
// and not every desktop tells the modifiers of its drags.
Qt::DropAction ActionOf(const QDropEvent& event, bool isOwn)
{
    if (isOwn) {
        const bool isMove = (event.modifiers() & (Qt::ShiftModifier | Qt::ControlModifier)) ==
                            Qt::KeyboardModifiers(Qt::ShiftModifier);
        return isMove ? Qt::MoveAction : Qt::CopyAction;
    }
    const Qt::DropActions possible = event.possibleActions();
    const bool isMove = event.proposedAction() == Qt::MoveAction || !(possible & Qt::CopyAction);
    if (isMove) {
        return possible & Qt::MoveAction ? Qt::MoveAction : Qt::IgnoreAction;
    }
    return Qt::CopyAction;
}

QPoint OnScreen(const NativeWindow& window, const QDropEvent& event)
{
    return window.GetSurface()->mapToGlobal(event.position().toPoint());
}

// Gives `message` what a dropped one carries.
void MakeDropped(BMessage& message, QPoint onScreen, Qt::DropAction action)
{
    message.RemoveName("be:actions");
    message.AddInt32("be:actions", action == Qt::MoveAction ? B_MOVE_TARGET : B_COPY_TARGET);
    MessageDelivery& delivery = NewDelivery(message);
    delivery.wasDropped = true;
    delivery.dropX = static_cast<float>(onScreen.x());
    delivery.dropY = static_cast<float>(onScreen.y());
}

} // namespace

DragAndDrop::~DragAndDrop()
{
    Forget();
}

void DragAndDrop::Forget()
{
    if (std::exchange(fNumber, 0) != 0) {
        DraggedMessage::End();
    }
    fOver = 0;
}

// Dragging out

void DragAndDrop::SetHeadlessRunner(Runner run)
{
    gHeadlessRunner = run;
}

void DragAndDrop::Start(DragRequest request)
{
    if (fOwn != nullptr) {
        return; // one pointer drags one thing
    }
    fOwn = std::make_unique<DragRequest>(std::move(request));
    // The toolkit runs a loop of its own while something is dragged: not within the queue's.
    QTimer::singleShot(0, this, [this] { Run(); });
}

void DragAndDrop::Run()
{
    // Without a button the toolkit would drag until the next click.
    if (QGuiApplication::mouseButtons() != Qt::NoButton) {
        const InputRouter::Press press = fRouter.DragBegins();
        auto* drag = new QDrag(this);                    // deletes itself after exec()
        drag->setMimeData(new DraggedData(fOwn->files)); // adopted
        if (!fOwn->picture.isNull()) {
            drag->setPixmap(QPixmap::fromImage(fOwn->picture));
            drag->setHotSpot(QPointF(fOwn->offset.x, fOwn->offset.y).toPoint());
        }
        // Another program that is offered a move may make one of any drop; here a drag copies.
        fIsDragging = true;
        const Runner run = HeadlessRunner();
        if (run != nullptr) {
            run(*drag);
        } else {
            drag->exec(Qt::CopyAction | Qt::LinkAction, Qt::CopyAction);
        }
        fIsDragging = false;
        Left(fOver);
        fInput.DragEnded(press.window, press.buttons);
    }
    fOwn.reset();
}

// Dragging over and into windows

bool DragAndDrop::Handle(int32 window, QEvent& event)
{
    switch (event.type()) {
    case QEvent::DragEnter:
        Answer(window, static_cast<QDropEvent&>(event)); // a move follows at once
        return true;
    case QEvent::DragMove:
        Over(window, static_cast<QDropEvent&>(event));
        return true;
    case QEvent::DragLeave:
        Left(window);
        return true;
    case QEvent::Drop:
        Dropped(window, static_cast<QDropEvent&>(event));
        return true;
    default:
        return false;
    }
}

bool DragAndDrop::IsOwn(const QDropEvent& event) const
{
    return fIsDragging && dynamic_cast<const DraggedData*>(event.mimeData()) != nullptr;
}

// Whether the window takes what is dragged where the pointer is, as it said beforehand: its thread
// is never waited for.
bool DragAndDrop::IsTaken(int32 window, const QDropEvent& event) const
{
    const NativeWindow* native = fWindows.Find(window);
    if (native == nullptr || !native->IsShown() || fRouter.IsBlocked(window) ||
        (!IsOwn(event) && !HasFiles(event))) {
        return false;
    }
    const BPoint where(static_cast<float>(event.position().x()),
                       static_cast<float>(event.position().y()));
    for (const BRect& area : native->GetPublished().dropAreas) {
        if (area.Contains(where)) {
            return true;
        }
    }
    return false;
}

// Tells the source what a drop here would do, and returns it.
Qt::DropAction DragAndDrop::Answer(int32 window, QDropEvent& event) const
{
    const Qt::DropAction action =
        IsTaken(window, event) ? ActionOf(event, IsOwn(event)) : Qt::IgnoreAction;
    event.setAccepted(action != Qt::IgnoreAction);
    if (action != Qt::IgnoreAction) {
        event.setDropAction(action);
    }
    return action;
}

void DragAndDrop::Over(int32 window, QDropEvent& event)
{
    Answer(window, event);
    const bool isOwn = IsOwn(event);
    const NativeWindow* native = fWindows.Find(window);
    if (native == nullptr || fRouter.IsBlocked(window) || (!isOwn && !HasFiles(event))) {
        return;
    }
    if (fNumber == 0) {
        // What another program brings is known at the drop only.
        fNumber =
            DraggedMessage::Set(isOwn ? fOwn->message : std::make_shared<BMessage>(B_SIMPLE_DATA));
    }
    fOver = window;
    fInput.PointerSeen(OnScreen(*native, event), event.buttons(), event.modifiers());
    TellMoved(window, OnScreen(*native, event), B_INSIDE_VIEW);
}

void DragAndDrop::TellMoved(int32 window, QPoint onScreen, int32 transit)
{
    const NativeWindow* native = fWindows.Find(window);
    if (native == nullptr) {
        return;
    }
    auto message = fInput.MouseMessage(B_MOUSE_MOVED, window, onScreen);
    message->AddInt32("be:transit", transit);
    message->AddInt32("kits:drag", fNumber);
    native->PostMove(std::move(message));
}

void DragAndDrop::Left(int32 window)
{
    if (window != 0 && window == fOver) {
        TellMoved(window, QCursor::pos(), B_EXITED_VIEW);
    }
    Forget();
}

void DragAndDrop::Dropped(int32 window, QDropEvent& event)
{
    const bool isOwn = IsOwn(event);
    const Qt::DropAction action = Answer(window, event);
    if (action != Qt::IgnoreAction) {
        // Files are moved here, by us: a source that heard of a move might delete them as well.
        event.setDropAction(event.possibleActions() & Qt::CopyAction ? Qt::CopyAction : action);
    }
    Left(window);
    if (action != Qt::IgnoreAction) {
        isOwn ? PostOwn(window, event, action) : PostFiles(window, event, action);
    }
}

void DragAndDrop::PostOwn(int32 window, const QDropEvent& event, Qt::DropAction action)
{
    const NativeWindow& native = *fWindows.Find(window);
    auto message = std::make_unique<BMessage>(*fOwn->message);
    MakeDropped(*message, OnScreen(native, event), action);
    MessageDelivery& delivery = *MessageAccess::Delivery(*message);
    delivery.dropOffsetX = fOwn->offset.x;
    delivery.dropOffsetY = fOwn->offset.y;
    delivery.replyTo = fOwn->replyTo;
    native.Post(std::move(message));
}

// Which folders the files are in has to be asked of the disk: not by this thread, nor by a
// window's.
void DragAndDrop::PostFiles(int32 window, const QDropEvent& event, Qt::DropAction action)
{
    const NativeWindow& native = *fWindows.Find(window);
    const QPoint onScreen = OnScreen(native, event);
    std::string list = event.mimeData()->data(QString::fromLatin1(kFilesType)).toStdString();
    const status_t status =
        StartDetached("dropped files", [core = native.Core()->shared_from_this(), onScreen, action,
                                        list = std::move(list)] {
            auto message = std::make_unique<BMessage>(B_SIMPLE_DATA);
            AddRefsOfAddresses(list, message.get());
            if (message->HasRef("refs")) {
                MakeDropped(*message, onScreen, action);
                core->Post(std::move(message));
            }
        });
    if (status != B_OK) {
        x11::Beep();
    }
}

} // namespace kits
