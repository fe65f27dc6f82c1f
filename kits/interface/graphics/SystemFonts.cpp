#include "FontAccess.h"

#include "server/WindowServer.h"

#include <QFontDatabase>
#include <QGuiApplication>

#include <algorithm>
#include <array>
#include <cmath>
#include <mutex>

namespace kits {

namespace {

constexpr double kLineHeight = 15.2; // families differ in the second digit
constexpr int kUsual = 12;
constexpr int kLargest = 24;
constexpr int kSmallest = 6;

/// Measures lines of one face. Each size that is asked about makes the system look for its font
/// anew, which costs a good part of a millisecond: so few are asked about.
class LineMeasure
{
public:
    LineMeasure(const QString& family, bool isBold) : fFont(family) { fFont.setBold(isBold); }

    QFontMetricsF At(int pixels)
    {
        fFont.setPixelSize(pixels);
        return QFontMetricsF(fFont);
    }
    bool Fits(int pixels)
    {
        const QFontMetricsF metrics = At(pixels);
        return metrics.ascent() + metrics.descent() <= kLineHeight;
    }
    /// The largest size whose line is 15 units high. Heights grow nearly as sizes do.
    int Largest()
    {
        const QFontMetricsF usual = At(kUsual);
        const double estimate = kLineHeight * kUsual / (usual.ascent() + usual.descent());
        int pixels = std::clamp(static_cast<int>(estimate), kSmallest, kLargest);
        while (pixels > kSmallest && !Fits(pixels)) {
            --pixels;
        }
        while (pixels < kLargest && Fits(pixels + 1)) {
            ++pixels;
        }
        return pixels;
    }

private:
    QFont fFont;
};

SystemFace AskTheDesktop(SystemFont system, bool isBold)
{
    SystemFace face;
    // The desktop's settings belong to the server's thread.
    WindowServer::Get().Call([&] {
        const QString family =
            QFontDatabase::systemFont(system == SystemFont::kFixed ? QFontDatabase::FixedFont
                                                                   : QFontDatabase::GeneralFont)
                .family();
        LineMeasure lines(family, isBold);
        face.family = family.toStdString();
        face.size = lines.Largest();
        face.descent = static_cast<int32>(std::lround(lines.At(face.size).descent()));
    });
    return face;
}

} // namespace

const SystemFace& FaceOf(SystemFont system, bool isBold)
{
    if (!WindowServer::Get().IsRunning()) {
        // Fonts cannot be asked for yet, or no more: sizes that any family comes close to.
        static const SystemFace assumed{};
        return assumed;
    }
    struct Known
    {
        std::once_flag asked;
        SystemFace face;
    };
    static std::array<Known, 4> known;
    Known& one = known[(system == SystemFont::kFixed ? 2 : 0) + (isBold ? 1 : 0)];
    std::call_once(one.asked, [&] { one.face = AskTheDesktop(system, isBold); });
    return one.face;
}

} // namespace kits
