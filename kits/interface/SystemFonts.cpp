#include "FontAccess.h"

#include "server/WindowServer.h"

#include <QFontDatabase>
#include <QFontInfo>
#include <QGuiApplication>

#include <cmath>

namespace kits {

namespace {

constexpr double kLineHeight = 15.2; // families differ in the second digit
constexpr int kLargest = 24;
constexpr int kSmallest = 6;

// The size at which the family's line is 15 units high, and its descent in whole units.
void Fit(const QString& family, bool isBold, int32* size, int32* descent)
{
    QFont font(family);
    font.setBold(isBold);
    for (int pixels = kLargest; pixels >= kSmallest; --pixels) {
        font.setPixelSize(pixels);
        const QFontMetricsF metrics(font);
        if (metrics.ascent() + metrics.descent() <= kLineHeight || pixels == kSmallest) {
            *size = pixels;
            *descent = static_cast<int32>(std::lround(metrics.descent()));
            return;
        }
    }
}

SystemFonts::Values ValuesOf(QFontDatabase::SystemFont kind)
{
    SystemFonts::Values values;
    const QString family = QFontDatabase::systemFont(kind).family();
    values.family = family.toStdString();
    Fit(family, false, &values.size, &values.descent);
    Fit(family, true, &values.boldSize, &values.boldDescent);
    return values;
}

SystemFonts AskTheDesktop()
{
    SystemFonts fonts;
    // The desktop's settings belong to the server's thread.
    WindowServer::Get().Call([&fonts] {
        fonts.plain = ValuesOf(QFontDatabase::GeneralFont);
        fonts.fixed = ValuesOf(QFontDatabase::FixedFont);
    });
    return fonts;
}

} // namespace

const SystemFonts& SystemFonts::Get()
{
    if (!WindowServer::Get().IsRunning()) {
        // Fonts cannot be asked for yet, or no more: sizes that any family comes close to.
        static const SystemFonts assumed{};
        return assumed;
    }
    static const SystemFonts fonts = AskTheDesktop();
    return fonts;
}

} // namespace kits
