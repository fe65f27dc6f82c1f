#include "panes/DirView.h"

#include <Message.h>
#include <StorageDefs.h>
#include <Window.h>

#include <algorithm>
#include <cstring>

// The selection, the marks kept apart from it, and the messages that carry the chosen entries.

namespace norvane {

namespace {

constexpr std::size_t kSummaryBytes = 256;

} // namespace

int DirView::GetSelected(char* path) const
{
    const DirListItem* row = RowAt(CurrentSelection());
    if (row == nullptr) {
        return 0;
    }
    std::string text = fMode == kQueryMode ? fQuery : fPath;
    const bool isFolder = row->IsDir();
    if (isFolder && fMode == kQueryMode) {
        text = row->GetEntryName();
    } else if (isFolder && !row->IsParent()) {
        text += std::string("/") + row->GetEntryName();
    }
    path[0] = '\0';
    if (text.size() >= B_PATH_NAME_LENGTH) {
        return 0; // a cut path would name something else
    }
    std::strcpy(path, text.c_str());
    return isFolder ? 1 : 2;
}

void DirView::GetSelected(BList* rows) const
{
    for (int32 i = 0, index = CurrentSelection(0); index >= 0; index = CurrentSelection(++i)) {
        rows->AddItem(RowAt(index));
    }
}

BMessage* DirView::GetRefMsg(int32 index)
{
    DirListItem* extra = index >= 0 ? RowAt(index) : nullptr;
    std::vector<DirListItem*> chosen;
    if (!fMarks.IsEmpty()) {
        if (extra != nullptr) {
            fMarks.Append(extra); // and it stays there, unmarked
        }
        chosen = fMarks.Rows();
    } else {
        BList selected;
        GetSelected(&selected);
        for (int32 i = 0; i < selected.CountItems(); i++) {
            chosen.push_back(static_cast<DirListItem*>(selected.ItemAt(i)));
        }
        if (extra != nullptr && std::find(chosen.begin(), chosen.end(), extra) == chosen.end()) {
            chosen.push_back(extra);
        }
    }
    // The row ".." stands for no entry of this folder.
    std::erase_if(chosen, [](const DirListItem* row) { return row->IsParent(); });
    if (chosen.empty()) {
        return nullptr;
    }
    auto message = std::make_unique<BMessage>(kLocalEntries);
    for (const DirListItem* row : chosen) {
        message->AddRef("refs", row->GetRef());
    }
    message->AddString("From", fMode == kQueryMode ? fQuery.c_str() : fPath.c_str());
    return message.release(); // returned to the caller
}

void DirView::GetFiles(char* text) const
{
    FolderTotals selected;
    for (int32 i = 0, index = CurrentSelection(0); index >= 0; index = CurrentSelection(++i)) {
        selected.Add(*RowAt(index));
    }
    const std::string summary =
        FooterText(selected.bytes, fTotals.bytes, selected.files, fTotals.files);
    std::strncpy(text, summary.c_str(), kSummaryBytes - 1);
    text[kSummaryBytes - 1] = '\0';
}

int64 DirView::GetSize()
{
    const DirListItem* row = RowAt(CurrentSelection());
    const bool isOne = row != nullptr && CurrentSelection(1) < 0;
    if (isOne && row->IsFolder() && Window() != nullptr) {
        // Without a thread the row goes on saying that it is a folder.
        fMeasure.Start(*row->GetRef(), row->NodeRef(), BMessenger(this));
    }
    return 0;
}

void DirView::FolderMeasured(const BMessage& message)
{
    int64 device = 0;
    int64 node = 0;
    int64 bytes = 0;
    const char* name = nullptr;
    if (message.FindInt64("device", &device) != B_OK || message.FindInt64("node", &node) != B_OK ||
        message.FindInt64("bytes", &bytes) != B_OK || message.FindString("name", &name) != B_OK) {
        return;
    }
    const node_ref measured(static_cast<dev_t>(device), static_cast<ino_t>(node));
    for (DirListItem* row : fIndex.FindAll(measured)) {
        if (std::strcmp(row->GetRef()->name, name) == 0) {
            row->SetDirSize(bytes);
            RedrawRow(row);
        }
    }
}

// Marks

void DirView::ToggleMark(int32 index)
{
    DirListItem* row = RowAt(index);
    if (row != nullptr && !row->IsParent()) {
        fMarks.Toggle(row);
        InvalidateItem(index);
    }
}

std::vector<DirListItem*> DirView::RowsBetween(int32 from, int32 to) const
{
    std::vector<DirListItem*> rows;
    const int32 last = std::min(to, CountItems() - 1);
    for (int32 index = std::max(from, 0); index <= last; index++) {
        if (!RowAt(index)->IsParent()) {
            rows.push_back(RowAt(index));
        }
    }
    return rows;
}

void DirView::Mark(int32 from, int32 to)
{
    fMarks.Mark(RowsBetween(from, to));
    Invalidate();
}

void DirView::Unmark(int32 from, int32 to)
{
    fMarks.Unmark(RowsBetween(from, to));
    Invalidate();
}

void DirView::ToggleMarks(int32 from, int32 to)
{
    std::vector<DirListItem*> marked;
    std::vector<DirListItem*> others;
    for (DirListItem* row : RowsBetween(from, to)) {
        (row->IsMarked() ? marked : others).push_back(row);
    }
    fMarks.Unmark(marked);
    fMarks.Mark(others);
    Invalidate();
}

void DirView::EmptyMarked()
{
    if (!fMarks.IsEmpty()) {
        fMarks.Clear();
        Invalidate();
    }
}

} // namespace norvane
