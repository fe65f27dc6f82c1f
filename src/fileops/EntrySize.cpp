#include "fileops/EntrySize.h"

#include <Directory.h>
#include <Entry.h>
#include <fs_info.h>

namespace norvane {

namespace {

/// Adds up a tree; remembers which volume it last asked about.
class Measurement
{
public:
    Measurement(MeasureScope scope, dev_t device, const std::atomic<bool>* isCancelled)
        : fIsCancelled(isCancelled), fScope(scope), fDevice(device)
    {
    }

    int64 Folder(BDirectory& folder)
    {
        int64 total = 0;
        const char* name = nullptr;
        while (!IsCancelled() && folder.GetNextName(&name) == B_OK) {
            struct stat record;
            if (folder.GetStatFor(name, &record) != B_OK) {
                continue;
            }
            if (S_ISREG(record.st_mode)) {
                total += record.st_size;
            } else if (S_ISDIR(record.st_mode)) {
                total += Subfolder(folder, name, record);
            }
        }
        return total;
    }

private:
    int64 Subfolder(const BDirectory& parent, const char* name, const struct stat& record)
    {
        const bool isElsewhere = record.st_dev != fDevice;
        BDirectory folder;
        if ((isElsewhere && fScope == MeasureScope::kOneVolume) ||
            folder.SetToChild(parent, name) != B_OK || (isElsewhere && is_kernel_volume(folder))) {
            return 0;
        }
        const dev_t outer = fDevice;
        fDevice = record.st_dev;
        const int64 total = Folder(folder);
        fDevice = outer;
        return total;
    }

    bool IsCancelled() const { return fIsCancelled != nullptr && *fIsCancelled; }

    const std::atomic<bool>* fIsCancelled;
    const MeasureScope fScope;
    dev_t fDevice; // of the folder that is being walked
};

} // namespace

int64 MeasureEntry(const BEntry& entry, MeasureScope scope, const std::atomic<bool>* isCancelled)
{
    struct stat record;
    if (entry.GetStat(&record) != B_OK) {
        return 0;
    }
    if (S_ISREG(record.st_mode)) {
        return record.st_size;
    }
    BDirectory parent;
    BDirectory folder;
    if (!S_ISDIR(record.st_mode) || entry.GetParent(&parent) != B_OK ||
        folder.SetToChild(parent, entry.Name()) != B_OK || is_kernel_volume(folder)) {
        return 0;
    }
    return Measurement(scope, record.st_dev, isCancelled).Folder(folder);
}

} // namespace norvane
