#include "fileops/engine/TreeDeleter.h"

#include "fileops/engine/MoveLedger.h"
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
    DeletionHooks(OperationUI& ui, const MoveLedger* ledger) : OperationHooks(ui), fLedger(ledger)
    {
    }

    // BTreeHooks
    void Failed(const char* path, status_t reason) override
    {
        const bool wasAdded = reason == B_DIRECTORY_NOT_EMPTY;
        fUI.NoteProblem(LeafOf(path),
                        wasAdded ? "something was added to it meanwhile" : ReasonFor(reason));
    }

    bool ChecksEntries() const override { return fLedger != nullptr; }

    bool MayRemove(const char* path, const struct stat& record) override
    {
        if (fLedger == nullptr || fLedger->Holds(path, record)) {
            return true;
        }
        fUI.NoteProblem(LeafOf(path), "it was added or changed meanwhile, and stays");
        return false;
    }

private:
    const MoveLedger* fLedger;
};

} // namespace

bool DeleteTree(BEntry& entry, OperationUI* ui, const MoveLedger* ledger)
{
    if (ui == nullptr) {
        return entry.RemoveTree() == B_OK;
    }
    if (!ui->MayDelete()) {
        return false;
    }
    DeletionHooks hooks(*ui, ledger);
    return entry.RemoveTree(&hooks) == B_OK;
}

} // namespace norvane
