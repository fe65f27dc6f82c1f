#include "properties/ModeWork.h"

#include "DetachedThread.h"
#include "MessageCodes.h"
#include "properties/TreeWalk.h"

#include <Directory.h>
#include <Errors.h>
#include <OS.h>

#include <utility>

namespace norvane {

namespace {

constexpr bigtime_t kBetweenNews = 100'000;
constexpr mode_t kPermissions = 07777;

} // namespace

/// Changes what is in one folder.
class ModeWork::Changer : public TreeVisitor
{
public:
    Changer(ModeWork& work, std::string top) : fWork(work), fTop(std::move(top)) {}

    void Walk(BDirectory& folder) { fWalk.Walk(folder); }

    // TreeVisitor
    bool IsStopped() const override { return fWork.fIsStopped; }
    bool Before(BDirectory& folder, const char* name, const struct stat& record) override
    {
        if (S_ISDIR(record.st_mode)) {
            Change(folder, name, Part::kGiven);
        } else {
            Change(folder, name, Part::kAll);
        }
        return true;
    }
    void NotEntered(BDirectory& folder, const char* name, status_t status) override
    {
        Fail(name, ReasonFor(status));
        Change(folder, name, Part::kAll);
    }
    void After(BDirectory& folder, const char* name) override
    {
        struct stat record;
        if (!IsStopped() && folder.GetStat(&record) == B_OK) {
            Set(folder, {record.st_mode, ModeFor(record.st_mode)}, Step::kWhole, name);
        }
    }
    void Failed(const std::string& path, status_t status) override
    {
        fWork.Fail(fTop + "/" + path, ReasonFor(status));
    }

private:
    enum class Part { kAll, kGiven };

    mode_t ModeFor(mode_t mode) const { return fWork.fOrder.change.ForInside(mode); }
    void Fail(const char* name, const std::string& reason)
    {
        fWork.Fail(fTop + "/" + fWalk.PathOf(name), reason);
    }
    /// The path is put together for a failure alone: it may be very long.
    void Set(BStatable& node, Modes modes, Step step, const char* name)
    {
        if (const std::string reason = fWork.Set(node, modes, step); !reason.empty()) {
            Fail(name, reason);
        }
    }
    void Change(BDirectory& folder, const char* name, Part part)
    {
        BNode node(&folder, name);
        struct stat record;
        const status_t status = node.GetStat(&record);
        if (node.InitCheck() != B_OK || status != B_OK) {
            if (node.InitCheck() != B_ENTRY_NOT_FOUND) { // else it went meanwhile
                Fail(name, ReasonFor(node.InitCheck() != B_OK ? node.InitCheck() : status));
            }
            return;
        }
        const mode_t mode = ModeFor(record.st_mode);
        const mode_t now = part == Part::kGiven ? mode | record.st_mode : mode;
        if (now != record.st_mode) {
            const Step step = now == mode ? Step::kWhole : Step::kFirst;
            Set(node, {record.st_mode, now}, step, name);
        }
    }

    ModeWork& fWork;
    const std::string fTop; // the chosen folder's name
    TreeWalk fWalk{*this};
};

std::shared_ptr<ModeWork> ModeWork::Start(const ModeOrder& order, const BMessenger& window)
{
    auto work = std::make_shared<ModeWork>(order, window);
    return StartDetached("permissions", B_NORMAL_PRIORITY, [work] { work->Run(); }) ? work
                                                                                    : nullptr;
}

void ModeWork::Run()
{
    bool wasStopped = false;
    for (const Subject& subject : *fOrder.subjects) {
        if (fIsStopped) {
            wasStopped = true;
            break;
        }
        ChangeChosen(subject);
    }
    {
        const std::lock_guard lock(fMutex);
        fProgress.isOver = true;
        fProgress.wasStopped = wasStopped || fIsStopped;
    }
    fToldAt = 0;
    TellSoon();
}

void ModeWork::ChangeChosen(const Subject& subject)
{
    if (S_ISLNK(subject.mode)) {
        return; // has no bits of its own
    }
    const char* name = subject.ref.name;
    BNode node(&subject.ref);
    struct stat record;
    const status_t status = node.InitCheck() != B_OK ? node.InitCheck() : node.GetStat(&record);
    if (status != B_OK) {
        Fail(name, ReasonFor(status));
        return;
    }
    if (!IsSame(subject, node)) {
        Fail(name, "another entry took its place meanwhile");
        return;
    }
    const mode_t mode = fOrder.change.For(record.st_mode);
    if (!S_ISDIR(record.st_mode) || !fOrder.goesInside) {
        SetOrFail(node, {record.st_mode, mode}, Step::kWhole, name);
        return;
    }
    const mode_t first = record.st_mode | mode;
    const Step step = first == mode ? Step::kWhole : Step::kFirst;
    const bool isSet = SetOrFail(node, {record.st_mode, first}, step, name);
    ChangeInside(subject);
    if (isSet && !fIsStopped) {
        SetOrFail(node, {first, mode}, Step::kWhole, name);
    }
}

void ModeWork::ChangeInside(const Subject& subject)
{
    BDirectory folder;
    const status_t status = OpenSubject(subject, &folder);
    if (status != B_OK) {
        Fail(subject.ref.name, ReasonFor(status));
        return;
    }
    Changer(*this, subject.ref.name).Walk(folder);
}

bool ModeWork::SetOrFail(BStatable& node, Modes modes, Step step, const char* name)
{
    const std::string reason = Set(node, modes, step);
    if (!reason.empty()) {
        Fail(name, reason);
    }
    return reason.empty();
}

std::string ModeWork::Set(BStatable& node, Modes modes, Step step)
{
    if (modes.from == modes.to) {
        return {};
    }
    const mode_t wanted = modes.to & kPermissions;
    status_t status = node.SetPermissions(wanted);
    if (status != B_OK) {
        return ReasonFor(status);
    }
    // Some volumes say yes and keep none; the system drops set-group-ID for a foreign group.
    mode_t now = 0;
    status = node.GetPermissions(&now);
    if (status == B_OK && now != wanted) {
        return "the volume or the system keeps other permissions";
    }
    if (step == Step::kWhole) {
        const std::lock_guard lock(fMutex);
        fProgress.changed++;
    }
    TellSoon();
    return {};
}

void ModeWork::Fail(const std::string& name, const std::string& reason)
{
    const std::lock_guard lock(fMutex);
    fProgress.problems.Add(name, reason);
}

void ModeWork::TellSoon()
{
    const bigtime_t now = system_time();
    if (now - fToldAt < kBetweenNews) {
        return;
    }
    fToldAt = now;
    {
        const std::lock_guard lock(fMutex);
        if (std::exchange(fIsTold, true)) {
            return;
        }
    }
    fWindow.SendMessage(kPropertiesNews);
}

ModeProgress ModeWork::Look()
{
    const std::lock_guard lock(fMutex);
    fIsTold = false;
    return fProgress;
}

} // namespace norvane
