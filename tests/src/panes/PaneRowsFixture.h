#pragma once

#include "RowFixture.h"
#include "clv/CLVColumn.h"
#include "clv/CLVContainerView.h"
#include "clv/ColumnListView.h"
#include "panes/PaneRows.h"

#include <Font.h>

#include <memory>
#include <string>
#include <utility>

/// The rows of a plain list in no window; what is told of them is written down.
class PaneRowsFixture : public RowFixture, public norvane::RowsListener
{
protected:
    void SetUp() override
    {
        norvane::CLVContainerView* container = nullptr;
        fList = new norvane::ColumnListView(BRect(0, 0, 299, 299), &container, "list", 0, 0,
                                            B_SINGLE_SELECTION_LIST, false, true, true, B_NO_BORDER,
                                            be_plain_font); // the container's
        fContainer.reset(container);
        fRows = std::make_unique<norvane::PaneRows>(*fList, *this);
        fRows->SetDateFormat("%D %R");
    }

    void TearDown() override { fRows->Clear(); }

    /// Rows "..", folders and files in an order of theirs; nodes count up from 1.
    void Fill(const std::vector<std::string>& folders, const std::vector<std::string>& files)
    {
        norvane::ListedRows rows;
        rows.folders.push_back(std::make_unique<norvane::DirListItem>());
        for (const std::string& name : folders) {
            rows.folders.push_back(Make(name, true, ++fLastNode));
        }
        for (const std::string& name : files) {
            rows.files.push_back(Make(name, false, ++fLastNode, 100));
        }
        fRows->Fill(std::move(rows));
    }

    std::string Names() const
    {
        std::string names;
        for (int32 i = 0; i < fRows->CountRows(); i++) {
            names += fRows->RowAt(i)->GetEntryName() + std::string(" ");
        }
        return names;
    }

    norvane::DirListItem* Row(const char* name) const { return fRows->RowAt(fRows->Find(name)); }

    // RowsListener
    void RowsLeave(const std::vector<norvane::DirListItem*>& rows) override
    {
        for (const norvane::DirListItem* row : rows) {
            fTold += std::string("-") + row->GetEntryName() + " ";
        }
    }
    void AllRowsLeave() override { fTold += "none "; }
    void RowsChanged() override { fTold += "changed "; }

    norvane::ColumnListView* fList = nullptr;
    std::unique_ptr<norvane::CLVContainerView> fContainer;
    std::unique_ptr<norvane::PaneRows> fRows;
    std::string fTold;
    ino_t fLastNode = 0;
};
