#include "Native.h"

#include "server/DragAndDrop.h"

#include <QDrag>
#include <QEventLoop>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMimeData>
#include <QMouseEvent>
#include <QObject>
#include <QPointer>
#include <QWindow>
#include <private/qhighdpiscaling_p.h>
#include <qpa/qplatformdrag.h>
#include <qpa/qwindowsysteminterface.h>

// The system's part in what is dragged from our windows: the headless platform has none.

namespace kits::testing {

namespace {

constexpr Qt::DropActions kActions = Qt::CopyAction | Qt::LinkAction;

/// Takes the pointer's events while something is dragged, and tells the window below it.
/// Thread: the server's.
class SyntheticDrag : public QObject
{
public:
    explicit SyntheticDrag(QDrag& drag) : fDrag(drag) {}

    void Run()
    {
        qGuiApp->installEventFilter(this);
        fLoop.exec();
        qGuiApp->removeEventFilter(this);
        fDrag.deleteLater();
    }

    // QObject
    bool eventFilter(QObject*, QEvent* event) override
    {
        switch (event->type()) {
        case QEvent::MouseMove:
            Move(*static_cast<QMouseEvent*>(event));
            return true;
        case QEvent::MouseButtonRelease:
            Release(*static_cast<QMouseEvent*>(event));
            return true;
        case QEvent::KeyPress:
            if (static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape) {
                Leave();
                return true;
            }
            return false;
        default:
            return false;
        }
    }

private:
    QWindow* Below(const QMouseEvent& event)
    {
        const QPoint where = event.globalPosition().toPoint();
        return NativeAt(BPoint(static_cast<float>(where.x()), static_cast<float>(where.y())));
    }

    static QPoint Local(QWindow* window, const QMouseEvent& event)
    {
        return QHighDpi::toNativeLocalPosition(
            window->mapFromGlobal(event.globalPosition().toPoint()), window);
    }

    void Move(const QMouseEvent& event)
    {
        QWindow* window = Below(event);
        if (fOver != nullptr && window != fOver) {
            QWindowSystemInterface::handleDrag(fOver, nullptr, QPoint(), Qt::IgnoreAction,
                                               Qt::NoButton, Qt::NoModifier);
        }
        fOver = window;
        fIsTaken = window != nullptr && QWindowSystemInterface::handleDrag(
                                            window, fDrag.mimeData(), Local(window, event),
                                            kActions, event.buttons(), event.modifiers())
                                            .isAccepted();
    }

    void Release(const QMouseEvent& event)
    {
        Move(event);
        if (fOver == nullptr || !fIsTaken) {
            Leave();
            return;
        }
        QWindowSystemInterface::handleDrop(fOver, fDrag.mimeData(), Local(fOver, event), kActions,
                                           event.buttons(), event.modifiers());
        fLoop.exit();
    }

    void Leave()
    {
        if (fOver != nullptr) {
            QWindowSystemInterface::handleDrag(fOver, nullptr, QPoint(), Qt::IgnoreAction,
                                               Qt::NoButton, Qt::NoModifier);
        }
        fLoop.exit();
    }

    QDrag& fDrag;
    QEventLoop fLoop;
    QPointer<QWindow> fOver;
    bool fIsTaken = false;
};

void Run(QDrag& drag)
{
    SyntheticDrag(drag).Run();
}

} // namespace

void UseSyntheticDrags()
{
    DragAndDrop::SetHeadlessRunner(Run);
}

} // namespace kits::testing
