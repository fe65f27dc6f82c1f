#pragma once

#include "ApplicationEnvironment.h"
#include "clv/CLVListItem.h"
#include "clv/ColumnListView.h"

#include <Font.h>

#include <memory>
#include <string>
#include <vector>

/// A row with a number per column, whose drawing is only noted.
class TestRow : public norvane::CLVListItem
{
public:
    struct Cell
    {
        int32 column;
        BRect frame;
        bool complete;
    };

    explicit TestRow(std::string name, int32 level = 0, bool isSuperitem = false,
                     bool isExpanded = true)
        : CLVListItem(static_cast<uint32>(level), isSuperitem, isExpanded, 20),
          fName(std::move(name))
    {
    }

    void DrawItemColumn(BView*, BRect frame, int32 column, bool complete) override
    {
        cells.push_back({column, frame, complete});
    }

    const std::string& Name() const { return fName; }

    int values[3] = {0, 0, 0}; // by column index
    std::vector<Cell> cells;

private:
    std::string fName;
};

/// A list that keeps its rows and writes down what it is told.
class TestList : public norvane::ColumnListView
{
public:
    explicit TestList(bool isHierarchical = false, bool hasBars = true)
        : ColumnListView(BRect(0, 0, 299, 199), nullptr, "list", B_FOLLOW_ALL_SIDES,
                         B_WILL_DRAW | B_FRAME_EVENTS, B_SINGLE_SELECTION_LIST, isHierarchical,
                         hasBars, hasBars, B_NO_BORDER, be_plain_font)
    {
    }

    void ColumnWidthChanged(int32 column, float width) override
    {
        widths.push_back({column, width});
    }

    void DisplayOrderChanged(const int32* order) override
    {
        std::string text;
        for (int32 place = 0; place < CountDisplayed(); place++) {
            text += std::to_string(order[place]);
        }
        orders.push_back(text);
    }

    TestRow* Add(const std::string& name, int32 level = 0, bool isSuperitem = false,
                 bool isExpanded = true)
    {
        rows.push_back(std::make_unique<TestRow>(name, level, isSuperitem, isExpanded));
        AddItem(rows.back().get());
        return rows.back().get();
    }

    /// The names of the visible rows.
    std::string Names() const
    {
        std::string names;
        for (int32 i = 0; i < CountItems(); i++) {
            names += static_cast<TestRow*>(ItemAt(i))->Name() + " ";
        }
        return names;
    }

    std::string FullNames() const
    {
        std::string names;
        for (int32 i = 0; i < FullListCountItems(); i++) {
            names += static_cast<TestRow*>(FullListItemAt(i))->Name() + " ";
        }
        return names;
    }

    /// The sort keys with their modes: "1a 0d " for column 1 ascending, then 0 descending.
    std::string Keys() const
    {
        int32 keys[8];
        norvane::CLVSortMode modes[8];
        std::string text;
        const int32 count = Sorting(keys, modes);
        for (int32 i = 0; i < count; i++) {
            text += std::to_string(keys[i]) + "adn"[modes[i]] + std::string(" ");
        }
        return text;
    }

    std::vector<std::pair<int32, float>> widths;
    std::vector<std::string> orders;            // as told
    std::vector<std::unique_ptr<TestRow>> rows; // outlive the list's use of them
};

/// Compares by a column's number.
inline int CompareValues(const norvane::CLVListItem* a, const norvane::CLVListItem* b, int32 column)
{
    const int left = static_cast<const TestRow*>(a)->values[column];
    const int right = static_cast<const TestRow*>(b)->values[column];
    return left < right ? -1 : (left > right ? 1 : 0);
}
