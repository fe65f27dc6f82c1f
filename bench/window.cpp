// The least a program with a window costs here: Qt Gui, one window, one line of text.

#include <QBackingStore>
#include <QGuiApplication>
#include <QPainter>
#include <QWindow>

namespace {

class TextWindow : public QWindow
{
public:
    TextWindow() : fStore(this) { setSurfaceType(RasterSurface); }

protected:
    void exposeEvent(QExposeEvent*) override
    {
        fStore.resize(size());
        fStore.beginPaint(QRect(QPoint(), size()));
        QPainter painter(fStore.paintDevice());
        painter.fillRect(QRect(QPoint(), size()), Qt::white);
        painter.drawText(20, 40, QStringLiteral("One line of text"));
        painter.end();
        fStore.endPaint();
        fStore.flush(QRect(QPoint(), size()));
    }

private:
    QBackingStore fStore;
};

} // namespace

int main(int argc, char** argv)
{
    QGuiApplication application(argc, argv);
    TextWindow window;
    window.resize(1180, 640);
    window.setTitle(QStringLiteral("One line"));
    window.show();
    return QGuiApplication::exec();
}
