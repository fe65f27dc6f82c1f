#include "ftp/transfers/Download.h"

#include "ftp/transfers/TreeDownload.h"

#include <cstdlib>

namespace norvane {

namespace {

std::vector<entry_ref> RefsOf(const RemoteItems& items)
{
    std::vector<entry_ref> refs;
    for (const auto* names : {&items.files, &items.folders}) {
        for (const std::string& name : *names) {
            refs.emplace_back(0, 0, name.c_str());
        }
    }
    return refs;
}

} // namespace

Download::Download(const RemoteItems& items, TransferHost host, ListedEntries listed,
                   const char* path, OperationUI& ui)
    : Transfer(RefsOf(items), std::move(host), ui), fFileCount(items.files.size()),
      fUnusable(items.unusable), fListed(std::move(listed)), fTarget(path)
{
}

/// What the listing said of the files; how much is in folders nobody knows.
void Download::Measure()
{
    OperationSize size;
    size.kind = OperationSize::Kind::kDownload;
    size.items = CountItems();
    for (size_t i = 0; i < fFileCount && fFileCount == CountItems(); i++) {
        size.bytes += std::strtoll(EntryOf(i).size.c_str(), nullptr, 10);
    }
    fDesk.Measured(size);
    for (const std::string& name : fUnusable) {
        fDesk.NoteProblem(name, "the server's listing does not show its name whole");
    }
}

RemoteEntry Download::EntryOf(size_t index) const
{
    const std::string name = Item(index).name;
    const auto found = fListed.find(name);
    if (found != fListed.end()) {
        return found->second;
    }
    RemoteEntry entry;
    entry.name = name;
    entry.commandName = name;
    return entry;
}

bool Download::Carry(size_t index)
{
    if (!fTarget.IsUsableFor(Item(index), fDesk)) {
        return false;
    }
    fProgress.SetPaths(fServer.Host().path, fTarget.Place().path);
    const RemoteEntry entry = EntryOf(index);
    const DownloadContext context{fContext, fServer, fProgress, index};
    return index < fFileCount ? FileDownload(context, fTarget.Place()).Run(entry)
                              : TreeDownload(context, fTarget.Place()).Run(entry);
}

} // namespace norvane
