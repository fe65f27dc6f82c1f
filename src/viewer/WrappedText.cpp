#include "viewer/WrappedText.h"

#include <View.h>

#include <sstream>

namespace norvane {

std::vector<std::string> WrappedText(const std::string& text, const BView& view, float width)
{
    std::vector<std::string> lines;
    std::istringstream words(text);
    std::string word;
    while (words >> word) {
        const std::string longer = lines.empty() ? word : lines.back() + " " + word;
        if (lines.empty() || view.StringWidth(longer.c_str()) > width) {
            lines.push_back(word);
        } else {
            lines.back() = longer;
        }
    }
    return lines;
}

} // namespace norvane
