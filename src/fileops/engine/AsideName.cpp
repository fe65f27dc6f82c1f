#include "fileops/engine/AsideName.h"

#include "fileops/engine/NorvaneEntry.h"
#include "fileops/engine/OperationUI.h"

#include <Errors.h>

namespace norvane {

void PutBack(BEntry& item, const std::string& name, OperationUI& ui)
{
    const std::string aside = item.Name();
    status_t status = B_FILE_EXISTS;
    for (int64 attempt = 0; status == B_FILE_EXISTS; attempt++) {
        status = item.Rename(TrashName(name, attempt).c_str());
    }
    if (status != B_OK && status != B_ENTRY_NOT_FOUND) {
        ui.NoteProblem(name, "what is left of it has the name " + aside);
    }
}

} // namespace norvane
