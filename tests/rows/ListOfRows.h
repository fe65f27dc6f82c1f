#pragma once

#include "panes/LiveUpdates.h"
#include "panes/MarkList.h"
#include "panes/PaneRows.h"

#include <Message.h>
#include <Messenger.h>

#include <memory>
#include <string>
#include <vector>

namespace norvane {
class CLVContainerView;
class ColumnListView;
} // namespace norvane

class NoticeLooper;

/// A pane's rows of one folder, without a pane: notices wait until Handle() is called.
class ListOfRows : private norvane::RowsListener, private norvane::RowTaker
{
public:
    explicit ListOfRows(const std::string& folder);
    ~ListOfRows() override;
    ListOfRows(const ListOfRows&) = delete;
    ListOfRows& operator=(const ListOfRows&) = delete;

    /// Handles the notices that have come.
    void Handle();
    /// Makes an entry and handles notices until that is listed, so that all of what happened before
    /// has been heard of. False when that takes too long.
    bool HandleAll();
    void Activate() { fUpdates->AddMissing(); }

    int CountRows() const { return fRows->CountRows(); }
    /// The row behind ".." of that index.
    norvane::DirListItem* RowAt(int index) const { return fRows->RowAt(index + 1); }
    void Mark(int index);
    void Select(int index);
    /// Shows the rows alone whose names hold a text, or all of them again.
    void Filter(const std::string& text) { fRows->SetFilter(text); }
    void EndFilter() { fRows->EndFilter(); }
    std::string FilterText() const { return fRows->FilterText(); }
    /// The rows behind "..", one line each: the name, whether it is a folder, texts; in byte order
    /// of the names.
    std::vector<std::string> Lines() const;
    std::vector<std::string> Names() const;
    std::vector<std::string> MarkedNames() const;
    std::string SelectedName() const;

private:
    // RowsListener
    void RowsLeave(const std::vector<norvane::DirListItem*>& rows) override;
    void AllRowsLeave() override {}
    void RowsChanged() override {}
    // RowTaker
    void Counted(int32) override {}
    void Read(int32) override {}
    void Opened(norvane::RowSource& source, norvane::ListedRows rows) override;
    void NotOpened(norvane::RowSource&, status_t) override {}
    void ReadAgain(norvane::RowSource&) override {}

    const std::string fFolder;
    std::unique_ptr<norvane::CLVContainerView> fContainer;
    norvane::ColumnListView* fList = nullptr; // the container's
    std::unique_ptr<norvane::PaneRows> fRows;
    std::unique_ptr<norvane::LiveUpdates> fUpdates;
    norvane::MarkList fMarks;
    NoticeLooper* fLooper; // deletes itself
    BMessenger fWatcher;
    std::unique_ptr<norvane::RowSource> fSource;
    int fEnds = 0;
};

/// The same lines of what the folder holds under names with that text, by a listing of its own.
std::vector<std::string> FreshLines(const std::string& folder, const std::string& text);
