#include "fileops/engine/RecordCopy.h"

#include <Node.h>

namespace norvane {

void TakeRecordAlong(BNode* target, const struct stat& source)
{
    struct stat made;
    if (target->GetStat(&made) != B_OK) {
        return;
    }
    mode_t mode = source.st_mode & 07777;
    if (made.st_uid != source.st_uid && target->SetOwner(source.st_uid) != B_OK) {
        mode &= ~mode_t(S_ISUID);
    }
    if (made.st_gid != source.st_gid && target->SetGroup(source.st_gid) != B_OK) {
        mode &= ~mode_t(S_ISGID);
        mode &= ~mode_t(S_IRWXG) | (mode & S_IRWXO) << 3; // no more than everybody
    }
    if (!S_ISLNK(source.st_mode)) {
        target->SetPermissions(mode);
    }
    target->SetTimesLike(source);
}

} // namespace norvane
