#include <Application.h>
#include <Entry.h>
#include <Roster.h>

#include "support/ErrnoTable.h"

#include <cerrno>
#include <cstring>
#include <limits.h>
#include <unistd.h>

// Here and not with the application kit, which knows nothing of files.

namespace {

const BRoster kRoster;

status_t FindProgramFile(entry_ref* ref)
{
    char path[PATH_MAX];
    const ssize_t length = ::readlink("/proc/self/exe", path, sizeof(path) - 1);
    if (length < 0) {
        return kits::StatusFromErrno(errno);
    }
    path[length] = '\0';
    return get_ref_for_path(path, ref);
}

} // namespace

const BRoster* be_roster = &kRoster;

status_t BApplication::GetAppInfo(app_info* info) const
{
    if (info == nullptr) {
        return B_BAD_VALUE;
    }
    app_info found;
    const status_t status = FindProgramFile(&found.ref);
    if (status != B_OK) {
        return status;
    }
    found.thread = Thread();
    found.team = ::getpid();
    std::strncpy(found.signature, Signature(), sizeof(found.signature) - 1);
    *info = found;
    return B_OK;
}

status_t BRoster::GetRunningAppInfo(team_id team, app_info* info) const
{
    if (team != ::getpid() || be_app == nullptr) {
        return B_BAD_TEAM_ID;
    }
    return be_app->GetAppInfo(info);
}
