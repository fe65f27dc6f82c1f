#pragma once

#include "fileops/engine/Operation.h"
#include "ftp/transfers/Server.h"
#include "ftp/transfers/TransferHost.h"
#include "ftp/transfers/TransferProgress.h"

namespace norvane {

/// An operation that talks to a server: it connects for its first item, and lets go at its end.
///
/// Thread: the operation's; the client has one of its own.
class Transfer : public Operation
{
public:
    // Operation
    void Finish() override;

protected:
    Transfer(std::vector<entry_ref> items, TransferHost host, OperationUI& ui);

    /// Carries one item; says whether all of it arrived.
    virtual bool Carry(size_t index) = 0;

    // Operation
    void DoItem(size_t index) override;

    Server fServer;
    TransferProgress fProgress;

private:
    bool Connect();

    bool fHasTried = false;
    bool fHasConnected = false;
};

} // namespace norvane
