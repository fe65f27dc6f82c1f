#include "fileops/windows/CopyWin.h"

#include "fileops/engine/EntrySize.h"
#include "fileops/engine/ItemOperations.h"
#include "fileops/engine/NorvaneEntry.h"
#include "fileops/engine/Operations.h"
#include "fileops/windows/OverWin.h"
#include "fileops/windows/WindowUI.h"

#include <AppDefs.h>
#include <Directory.h>
#include <Errors.h>
#include <OS.h>
#include <Path.h>

#include <cstring>

// What an operation does with its items.

namespace norvane {

namespace {

std::vector<entry_ref> ItemsOf(const BMessage& request)
{
    std::vector<entry_ref> items;
    entry_ref item;
    for (int32 index = 0; request.FindRef("refs", index, &item) == B_OK; index++) {
        items.push_back(item);
    }
    return items;
}

} // namespace

CopyWin::Verb CopyWin::VerbFor(const BMessage& request) const
{
    switch (request.what) {
    case kEmptyRequest:
        return Verb::kDelete;
    case kDeleteRequest:
        return IsTrash(fPath.c_str()) ? Verb::kDelete : Verb::kTrash;
    case kLocalEntries: {
        const char* type = nullptr;
        const bool isMove =
            request.FindString("TypeOfCopy", &type) == B_OK && std::strcmp(type, "Move") == 0;
        return request.HasString("Session") ? Verb::kNone : isMove ? Verb::kMove : Verb::kCopy;
    }
    default:
        return Verb::kNone;
    }
}

void CopyWin::PerformOp(BMessage* request)
{
    const Verb verb = VerbFor(*request);
    const std::vector<entry_ref> items =
        request->what == kEmptyRequest ? Contents() : ItemsOf(*request);
    if (verb == Verb::kNone) {
        return;
    }
    if (items.empty()) {
        fProblems.Show();
    } else {
        HandleItems(verb, items);
    }
}

/// What is in the folder, as far as it can be listed.
std::vector<entry_ref> CopyWin::Contents()
{
    std::vector<entry_ref> items;
    BDirectory folder(fPath.c_str());
    entry_ref item;
    status_t status = folder.InitCheck();
    while (status == B_OK && (status = folder.GetNextRef(&item)) == B_OK) {
        items.push_back(item);
    }
    if (status != B_ENTRY_NOT_FOUND) {
        NoteProblem(BPath(fPath.c_str()).Leaf(), ReasonFor(status));
    }
    return items;
}

void CopyWin::HandleItems(Verb verb, const std::vector<entry_ref>& items)
{
    OverWin* question = new OverWin(Frame(), "Item Exists", this);
    {
        const Operations::Running running{BMessenger(question)};
        WindowUI ui(this, question);
        const std::vector<int64> sizes = MeasureItems(verb, items, ui);
        ItemOperations operations(fPath.c_str(), ui);
        int64 doneBytes = 0;
        for (size_t index = 0; index < items.size() && !fIsStopped; index++) {
            HandleItem(verb, items[index], operations, ui);
            doneBytes += sizes[index];
            CountItem(verb, doneBytes);
            ShowForQuit();
            if (question->GetRetType() == kAnswerCancel) {
                break;
            }
        }
        PaintNow(system_time());
        fProblems.Show();
    }
    if (question->Lock()) {
        question->Quit();
    }
}

void CopyWin::CountItem(Verb verb, int64 doneBytes)
{
    if (verb == Verb::kTrash) {
        fProgress.AdvanceTo(doneBytes); // it was moved, as a rule, and not copied
        PaintIfDue();
    } else if (verb == Verb::kDelete) {
        EntriesVisited(1);
    }
}

void CopyWin::HandleItem(Verb verb, const entry_ref& item, ItemOperations& operations,
                         OperationUI& ui)
{
    NorvaneEntry entry(&item);
    switch (verb) {
    case Verb::kCopy:
        operations.Copy(entry);
        break;
    case Verb::kMove:
        operations.Move(entry);
        break;
    case Verb::kTrash:
        operations.Trash(entry);
        break;
    case Verb::kDelete:
        entry.DeleteEntry(ui);
        break;
    case Verb::kNone:
        break;
    }
}

std::vector<int64> CopyWin::MeasureItems(Verb verb, const std::vector<entry_ref>& items,
                                         OperationUI& ui)
{
    std::vector<int64> sizes;
    sizes.reserve(items.size());
    int64 total = 0;
    for (const entry_ref& item : items) {
        sizes.push_back(MeasureEntry(BEntry(&item), ui));
        total += sizes.back();
    }
    const int64 entryCount = fProgress.DoneEntries() + static_cast<int64>(items.size());
    fProgress.Start(total, system_time());
    if (verb == Verb::kDelete) {
        fProgress.StartEntries(entryCount);
    }
    ShowTotals(total, items.size());
    return sizes;
}

} // namespace norvane
