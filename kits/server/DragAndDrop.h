#pragma once

#include "DragRequest.h"

#include <SupportDefs.h>

#include <QObject>
#include <QPoint>

#include <memory>

class QDrag;
class QDropEvent;
class QEvent;

namespace kits {

class InputDispatcher;
class InputRouter;
class WindowTable;

/// Dragging to and from windows of ours, and between us and other programs.
///
/// Within the program the message itself arrives; other programs get the addresses of its files,
/// and from them come files as a B_SIMPLE_DATA with "refs". Thread: the server's.
class DragAndDrop : private QObject
{
public:
    DragAndDrop(WindowTable& windows, InputRouter& router, InputDispatcher& input)
        : fWindows(windows), fRouter(router), fInput(input)
    {
    }
    ~DragAndDrop() override;

    /// Starts dragging as soon as the server has nothing else at hand, unless all buttons are
    /// released by then. Its release then belongs to where the pointer is.
    void Start(DragRequest request);
    /// Whether something is dragged from a window of ours.
    bool IsDragging() const { return fIsDragging; }
    /// What follows the pointer until the drag has ended, on the headless platform alone; there is
    /// none unless tests bring one.
    using Runner = void (*)(QDrag& drag);
    static void SetHeadlessRunner(Runner run);
    /// An event of something dragged over that window. False when it is none.
    bool Handle(int32 window, QEvent& event);

private:
    void Run();
    bool IsOwn(const QDropEvent& event) const;
    bool IsTaken(int32 window, const QDropEvent& event) const;
    Qt::DropAction Answer(int32 window, QDropEvent& event) const;
    void Over(int32 window, QDropEvent& event);
    void Left(int32 window);
    void Dropped(int32 window, QDropEvent& event);
    void PostOwn(int32 window, const QDropEvent& event, Qt::DropAction action);
    void PostFiles(int32 window, const QDropEvent& event, Qt::DropAction action);
    void TellMoved(int32 window, QPoint onScreen, int32 transit);
    void Forget();

    WindowTable& fWindows;
    InputRouter& fRouter;
    InputDispatcher& fInput;
    std::unique_ptr<DragRequest> fOwn; // waits to be dragged, or is
    int32 fNumber = 0;                 // of what is dragged over a window of ours; 0: nothing is
    bool fIsDragging = false;
    int32 fOver = 0; // the window it is over
};

} // namespace kits
