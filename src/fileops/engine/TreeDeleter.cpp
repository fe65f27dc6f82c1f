#include "fileops/engine/TreeDeleter.h"

#include "fileops/engine/OperationHooks.h"
#include "fileops/engine/OperationUI.h"
#include "fileops/engine/ProblemList.h"

#include <Entry.h>
#include <Errors.h>

#include <cstring>

namespace norvane {

namespace {

const char* LeafOf(const char* path)
{
    const char* slash = std::strrchr(path, '/');
    return slash != nullptr ? slash + 1 : path;
}

class DeletionHooks : public OperationHooks
{
public:
    explicit DeletionHooks(OperationUI& ui) : OperationHooks(ui) {}

    // BTreeHooks
    void Failed(const char* path, status_t reason) override
    {
        const bool wasAdded = reason == B_DIRECTORY_NOT_EMPTY;
        fUI.NoteProblem(LeafOf(path),
                        wasAdded ? "something was added to it meanwhile" : ReasonFor(reason));
    }
};

} // namespace

bool DeleteTree(BEntry& entry, OperationUI* ui)
{
    if (ui == nullptr) {
        return entry.RemoveTree() == B_OK;
    }
    if (!ui->MayDelete()) {
        return false;
    }
    DeletionHooks hooks(*ui);
    return entry.RemoveTree(&hooks) == B_OK;
}

} // namespace norvane
