#pragma once

#include <QBackingStore>
#include <QImage>
#include <QWindow>

namespace kits {

class NativeWindow;
class WindowEvents;

/// The toolkit's window: hands every event on, to its owner or to those who know the other windows,
/// and shows pixels.
/// Thread: the server's.
class Surface : public QWindow
{
public:
    /// Ownership: borrows both, which outlive it.
    Surface(NativeWindow& owner, WindowEvents& events);
    ~Surface() override;

    /// Shows `region` (device pixels) of `image`; grey where the image does not reach.
    void Show(const QImage& image, const QRegion& region);
    /// The whole window in device pixels, rounded up so that no edge stays unpainted.
    QSize DeviceSize() const;

    NativeWindow& Owner() const { return fOwner; }

protected:
    // QWindow
    bool event(QEvent* event) override;
    void exposeEvent(QExposeEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void moveEvent(QMoveEvent* event) override;
    QAccessibleInterface* accessibleRoot() const override;

private:
    NativeWindow& fOwner;
    WindowEvents& fEvents;
    QBackingStore fStore;
    qreal fStoreRatio = 0; // of the screen the store was made for
};

} // namespace kits
