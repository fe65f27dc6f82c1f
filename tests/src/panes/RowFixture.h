#pragma once

#include "ApplicationEnvironment.h"
#include "TempTree.h"
#include "panes/DatePattern.h"
#include "panes/DirListItem.h"
#include "panes/RowOrder.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

/// Rows made from nothing but names and numbers, in an array.
class RowFixture : public ::testing::Test, public norvane::RowSequence
{
protected:
    static std::unique_ptr<norvane::DirListItem> Make(const std::string& name, bool isFolder,
                                                      ino_t node = 1, off_t size = 0)
    {
        BEntryRecord item;
        item.mode = isFolder ? (S_IFDIR | 0755) : (S_IFREG | 0644);
        item.node = node;
        item.size = size;
        return std::make_unique<norvane::DirListItem>(entry_ref(7, 8, name.c_str()), item,
                                                      norvane::DatePattern::For("%D %R"));
    }

    norvane::DirListItem* Add(const std::string& name, bool isFolder = false, ino_t node = 1)
    {
        fRows.push_back(Make(name, isFolder, node));
        return fRows.back().get();
    }

    void AddParent() { fRows.push_back(std::make_unique<norvane::DirListItem>()); }

    // RowSequence
    int32 CountRows() const override { return static_cast<int32>(fRows.size()); }
    const norvane::DirListItem* RowAt(int32 index) const override
    {
        return fRows[static_cast<size_t>(index)].get();
    }

    std::vector<std::unique_ptr<norvane::DirListItem>> fRows;
};
