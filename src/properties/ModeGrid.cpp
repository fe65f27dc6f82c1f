#include "properties/ModeGrid.h"

#include "fileops/windows/DialogLayout.h"
#include "properties/ModeBox.h"

#include <Font.h>
#include <StringView.h>

#include <algorithm>
#include <cmath>

namespace norvane {

namespace {

struct BoxOf
{
    mode_t bit;
    const char* name;
    const char* label;
    const char* spoken;
};

constexpr size_t kColumns = 3;

// Row by row.
constexpr BoxOf kBoxes[] = {
    {0400, "OwnerReads", "Read", "Owner may read"},
    {0200, "OwnerWrites", "Write", "Owner may write"},
    {0100, "OwnerExecutes", "Execute", "Owner may execute"},
    {0040, "GroupReads", "Read", "Group may read"},
    {0020, "GroupWrites", "Write", "Group may write"},
    {0010, "GroupExecutes", "Execute", "Group may execute"},
    {0004, "OthersRead", "Read", "Others may read"},
    {0002, "OthersWrite", "Write", "Others may write"},
    {0001, "OthersExecute", "Execute", "Others may execute"},
    {04000, "SetUserID", "Set user ID", "Set user ID"},
    {02000, "SetGroupID", "Set group ID", "Set group ID"},
    {01000, "Sticky", "Sticky", "Sticky"},
};

constexpr const char* kRows[] = {"Owner may", "Group may", "Others may", "Special", "Mode"};
constexpr float kBetweenColumns = 12;
constexpr float kBetweenRows = 1;

ModeBox::State StateOf(const ModeMix& mix, mode_t bit)
{
    if ((mix.mixed & bit) != 0) {
        return ModeBox::State::kMixed;
    }
    return (mix.set & bit) != 0 ? ModeBox::State::kOn : ModeBox::State::kOff;
}

float ColumnWidth(const std::vector<ModeBox*>& boxes, size_t column)
{
    float widest = 0;
    for (size_t i = column; i < boxes.size(); i += kColumns) {
        float width = 0;
        float height = 0;
        boxes[i]->GetPreferredSize(&width, &height);
        widest = std::max(widest, std::ceil(width));
    }
    return widest + kBetweenColumns;
}

float BoxHeight(ModeBox& box)
{
    float width = 0;
    float height = 0;
    box.GetPreferredSize(&width, &height);
    return height;
}

} // namespace

ModeGrid::ModeGrid(BView& page) : fPage(page)
{
    for (const char* row : kRows) {
        auto* label = new BStringView(BRect(0, 0, 10, 10), row, row, B_FOLLOW_NONE);
        label->SetHighColor({90, 90, 90, 255});
        fLabels.push_back(label);
        page.AddChild(label); // adopted, as are those below
    }
    for (const BoxOf& one : kBoxes) {
        auto* box = new ModeBox(BRect(0, 0, 10, 10), one.name, one.label, one.spoken);
        box->SetEnabled(false);
        fBoxes.push_back(box);
        page.AddChild(box);
    }
    fNumber = new BStringView(BRect(0, 0, 10, 10), "ModeNumber", "", B_FOLLOW_NONE);
    page.AddChild(fNumber);
}

void ModeGrid::SetTo(const ModeMix& mix)
{
    const BoxOf* of = kBoxes;
    for (ModeBox* box : fBoxes) {
        box->SetTo(StateOf(mix, of->bit));
        of++;
    }
    SetEnabled(true);
    ShowNumber();
}

void ModeGrid::SetToNone()
{
    fHasNone = true;
    SetEnabled(false);
    ShowNumber();
}

void ModeGrid::SetEnabled(bool isEnabled)
{
    for (ModeBox* box : fBoxes) {
        box->SetEnabled(isEnabled && !fHasNone);
    }
}

ModeChange ModeGrid::Change() const
{
    ModeChange change;
    const BoxOf* of = kBoxes;
    for (const ModeBox* box : fBoxes) {
        if (!box->IsUntouched()) {
            (box->Now() == ModeBox::State::kOn ? change.given : change.taken) |= of->bit;
        }
        of++;
    }
    return change;
}

ModeMix ModeGrid::Now() const
{
    ModeMix mix;
    const BoxOf* of = kBoxes;
    for (const ModeBox* box : fBoxes) {
        mix.set |= box->Now() == ModeBox::State::kOn ? of->bit : 0;
        mix.mixed |= box->Now() == ModeBox::State::kMixed ? of->bit : 0;
        of++;
    }
    return mix;
}

void ModeGrid::ShowNumber()
{
    if (fHasNone) {
        fNumber->SetText("Links have none of their own");
        return;
    }
    const ModeMix now = Now();
    fNumber->SetText((now.Octal() + "   " + now.Letters()).c_str());
}

float ModeGrid::WidestLabel() const
{
    float widest = 0;
    for (const char* row : kRows) {
        widest = std::max(widest, std::ceil(BFont().StringWidth(row)));
    }
    return widest;
}

float ModeGrid::BoxesWidth() const
{
    float width = -kBetweenColumns;
    for (size_t column = 0; column < kColumns; column++) {
        width += ColumnWidth(fBoxes, column);
    }
    return width;
}

float ModeGrid::Place(float left, float top, float divider)
{
    const float height = BoxHeight(*fBoxes.front());
    const float step = height + 1 + kBetweenRows;
    const float line = LineHeight();
    for (size_t row = 0; row < fLabels.size(); row++) {
        const float rowTop = top + static_cast<float>(row) * step;
        const float textTop = rowTop + std::floor((height - line) / 2);
        fLabels[row]->MoveTo(left, textTop);
        fLabels[row]->ResizeTo(divider - 1, line);
    }
    float boxLeft = left + divider;
    for (size_t column = 0; column < kColumns; column++) {
        const float width = ColumnWidth(fBoxes, column);
        for (size_t i = column; i < fBoxes.size(); i += kColumns) {
            const size_t row = i / kColumns;
            fBoxes[i]->MoveTo(boxLeft, top + static_cast<float>(row) * step);
            fBoxes[i]->ResizeTo(width - kBetweenColumns + 1, height);
        }
        boxLeft += width;
    }
    const float last = top + static_cast<float>(fLabels.size() - 1) * step;
    fNumber->MoveTo(left + divider, last + std::floor((height - line) / 2));
    fNumber->ResizeTo(BoxesWidth(), line);
    return last + step;
}

} // namespace norvane
