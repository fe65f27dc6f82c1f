#include "Points.h"

#include <cerrno>
#include <map>

namespace {

struct Way
{
    int action;
    bool isLasting;
};

const std::map<int, const char*> kActionNames = {
    {kFaultShort, "short"},
    {kFaultKillBefore, "killed before"},
    {kFaultKillAfter, "killed after"},
    {kFaultKillWithin, "killed within"},
    {ENOSPC, "ENOSPC"},
    {EDQUOT, "EDQUOT"},
    {EIO, "EIO"},
    {EACCES, "EACCES"},
    {EINTR, "EINTR"},
    {ENOENT, "ENOENT"},
    {EMFILE, "EMFILE"},
    {EBUSY, "EBUSY"},
    {EPERM, "EPERM"},
    {EOPNOTSUPP, "EOPNOTSUPP"},
};

/// In which ways a kind of call is made to fail.
std::vector<Way> WaysOf(FaultKind kind)
{
    std::vector<int> errors;
    switch (kind) {
    case kFaultOpen:
        errors = {ENOSPC, EDQUOT, EIO, EACCES, EINTR, ENOENT, EMFILE};
        break;
    case kFaultRead:
        errors = {EIO, EINTR, kFaultShort};
        break;
    case kFaultWrite:
        errors = {ENOSPC, EDQUOT, EIO, EINTR, kFaultShort, kFaultKillWithin};
        break;
    case kFaultClose:
        errors = {EIO, ENOSPC, EDQUOT, EINTR};
        break;
    case kFaultSync:
    case kFaultSyncVolume:
        errors = {EIO, ENOSPC, EDQUOT};
        break;
    case kFaultRename:
    case kFaultLink:
    case kFaultMakeFolder:
        errors = {ENOSPC, EDQUOT, EIO, EACCES, EINTR, ENOENT};
        break;
    case kFaultUnlink:
        errors = {EIO, EACCES, EINTR, ENOENT, EBUSY};
        break;
    case kFaultStat:
    case kFaultList:
        errors = {EIO, EACCES, EINTR, ENOENT};
        break;
    case kFaultCopyRange:
        errors = {ENOSPC, EDQUOT, EIO, EINTR, kFaultShort};
        break;
    case kFaultControl:
    case kFaultSetSize:
    case kFaultSetMode:
        errors = {EIO, EACCES, EPERM, EINTR};
        break;
    case kFaultAttributes:
        errors = {ENOSPC, EDQUOT, EIO, EACCES, EOPNOTSUPP};
        break;
    case kFaultKinds:
        break;
    }
    std::vector<Way> ways;
    for (const int error : errors) {
        ways.push_back({error, false});
        // A disk stays full and a bad one bad; interruptions and vanished names do not last.
        if (error == ENOSPC || error == EIO || error == EACCES || error == kFaultShort) {
            ways.push_back({error, true});
        }
    }
    ways.push_back({kFaultKillBefore, false});
    ways.push_back({kFaultKillAfter, false});
    return ways;
}

} // namespace

const char* ActionName(int action)
{
    return kActionNames.at(action);
}

std::vector<Point> PointsOf(const Job& job, const int (&counts)[kFaultKinds],
                            const std::string& call, const char* folder)
{
    std::vector<Point> points;
    for (int number = 0; number < kFaultKinds; ++number) {
        const auto kind = static_cast<FaultKind>(number);
        if (!call.empty() && call != kFaultNames[kind]) {
            continue;
        }
        for (int nth = 1; nth <= counts[kind]; ++nth) {
            for (const Way& way : WaysOf(kind)) {
                points.push_back({&job, {folder, kind, way.action, nth, way.isLasting}});
            }
        }
    }
    return points;
}
