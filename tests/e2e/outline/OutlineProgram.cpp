#include "clv/CLVColumnLabelView.h"
#include "clv/CLVContainerView.h"
#include "clv/ColumnListView.h"

#include <Application.h>
#include <Region.h>
#include <Window.h>

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

// A window with an outline of a garden, to be worked by mouse and keys. After each change it says
// in a line on its output what it shows.

namespace {

using namespace norvane;

constexpr float kTextInset = 5;
constexpr rgb_color kGround = {255, 255, 255, 255};
constexpr rgb_color kSelected = {184, 198, 222, 255};

/// A plant or a bed: its name, how many there are, and what kind of thing it is.
class GardenRow : public CLVListItem
{
public:
    enum Column : int32 { kArrow, kName, kCount, kKind };

    GardenRow(uint32 level, bool isBed, const char* name, int count, const char* kind)
        : CLVListItem(level, isBed, isBed && level == 0, 18), fName(name), fCount(count),
          fKind(kind)
    {
    }

    void DrawItemColumn(BView* owner, BRect frame, int32 column, bool) override
    {
        const rgb_color ground = IsSelected() ? kSelected : kGround;
        owner->SetHighColor(ground);
        owner->SetLowColor(ground);
        owner->FillRect(frame);
        const std::string text = Text(column);
        if (text.empty()) {
            return;
        }
        BRegion clipping(frame);
        owner->ConstrainClippingRegion(&clipping);
        font_height height;
        owner->GetFontHeight(&height);
        const float width = owner->StringWidth(text.c_str());
        const float left =
            column == kCount ? frame.right - kTextInset - width : frame.left + kTextInset;
        owner->SetHighColor(0, 0, 0);
        owner->DrawString(text.c_str(), BPoint(left, frame.top + 1 + height.ascent));
        owner->ConstrainClippingRegion(nullptr);
    }

    std::string Text(int32 column) const
    {
        switch (column) {
        case kName:
            return fName;
        case kCount:
            return std::to_string(fCount);
        case kKind:
            return fKind;
        default:
            return {};
        }
    }

    int Count() const { return fCount; }

private:
    std::string fName;
    int fCount;
    std::string fKind;
};

int Compare(const CLVListItem* a, const CLVListItem* b, int32 column)
{
    const auto& left = *static_cast<const GardenRow*>(a);
    const auto& right = *static_cast<const GardenRow*>(b);
    if (column == GardenRow::kCount) {
        return left.Count() < right.Count() ? -1 : (left.Count() > right.Count() ? 1 : 0);
    }
    const int order = left.Text(column).compare(right.Text(column));
    return order < 0 ? -1 : (order > 0 ? 1 : 0);
}

class GardenList : public ColumnListView
{
public:
    explicit GardenList(BRect frame)
        : ColumnListView(frame, nullptr, "garden", B_FOLLOW_ALL_SIDES,
                         B_WILL_DRAW | B_FRAME_EVENTS | B_NAVIGABLE | B_PULSE_NEEDED,
                         B_SINGLE_SELECTION_LIST, true, true, true, B_NO_BORDER, be_plain_font)
    {
        AddColumn(new CLVColumn(nullptr, 20, CLV_EXPANDER));
        AddColumn(new CLVColumn("Name", 160, CLV_SORT_KEYABLE));
        AddColumn(new CLVColumn("Count", 60, CLV_SORT_KEYABLE));
        AddColumn(new CLVColumn("Kind", 100, CLV_SORT_KEYABLE));
        SetSortFunction(&Compare);
        AddRows();
    }
    ~GardenList() override { MakeEmpty(); }

    void Pulse() override
    {
        const std::string now = State();
        if (now != fTold) {
            fTold = now;
            std::puts(now.c_str());
            std::fflush(stdout);
        }
    }

private:
    void Plant(uint32 level, bool isBed, const char* name, int count, const char* kind)
    {
        fPlants.push_back(std::make_unique<GardenRow>(level, isBed, name, count, kind));
        AddItem(fPlants.back().get());
    }

    void AddRows()
    {
        Plant(0, true, "Orchard", 9, "bed");
        Plant(1, false, "Pear", 2, "tree");
        Plant(1, false, "Apple", 7, "tree");
        Plant(0, true, "Kitchen", 120, "bed");
        Plant(1, true, "Herbs", 20, "bed");
        Plant(2, false, "Thyme", 12, "herb");
        Plant(2, false, "Basil", 8, "herb");
        Plant(1, false, "Beans", 100, "vegetable");
        Plant(0, false, "Bench", 1, "thing");
    }

    /// Rows, sort keys with their modes, the columns' order and widths, the selected row.
    std::string State() const
    {
        std::string text = "rows";
        for (int32 row = 0; row < CountItems(); row++) {
            text += " " + static_cast<GardenRow*>(ItemAt(row))->Text(GardenRow::kName);
        }
        int32 keys[4];
        CLVSortMode modes[4];
        text += "; keys";
        for (int32 key = 0, count = Sorting(keys, modes); key < count; key++) {
            text += " " + std::to_string(keys[key]) + "adn"[modes[key]];
        }
        text += "; order";
        for (int32 place = 0; place < CountDisplayed(); place++) {
            text += " " + std::to_string(IndexOfColumn(DisplayedAt(place))) + ":" +
                    std::to_string(static_cast<int>(DisplayedAt(place)->Width()));
        }
        const auto* row = static_cast<GardenRow*>(ItemAt(CurrentSelection()));
        return text + "; selected " + (row != nullptr ? row->Text(GardenRow::kName) : "nothing");
    }

    std::vector<std::unique_ptr<GardenRow>> fPlants;
    std::string fTold;
};

class GardenWindow : public BWindow
{
public:
    GardenWindow()
        : BWindow(BRect(100, 100, 514, 364), "Outline", B_TITLED_WINDOW, B_ASYNCHRONOUS_CONTROLS)
    {
        auto* list = new GardenList(BRect(0, 0, 399, 249));
        AddChild(list->Container());
        list->MakeFocus();
        SetPulseRate(20'000);
    }

    bool QuitRequested() override
    {
        be_app->PostMessage(B_QUIT_REQUESTED);
        return true;
    }
};

} // namespace

int main()
{
    BApplication application("application/x-vnd.norvane-outline");
    if (application.InitCheck() != B_OK) {
        return EXIT_FAILURE;
    }
    (new GardenWindow)->Show();
    application.Run();
    return EXIT_SUCCESS;
}
