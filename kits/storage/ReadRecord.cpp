#include "ReadRecord.h"

#include "SystemCalls.h"

#include <sys/stat.h>
#include <sys/sysmacros.h>

namespace kits {

BEntryRecord ReadRecord(int folder, const char* name)
{
    BEntryRecord record;
    struct statx found;
    record.status = sys::StatxAt(folder, name, &found);
    if (record.status != B_OK) {
        return record;
    }
    record.mode = found.stx_mode;
    record.owner = found.stx_uid;
    record.group = found.stx_gid;
    record.node = found.stx_ino;
    record.device = makedev(found.stx_dev_major, found.stx_dev_minor);
    record.links = found.stx_nlink;
    record.size = static_cast<off_t>(found.stx_size);
    record.modified = found.stx_mtime.tv_sec;
    record.modifiedNanoseconds = found.stx_mtime.tv_nsec;
    record.changed = found.stx_ctime.tv_sec;
    return record;
}

} // namespace kits
