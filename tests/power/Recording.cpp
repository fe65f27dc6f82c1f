#include "Recording.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/stat.h>

namespace {

/// Whether a call may have changed what the disk shall hold.
bool CanChange(FaultKind kind)
{
    switch (kind) {
    case kFaultRead:
    case kFaultClose:
    case kFaultStat:
    case kFaultList:
        return false;
    default:
        return true;
    }
}

bool HasSameNodes(const Snapshot& a, const Snapshot& b)
{
    if (a != b) {
        return false;
    }
    for (auto left = a.begin(), right = b.begin(); left != a.end(); ++left, ++right) {
        if (left->second.node != right->second.node ||
            left->second.modifiedNs != right->second.modifiedNs) {
            return false;
        }
    }
    return true;
}

struct Recorder
{
    const Scene* scene;
    Recording* recording;

    const Snapshot& Last() const
    {
        return recording->steps.empty() ? recording->before : recording->steps.back().after;
    }

    void After(const WatchedCall& call)
    {
        recording->calls = call.number;
        if (!CanChange(call.kind)) {
            return;
        }
        Step step;
        const std::string path = call.path;
        step.what = std::to_string(call.number) + " " + kFaultNames[call.kind] + " " +
                    path.substr(std::min(path.size(), scene->Root().size() + 1));
        step.volume = path.size() > scene->Root().size() ? path[scene->Root().size() + 1] : '\0';
        // A descriptor that writes through syncs with each call.
        const bool isWrite = call.kind == kFaultWrite || call.kind == kFaultCopyRange;
        const int flags = isWrite ? fcntl(call.descriptor, F_GETFL) : 0;
        if (call.kind == kFaultSync || (flags > 0 && (flags & O_DSYNC) != 0)) {
            step.sync = Step::kNode;
        } else if (call.kind == kFaultSyncVolume) {
            step.sync = Step::kVolume;
        }
        if (step.sync != Step::kNone) {
            struct stat st = {};
            fstat(call.descriptor, &st);
            step.node = st.st_ino;
            ++recording->syncs;
        }
        step.after = scene->Look();
        if (step.sync != Step::kNone || !HasSameNodes(Last(), step.after)) {
            recording->steps.push_back(std::move(step));
        }
    }
};

Recorder* gRecorder = nullptr;

void After(const WatchedCall& call)
{
    gRecorder->After(call);
}

} // namespace

bool Record(const Job& job, const Scene& scene, Recording* recording)
{
    const auto arm = reinterpret_cast<WatchArm>(dlsym(RTLD_DEFAULT, "watch_arm"));
    if (arm == nullptr) {
        return false;
    }
    recording->before = scene.Look();
    Recorder recorder{&scene, recording};
    gRecorder = &recorder;
    arm(scene.Root().c_str(), nullptr, After);
    recording->result = job.run(scene, job.answer);
    arm("/-", nullptr, nullptr);
    return true;
}
