#pragma once

#include <SupportDefs.h>

#include <QImage>

#include <map>
#include <string>
#include <tuple>

namespace kits {

/// Pictures of the desktop's icon theme, kept once they were asked for; absent ones too.
/// Thread: the server's.
class ThemeIcons
{
public:
    /// Sets the theme and its folders: no platform but the desktops' own does.
    void Start();
    QImage Get(const std::string& name, int32 size, float scale);

private:
    std::map<std::tuple<std::string, int32, float>, QImage> fIcons;
};

} // namespace kits
