#include "panes/EmptyNote.h"

#include <Font.h>
#include <String.h>
#include <View.h>

#include <algorithm>
#include <cmath>
#include <sstream>

namespace norvane {

namespace {

constexpr rgb_color kQuiet = {96, 96, 96, 255};
constexpr float kMargin = 8; // to every side

} // namespace

void EmptyNote::SetText(const std::string& text)
{
    if (text != fText) {
        fText = text;
        fList.Invalidate();
    }
}

void EmptyNote::Scrolled()
{
    if (!fText.empty()) {
        fList.Invalidate();
    }
}

/// A word that is wider is cut.
std::vector<std::string> EmptyNote::Lines(float width) const
{
    std::vector<std::string> lines;
    std::istringstream words(fText);
    std::string word;
    while (words >> word) {
        const std::string longer = lines.empty() ? word : lines.back() + " " + word;
        if (!lines.empty() && fList.StringWidth(longer.c_str()) <= width) {
            lines.back() = longer;
            continue;
        }
        BString cut(word.c_str());
        fList.TruncateString(&cut, B_TRUNCATE_END, width);
        lines.emplace_back(cut.String());
    }
    return lines;
}

void EmptyNote::Draw(float top)
{
    const BRect seen = fList.Bounds().InsetByCopy(kMargin, kMargin);
    if (fText.empty() || seen.Width() <= 0) {
        return;
    }
    const std::vector<std::string> lines = Lines(seen.Width());
    font_height height;
    fList.GetFontHeight(&height);
    const float lineHeight = std::ceil(height.ascent + height.descent + height.leading);
    const float room = lineHeight * static_cast<float>(lines.size());
    const float first = std::max(top, std::floor((seen.top + seen.bottom - room) / 2));
    if (first + room > seen.bottom + kMargin) {
        return;
    }
    fList.PushState();
    fList.SetHighColor(kQuiet);
    fList.SetDrawingMode(B_OP_OVER);
    float base = first + std::ceil(height.ascent);
    for (const std::string& line : lines) {
        const float width = fList.StringWidth(line.c_str());
        fList.DrawString(line.c_str(),
                         BPoint(std::floor((seen.left + seen.right - width) / 2), base));
        base += lineHeight;
    }
    fList.PopState();
}

} // namespace norvane
