// A picture unpacked by the toolkit and scaled to a window: prints the milliseconds. Each pixel of
// the window is one of the picture's, or smooth, as Norvane shows it. decode [--smooth] FILE

#include <QGuiApplication>
#include <QImage>
#include <QImageReader>

#include <chrono>
#include <cstdio>
#include <cstring>

int main(int argc, char** argv)
{
    const bool isSmooth = argc == 3 && std::strcmp(argv[1], "--smooth") == 0;
    if (argc != 2 && !isSmooth) {
        return 2;
    }
    const QGuiApplication application(argc, argv);
    QImageReader::setAllocationLimit(0);
    const auto start = std::chrono::steady_clock::now();
    const QImage image = QImage(QString::fromLocal8Bit(argv[argc - 1]))
                             .scaled(800, 600, Qt::IgnoreAspectRatio,
                                     isSmooth ? Qt::SmoothTransformation : Qt::FastTransformation);
    const std::chrono::duration<double, std::milli> taken =
        std::chrono::steady_clock::now() - start;
    std::printf("%.1f\n", taken.count());
    return image.isNull() ? 1 : 0;
}
