// What filling, expanding, collapsing and emptying an outline of so many rows costs, in
// milliseconds.

#include "clv/ColumnListView.h"

#include <Font.h>
#include <OS.h>

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <vector>

namespace {

using namespace norvane;

constexpr int kBedRows = 100; // rows below one row

class PlainRow : public CLVListItem
{
public:
    using CLVListItem::CLVListItem;
    void DrawItemColumn(BView*, BRect, int32, bool) override {}
};

class Stopwatch
{
public:
    void Lap(const char* what)
    {
        const bigtime_t now = system_time();
        std::printf("%s %.1f  ", what, static_cast<double>(now - fStart) / 1000);
        fStart = system_time();
    }

private:
    bigtime_t fStart = system_time();
};

void Measure(int rowCount)
{
    const BFont font;
    ColumnListView list(BRect(0, 0, 299, 199), nullptr, "list", 0, 0, B_SINGLE_SELECTION_LIST, true,
                        true, true, B_NO_BORDER, &font);
    list.AddColumn(new CLVColumn(nullptr, 20, CLV_EXPANDER));
    list.AddColumn(new CLVColumn("name", 100));
    std::vector<std::unique_ptr<PlainRow>> rows;
    PlainRow* root = nullptr;
    const auto make = [&](uint32 level, bool isExpanded) {
        rows.push_back(std::make_unique<PlainRow>(level, true, isExpanded));
        return rows.back().get();
    };
    std::printf("%d rows:  ", rowCount);
    Stopwatch watch;
    for (int i = 0; i < rowCount; i++) {
        list.AddItem(make(i % kBedRows == 0 ? 0 : 1, true));
    }
    watch.Lap("one by one");
    list.MakeEmpty();
    rows.clear();
    root = make(0, false);
    list.AddItem(root);
    for (int i = 1; i < rowCount; i++) {
        list.AddUnder(make(0, true), root);
    }
    watch.Lap("below one row");
    list.Expand(root);
    watch.Lap("expanding it");
    list.Collapse(root);
    watch.Lap("collapsing it");
    list.Expand(root);
    PlainRow* bed = nullptr;
    watch.Lap("again");
    for (int i = 1; i < rowCount; i++) {
        bed = i % kBedRows == 1 ? make(0, true) : bed;
        if (i % kBedRows == 1) {
            list.AddItem(bed, 0);
        } else {
            list.AddUnder(make(0, true), bed);
        }
    }
    watch.Lap("in front");
    list.RemoveItem(root);
    watch.Lap("removing it");
    std::printf("\n");
    list.MakeEmpty();
}

} // namespace

int main()
{
    for (const int rowCount : {10'000, 20'000, 40'000}) {
        Measure(rowCount);
    }
    return EXIT_SUCCESS;
}
