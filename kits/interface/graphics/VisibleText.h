#pragma once

#include <QString>

#include <string_view>

namespace kits {

/// UTF-8 as one line shows it, so that different texts are not drawn alike and none disturbs what
/// is drawn beside it. BFont::VisibleText() says what becomes of what. Thread: any.
QString VisibleText(std::string_view text);

} // namespace kits
