#include "ThemeIcons.h"

#include <QDir>
#include <QGuiApplication>
#include <QIcon>
#include <QPixmap>
#include <QStandardPaths>
#include <QStringList>

namespace kits {

void ThemeIcons::Start()
{
    QStringList folders = QIcon::themeSearchPaths();
    folders.prepend(QDir::homePath() + QStringLiteral("/.icons"));
    folders += QStandardPaths::locateAll(QStandardPaths::GenericDataLocation,
                                         QStringLiteral("icons"), QStandardPaths::LocateDirectory);
    folders.removeDuplicates();
    QIcon::setThemeSearchPaths(folders);
    if (!QIcon::themeName().isEmpty() && QIcon::themeName() != QStringLiteral("hicolor")) {
        return;
    }
    // Without a desktop that names its theme, the first complete one that is installed.
    for (const char* name : {"Adwaita", "breeze", "gnome", "Papirus", "oxygen"}) {
        const QString theme = QString::fromLatin1(name);
        for (const QString& folder : folders) {
            if (QFile::exists(folder + QLatin1Char('/') + theme + QStringLiteral("/index.theme"))) {
                QIcon::setThemeName(theme);
                return;
            }
        }
    }
}

QImage ThemeIcons::Get(const std::string& name, int32 size, float scale)
{
    const auto key = std::make_tuple(name, size, scale);
    const auto found = fIcons.find(key);
    if (found != fIcons.end()) {
        return found->second;
    }
    QImage picture;
    const QIcon icon = QIcon::fromTheme(QString::fromStdString(name));
    if (!icon.isNull()) {
        picture = icon.pixmap(QSize(size, size), static_cast<qreal>(scale))
                      .toImage()
                      .convertToFormat(QImage::Format_ARGB32_Premultiplied);
    }
    fIcons.emplace(key, picture);
    return picture;
}

} // namespace kits
