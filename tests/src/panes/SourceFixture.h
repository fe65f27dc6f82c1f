#pragma once

#include "TempTree.h"
#include "panes/RowSource.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

/// Sources of rows without any list: what they tell is written down.
class SourceFixture : public ::testing::Test, public norvane::RowTaker
{
protected:
    status_t Open(norvane::RowSource& source)
    {
        return source.Open({"%D %R", BMessenger()}, *this);
    }

    /// The names of all rows that were handed over, each followed by a blank.
    std::string Names() const
    {
        std::string names;
        for (const auto* group : {&fRows.folders, &fRows.files}) {
            for (const auto& row : *group) {
                names += row->GetEntryName() + std::string(" ");
            }
        }
        return names;
    }

    /// The row of that name, null when there is none.
    norvane::DirListItem* Row(const std::string& name) const
    {
        for (const auto* group : {&fRows.folders, &fRows.files}) {
            for (const auto& row : *group) {
                if (row->GetEntryName() == name) {
                    return row.get();
                }
            }
        }
        return nullptr;
    }

    BMessage Drop(const std::string& from, bool hasRefs = true) const
    {
        BMessage dropped('DATA');
        const entry_ref ref(1, 2, "entry");
        if (hasRefs) {
            dropped.AddRef("refs", &ref);
        }
        if (!from.empty()) {
            dropped.AddString("From", from.c_str());
        }
        return dropped;
    }

    // RowTaker
    void Counted(int32 entries) override { fCounted = entries; }
    void Read(int32 entries) override { fRead += entries; }
    void Opened(norvane::RowSource& source, norvane::ListedRows rows) override
    {
        fOpened = &source;
        fRows = std::move(rows);
    }
    void NotOpened(norvane::RowSource&, status_t) override { FAIL() << "told late"; }
    void ReadAgain(norvane::RowSource&) override { FAIL() << "nothing was changed"; }

    TempTree fTree;
    int32 fCounted = 0;
    int32 fRead = 0;
    norvane::RowSource* fOpened = nullptr;
    norvane::ListedRows fRows;
};
