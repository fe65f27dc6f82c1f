#pragma once

#include "fileops/engine/TargetFolder.h"
#include "ftp/transfers/Transfer.h"

namespace norvane {

/// What a download is of, by the names that commands use.
struct RemoteItems
{
    std::vector<std::string> files;
    std::vector<std::string> folders;
    std::vector<std::string> unusable; // shown names: these are only told of
};

/// Brings files and folders of a server into a folder: files first.
class Download : public Transfer
{
public:
    Download(const RemoteItems& items, TransferHost host, ListedEntries listed, const char* path,
             OperationUI& ui);

    // Operation
    void Measure() override;

protected:
    // Transfer
    bool Carry(size_t index) override;

private:
    RemoteEntry EntryOf(size_t index) const;

    const size_t fFileCount;
    const std::vector<std::string> fUnusable;
    const ListedEntries fListed;
    TargetFolder fTarget;
};

} // namespace norvane
