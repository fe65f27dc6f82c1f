// A picture unpacked by the toolkit and scaled to a window: prints the milliseconds.
// decode FILE

#include <QGuiApplication>
#include <QImage>
#include <QImageReader>

#include <chrono>
#include <cstdio>

int main(int argc, char** argv)
{
    if (argc != 2) {
        return 2;
    }
    const QGuiApplication application(argc, argv);
    QImageReader::setAllocationLimit(0);
    const auto start = std::chrono::steady_clock::now();
    const QImage image = QImage(QString::fromLocal8Bit(argv[1])).scaled(800, 600);
    const std::chrono::duration<double, std::milli> taken =
        std::chrono::steady_clock::now() - start;
    std::printf("%.1f\n", taken.count());
    return image.isNull() ? 1 : 0;
}
