#pragma once

#include <string>
#include <vector>

class BView;

namespace norvane {

/// A text in lines that are at most as wide as that in the view's font; a word that is wider by
/// itself has a line of its own.
std::vector<std::string> WrappedText(const std::string& text, const BView& view, float width);

} // namespace norvane
