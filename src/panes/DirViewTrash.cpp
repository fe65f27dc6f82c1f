#include "fileops/engine/ItemOperations.h"
#include "fileops/engine/ProblemList.h"
#include "fileops/windows/CopyWin.h"
#include "panes/DeletionQuestion.h"
#include "panes/DirView.h"

#include <Alert.h>
#include <FindDirectory.h>
#include <Message.h>
#include <Path.h>
#include <Window.h>

// Deleting what is marked or selected.

namespace norvane {

std::vector<DirListItem*> DirView::ChosenRows() const
{
    std::vector<DirListItem*> rows;
    if (!fMarks.IsEmpty()) {
        rows = fMarks.Rows();
    } else {
        for (int32 i = 0, index = CurrentSelection(0); index >= 0; index = CurrentSelection(++i)) {
            rows.push_back(RowAt(index));
        }
    }
    // The row ".." stands for no entry of this folder.
    std::erase_if(rows, [](const DirListItem* row) { return row->IsParent(); });
    return rows;
}

void DirView::Trash()
{
    const std::vector<DirListItem*> rows = ChosenRows();
    BPath trash;
    if (Window() == nullptr || rows.empty() || find_directory(B_TRASH_DIRECTORY, &trash) != B_OK) {
        return;
    }
    const bool wereMarked = !fMarks.IsEmpty();
    BMessage request(kDeleteRequest);
    std::vector<std::string> names;
    for (const DirListItem* row : rows) {
        request.AddRef("refs", row->GetRef());
        names.push_back(row->GetEntryName());
    }
    const bool isForGood = fMode == kLocalMode && IsTrash(fPath.c_str());
    auto* question =
        new BAlert("Sir?", DeletionQuestion(names, isForGood).c_str(), "Cancel", "Delete", nullptr,
                   B_WIDTH_FROM_LABEL, isForGood ? B_STOP_ALERT : B_WARNING_ALERT);
    if (question->Go() != 1) {
        return;
    }
    if (fMode == kLocalMode) {
        // It shows itself, does its work on its own thread and deletes itself.
        new CopyWin(Window()->Frame(), "Delete", fPath.c_str(), &request, this);
    }
    if (wereMarked) {
        EmptyMarked();
    }
}

} // namespace norvane
