#include "ftp/transfers/Transfer.h"

namespace norvane {

Transfer::Transfer(std::vector<entry_ref> items, TransferHost host, OperationUI& ui)
    : Operation(ui, std::move(items)), fServer(std::move(host), fDesk), fProgress(fDesk)
{
}

void Transfer::DoItem(size_t index)
{
    if (!Connect()) {
        return;
    }
    if (!fServer.IsUsable()) {
        fDesk.NoteProblem(Item(index).name, fServer.LostBecause());
        return;
    }
    const bool isWhole = Carry(index);
    fContext.journal.End(index, isWhole ? ItemResult::Ending::kWhole : ItemResult::Ending::kPartly);
}

/// Once; what then is not reached is not told item by item.
bool Transfer::Connect()
{
    if (!fHasTried) {
        fHasTried = true;
        const std::string reason = fServer.Open();
        fHasConnected = reason.empty();
        if (!fHasConnected && !fDesk.IsStopped()) {
            fDesk.NoteProblem(fServer.Host().host, reason);
        }
    }
    return fHasConnected;
}

void Transfer::Finish()
{
    Operation::Finish();
    fServer.Close();
}

} // namespace norvane
