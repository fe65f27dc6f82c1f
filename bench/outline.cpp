// Fills an outline of so many rows, one by one and below one row, and expands and collapses it.
// Prints milliseconds. Usage: outline-rows ROWS

#include "clv/ColumnListView.h"

#include <Font.h>
#include <OS.h>

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <vector>

namespace {

using namespace norvane;

constexpr int kBedRows = 100; // a row of the first level with those below it

class PlainRow : public CLVListItem
{
public:
    PlainRow(uint32 level, bool isExpanded) : CLVListItem(level, true, isExpanded) {}
    void DrawItemColumn(BView*, BRect, int32, bool) override {}
};

using Rows = std::vector<std::unique_ptr<PlainRow>>;

PlainRow* Make(Rows& rows, uint32 level, bool isExpanded)
{
    rows.push_back(std::make_unique<PlainRow>(level, isExpanded));
    return rows.back().get();
}

void Work(ColumnListView& list, int rowCount)
{
    Rows rows;
    for (int i = 0; i < rowCount; i++) {
        list.AddItem(Make(rows, i % kBedRows == 0 ? 0 : 1, true));
    }
    list.MakeEmpty();
    PlainRow* root = Make(rows, 0, false);
    list.AddItem(root);
    for (int i = 1; i < rowCount; i++) {
        list.AddUnder(Make(rows, 0, true), root);
    }
    list.Expand(root);
    list.Collapse(root);
    list.MakeEmpty();
}

} // namespace

int main(int argumentCount, char** arguments)
{
    const int rowCount = argumentCount > 1 ? std::atoi(arguments[1]) : 20'000;
    const BFont font;
    ColumnListView list(BRect(0, 0, 299, 199), nullptr, "list", 0, 0, B_SINGLE_SELECTION_LIST, true,
                        true, true, B_NO_BORDER, &font);
    list.AddColumn(new CLVColumn(nullptr, 20, CLV_EXPANDER));
    list.AddColumn(new CLVColumn("name", 100));
    const bigtime_t start = system_time();
    Work(list, rowCount);
    std::printf("%.1f\n", static_cast<double>(system_time() - start) / 1000);
    return EXIT_SUCCESS;
}
