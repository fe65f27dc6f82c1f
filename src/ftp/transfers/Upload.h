#pragma once

#include "fileops/engine/ItemFolder.h"
#include "ftp/transfers/FileUpload.h"
#include "ftp/transfers/Transfer.h"

namespace norvane {

/// Sends files and folders to a server, into one folder there.
class Upload : public Transfer
{
public:
    /// `listed` says what has the items' names there; `path` is shown as the target.
    Upload(std::vector<entry_ref> items, TransferHost host, ListedEntries listed, const char* path,
           OperationUI& ui);

protected:
    // Operation
    OperationSize::Kind Kind() const override { return OperationSize::Kind::kUpload; }
    // Transfer
    bool Carry(size_t index) override;

private:
    const ListedEntries fListed;
    const std::string fPath;
    SentNames fSent;
    ItemFolder fSource; // that of the last item
};

} // namespace norvane
