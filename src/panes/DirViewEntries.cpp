#include "fileops/windows/CopyWin.h"
#include "panes/DeletionQuestion.h"
#include "panes/DirView.h"
#include "panes/EntryClipboard.h"
#include "panes/RowIcons.h"
#include "settings/MsgBox.h"

#include <Alert.h>
#include <AppDefs.h>
#include <Bitmap.h>
#include <FindDirectory.h>
#include <Message.h>
#include <Path.h>
#include <Window.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <utility>

// What is chosen, and what is done with it.

namespace norvane {

namespace {

/// The row ".." stands for no entry of the place.
std::vector<DirListItem*> WithoutParent(std::vector<DirListItem*> rows)
{
    std::erase_if(rows, [](const DirListItem* row) { return row->IsParent(); });
    return rows;
}

constexpr BPoint kDragHotSpot(15, 8); // of the picture that is dragged

bool HoldsRef(const BMessage& entries, const entry_ref& wanted)
{
    entry_ref ref;
    for (int32 index = 0; entries.FindRef("refs", index, &ref) == B_OK; index++) {
        if (ref == wanted) {
            return true;
        }
    }
    return false;
}

/// Says in a program's own words what became of entries by the desktop's.
void TakeAction(BMessage* entries)
{
    const bool isMove = entries->GetInt32("be:actions", B_COPY_TARGET) == B_MOVE_TARGET;
    entries->RemoveName("TypeOfCopy");
    entries->AddString("TypeOfCopy", isMove ? "Move" : "Copy");
}

} // namespace

// Selection

int DirView::GetSelected(std::string* path) const
{
    const DirListItem* row = RowAt(CurrentSelection());
    if (row == nullptr) {
        return 0;
    }
    const RowSource& source = fListing.Source();
    *path = row->IsDir() && !row->IsParent() ? source.PathOf(*row) : source.HeaderText();
    return row->IsDir() ? 1 : 2;
}

void DirView::GetSelected(BList* rows) const
{
    for (DirListItem* row : SelectedRows()) {
        rows->AddItem(row);
    }
}

std::vector<DirListItem*> DirView::SelectedRows() const
{
    std::vector<DirListItem*> rows;
    for (int32 i = 0, index = CurrentSelection(0); index >= 0; index = CurrentSelection(++i)) {
        rows.push_back(RowAt(index));
    }
    return rows;
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
        chosen = SelectedRows();
        if (extra != nullptr && std::find(chosen.begin(), chosen.end(), extra) == chosen.end()) {
            chosen.push_back(extra);
        }
    }
    chosen = WithoutParent(std::move(chosen));
    // Returned to the caller.
    return chosen.empty() ? nullptr : fListing.Source().MessageFor(chosen).release();
}

std::string DirView::GetFiles() const
{
    if (fUpdates.IsGone()) {
        return "This folder was removed";
    }
    FolderTotals selected;
    for (const DirListItem* row : SelectedRows()) {
        selected.Add(*row);
    }
    const bool isUnwatched = fPane != nullptr && fUpdates.IsFollowing() && !fUpdates.IsWatching();
    return fListing.Source().FooterText(selected, fRows.Totals()) +
           (isUnwatched ? " (not watched)" : "");
}

// The space that a folder occupies

int64 DirView::GetSize()
{
    DirListItem* row = RowAt(CurrentSelection());
    const bool isOne = row != nullptr && CurrentSelection(1) < 0;
    if (isOne && row->IsFolder() && Window() != nullptr) {
        EndMeasuring(); // of the one before
        // Without a thread the row goes on saying that it is a folder.
        if (fMeasure.Start(*row->GetRef(), row->NodeRef(), BMessenger(this)) == B_OK) {
            fMeasured = row->NodeRef();
            row->SetMeasuring(true);
            fRows.Redraw(row);
        }
    }
    return 0;
}

/// Under whatever name the folder has by now.
void DirView::EndMeasuring()
{
    const node_ref measured = std::exchange(fMeasured, {});
    if (measured.node == 0) {
        return;
    }
    for (DirListItem* row : fRows.FindAll(measured)) {
        row->SetMeasuring(false);
        fRows.Redraw(row);
    }
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
    if (measured == fMeasured) {
        EndMeasuring();
    }
    for (DirListItem* row : fRows.FindAll(measured)) {
        if (std::strcmp(row->LeafName(), name) == 0) {
            fRows.SetDirSize(row, bytes);
        }
    }
}

// Deleting

void DirView::Trash()
{
    TrashRows(WithoutParent(fMarks.IsEmpty() ? SelectedRows() : fMarks.Rows()));
}

void DirView::TrashRows(const std::vector<DirListItem*>& rows)
{
    BPath trash;
    if (Window() == nullptr || rows.empty() || find_directory(B_TRASH_DIRECTORY, &trash) != B_OK) {
        return;
    }
    const bool wereMarked = rows.front()->IsMarked();
    std::vector<std::string> names;
    names.reserve(rows.size());
    for (const DirListItem* row : rows) {
        names.push_back(row->GetEntryName());
    }
    RowSource& source = fListing.Source();
    const bool isForGood = source.DeletesForGood();
    auto* question =
        new BAlert("Sir?", DeletionQuestion(names, isForGood).c_str(), "Cancel", "Delete", nullptr,
                   B_WIDTH_FROM_LABEL, isForGood ? B_STOP_ALERT : B_WARNING_ALERT);
    if (question->Go() != 1) {
        return;
    }
    if (const std::optional<OperationRequest> operation = source.Delete(rows, isForGood)) {
        StartOperation(*operation, this);
    }
    if (wereMarked) {
        EmptyMarked();
    }
}

// Drags, drops and operations

void DirView::StartDrag(int32 index)
{
    const DirListItem* row = RowAt(index);
    if (index <= 0 || row == nullptr) {
        return;
    }
    // With nothing marked the row stands in for the marks.
    const std::vector<DirListItem*> alone = {RowAt(index)};
    const std::unique_ptr<BMessage> message(fMarks.IsEmpty()
                                                ? fListing.Source().MessageFor(alone)
                                                : std::unique_ptr<BMessage>(GetRefMsg(-1)));
    if (message == nullptr) {
        return;
    }
    message->AddString("Dragging", "true");
    message->AddString("TypeOfCopy", "Copy");
    const BBitmap* icon = fMarks.Totals().rows < 2 ? row->GetBitmap() : ManyFilesIcon();
    DragMessage(message.get(), icon != nullptr ? new BBitmap(icon) : nullptr, B_OP_ALPHA,
                kDragHotSpot); // adopted
}

/// A folder's row takes what is dropped on it, but for itself.
bool DirView::TakesEntries(const DirListItem& row, const BMessage& entries) const
{
    return Mode() == kLocalMode && row.IsEnterable() && !row.IsParent() &&
           !HoldsRef(entries, *row.GetRef());
}

void DirView::EntriesDropped(BMessage* message)
{
    BMessage entries(*message);
    const DirListItem* onto = nullptr;
    if (message->WasDropped()) {
        onto = RowAt(IndexOf(ConvertFromScreen(message->DropPoint())));
        TakeAction(&entries);
        if (onto != nullptr && HoldsRef(entries, *onto->GetRef())) {
            return; // a row dropped on itself
        }
    }
    if (TakeEntries(entries, onto) == DropMeaning::Act::kPassOn) {
        ColumnListView::MessageReceived(message);
    }
}

/// Does what entries mean that reached the list, on one of its rows or (null) for the place itself,
/// and returns it.
DropMeaning::Act DirView::TakeEntries(const BMessage& entries, const DirListItem* onto)
{
    const DropMeaning meaning = fListing.Source().MeaningOf(entries, onto);
    switch (meaning.act) {
    case DropMeaning::Act::kPassOn:
    case DropMeaning::Act::kIgnore:
        break;
    case DropMeaning::Act::kRefuse:
        MsgBox(meaning.title, meaning.text, "OK", B_INFO_ALERT);
        break;
    case DropMeaning::Act::kOperate:
        StartOperation(meaning.operation, fPane);
        break;
    }
    return meaning.act;
}

// The clipboard

std::unique_ptr<BMessage> DirView::ChosenEntries()
{
    std::unique_ptr<BMessage> entries(GetRefMsg(-1));
    return entries != nullptr && entries->HasRef("refs") ? std::move(entries) : nullptr;
}

void DirView::CopyEntries()
{
    if (const std::unique_ptr<BMessage> entries = ChosenEntries()) {
        EntryClipboard::Copy(*entries);
    }
}

void DirView::CutEntries()
{
    if (const std::unique_ptr<BMessage> entries = ChosenEntries()) {
        EntryClipboard::Cut(*entries);
    }
}

void DirView::PasteEntries()
{
    EntryClipboard::Ask(BMessenger(this));
}

void DirView::EntriesArrived(BMessage* message)
{
    if (!message->HasRef("refs")) {
        return; // a text
    }
    message->what = kLocalEntries;
    TakeAction(message);
    if (TakeEntries(*message, nullptr) == DropMeaning::Act::kOperate) {
        EntryClipboard::Pasted(*message);
    }
}

void DirView::ClipboardChanged()
{
    EntryClipboard::Changed();
    if (fCutGeneration != EntryClipboard::Generation()) {
        fCutGeneration = EntryClipboard::Generation();
        Invalidate();
    }
}

void DirView::StartOperation(const OperationRequest& request, BHandler* handler)
{
    // Whoever sent the entries has no say in how they are carried.
    request.message->RemoveName(kKeepsAll);
    request.message->AddBool(kKeepsAll, fPreferences.keepsAllInCopies);
    request.message->RemoveName(kByRenaming);
    request.message->AddBool(kByRenaming, fPreferences.movesByRenaming);
    norvane::StartOperation(Window()->Frame(), request.title.c_str(), request.path.c_str(),
                            request.message.get(), handler);
}

} // namespace norvane
