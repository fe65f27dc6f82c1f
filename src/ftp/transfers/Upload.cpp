#include "ftp/transfers/Upload.h"

#include "fileops/engine/ProblemList.h"
#include "ftp/transfers/TreeUpload.h"

#include <Errors.h>

#include <sys/stat.h>

namespace norvane {

Upload::Upload(std::vector<entry_ref> items, TransferHost host, ListedEntries listed,
               const char* path, OperationUI& ui)
    : Transfer(std::move(items), std::move(host), ui), fListed(std::move(listed)), fPath(path)
{
}

bool Upload::Carry(size_t index)
{
    const entry_ref& item = Item(index);
    struct stat record;
    status_t status = fSource.SetTo(item);
    const std::string path = ShownPath(fSource.Path(), item.name);
    if (status == B_OK) {
        status = fSource.Folder().GetStatFor(item.name, &record);
    }
    if (status != B_OK) {
        // What it was nobody knows any more.
        if (Measured().WasFile(index)) {
            fDesk.Tell(item.name, ItemAlert::kCannotOpen);
        } else {
            fDesk.Tell(path, ItemAlert::kNoSuchFolder);
        }
        return false;
    }
    fProgress.SetPaths(path, fPath);
    const UploadContext context{fDesk, fServer, fProgress, fSent};
    const LocalFolder folder{fSource.Folder(), fSource.Path()};
    if (S_ISREG(record.st_mode)) {
        return FileUpload(context).Run(folder, item.name, fListed);
    }
    if (S_ISDIR(record.st_mode)) {
        return TreeUpload(context, folder).Run(item.name, record);
    }
    fDesk.NoteProblem(item.name, "it is neither a file nor a folder");
    return false;
}

} // namespace norvane
