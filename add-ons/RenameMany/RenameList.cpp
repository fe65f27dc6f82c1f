#include "RenameMany/RenameList.h"

#include "RenameMany/RenameTexts.h"
#include "common/DialogParts.h"

#include <cmath>
#include <utility>

namespace rename_many {

namespace {

constexpr rgb_color kText = {0, 0, 0, 255};
constexpr rgb_color kFaint = {128, 128, 128, 255};
constexpr rgb_color kWrong = {170, 0, 0, 255};
constexpr rgb_color kWhite = {255, 255, 255, 255};

} // namespace

RenameList::RenameList(BRect frame) : ColumnList(frame, "Names", B_SINGLE_SELECTION_LIST, 0.5F) {}

void RenameList::ShowNames(std::shared_ptr<const Preview> preview)
{
    fPreview = std::move(preview);
    const size_t count = fPreview != nullptr ? fPreview->names.size() : 0;
    SetCount(count);
}

bool RenameList::SelectNextFault()
{
    const size_t count = fPreview != nullptr ? fPreview->faults.size() : 0;
    const auto selected =
        static_cast<size_t>(CurrentSelection()) + 1; // the row below, or the first
    for (size_t step = 0; step < count; step++) {
        const size_t place = (selected + step) % count;
        if (fPreview->faults[place] != Fault::kNone) {
            Select(static_cast<int32>(place));
            ScrollToSelection();
            return true;
        }
    }
    return false;
}

void RenameList::DrawRow(size_t place, BRect frame, bool isSelected)
{
    DrawGround(frame, isSelected, kWhite);
    if (fPreview == nullptr || place >= fPreview->names.size()) {
        return;
    }
    const Entry& entry = (*fPreview->entries)[place];
    const float baseline = frame.top + Baseline();
    const float second = SecondColumn(frame);
    const float first = frame.left + kIndent;
    DrawCut(entry.name, BPoint(first, baseline), second - first - kIndent,
            entry.isGone ? kFaint : kText);
    float right = frame.right - kIndent;
    const Fault fault = fPreview->faults[place];
    const char* note = entry.isGone ? "no longer there" : FaultText(fault);
    if (note[0] != '\0') {
        // What is wrong has room before the name has.
        const float width = std::ceil(StringWidth(note));
        right -= width;
        DrawCut(note, BPoint(std::max(second, right), baseline), width,
                entry.isGone ? kFaint : kWrong);
        right -= add_ons::kGap;
    }
    if (right > second && !entry.isGone) {
        const bool isSame = fPreview->names[place] == entry.name;
        const rgb_color color = fault != Fault::kNone ? kWrong : isSame ? kFaint : kText;
        DrawCut(fPreview->names[place], BPoint(second, baseline), right - second, color);
    }
}

std::string RenameList::Spoken(size_t place) const
{
    if (fPreview == nullptr || place >= fPreview->names.size()) {
        return {};
    }
    std::string text = (*fPreview->entries)[place].name + ", " + fPreview->names[place];
    if (fPreview->faults[place] != Fault::kNone) {
        text += std::string(", ") + FaultText(fPreview->faults[place]);
    }
    return text;
}

} // namespace rename_many
