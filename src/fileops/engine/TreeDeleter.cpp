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
    DeletionHooks(OperationUI& ui, const char* shownName)
        : OperationHooks(ui), fShownName(shownName)
    {
    }

    // BTreeHooks
    void Failed(const char* path, status_t reason) override
    {
        const bool wasAdded = reason == B_DIRECTORY_NOT_EMPTY;
        const bool isTop = std::strchr(path, '/') == nullptr;
        fUI.NoteProblem(isTop && fShownName != nullptr ? fShownName : LeafOf(path),
                        wasAdded ? "something was added to it meanwhile" : ReasonFor(reason));
    }

private:
    const char* const fShownName;
};

} // namespace

bool DeleteTree(BEntry& entry, OperationUI* ui, const char* shownName)
{
    if (ui == nullptr) {
        return entry.RemoveTree() == B_OK;
    }
    if (!ui->MayDelete()) {
        return false;
    }
    DeletionHooks hooks(*ui, shownName);
    return entry.RemoveTree(&hooks) == B_OK;
}

} // namespace norvane
