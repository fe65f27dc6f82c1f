#include "properties/PropertiesReading.h"

#include "DetachedThread.h"
#include "MessageCodes.h"
#include "properties/TreeWalk.h"

#include <Bitmap.h>
#include <Directory.h>
#include <Errors.h>
#include <NodeDetails.h>
#include <NodeInfo.h>
#include <OS.h>
#include <fs_info.h>

#include <utility>

namespace norvane {

namespace {

constexpr bigtime_t kBetweenNews = 100'000;
constexpr float kIconSide = 32;

std::shared_ptr<const BBitmap> IconOf(const entry_ref& ref)
{
    auto icon = std::make_shared<BBitmap>(BRect(0, 0, kIconSide - 1, kIconSide - 1), B_CMAP8);
    return BNodeInfo::GetTrackerIcon(&ref, icon.get(), B_LARGE_ICON) == B_OK ? icon : nullptr;
}

} // namespace

/// Adds up what is in one folder, and hands it over as it grows.
class PropertiesReading::Counter : public TreeVisitor
{
public:
    explicit Counter(PropertiesReading& reading) : fReading(reading) {}
    ~Counter() override { HandOver(); }

    // TreeVisitor
    bool IsStopped() const override { return fReading.fIsCancelled; }
    bool Before(BDirectory&, const char*, const struct stat& record) override
    {
        fCounted.Add(record);
        if (system_time() - fReading.fToldAt >= kBetweenNews) {
            HandOver();
        }
        return true;
    }
    void NotEntered(BDirectory&, const char*, status_t) override { fCounted.unreadable++; }
    void After(BDirectory&, const char*) override {}
    void Failed(const std::string&, status_t) override { fCounted.unreadable++; }

    void HandOver() { fReading.Take(std::exchange(fCounted, Tally())); }

private:
    PropertiesReading& fReading;
    Tally fCounted; // and not handed over yet
};

std::shared_ptr<PropertiesReading> PropertiesReading::Start(PropertiesOrder order,
                                                            const BMessenger& window)
{
    auto reading = std::make_shared<PropertiesReading>(window);
    const auto shared = std::make_shared<PropertiesOrder>(std::move(order));
    if (!StartDetached("properties", B_NORMAL_PRIORITY,
                       [reading, shared] { reading->Read(*shared); })) {
        const std::lock_guard lock(reading->fMutex);
        reading->fRead.isRead = true;
        reading->fRead.isCounted = true;
        reading->fRead.status = B_NO_MORE_THREADS;
        reading->fRead.subjects = std::make_shared<std::vector<Subject>>();
    }
    return reading;
}

void PropertiesReading::Read(const PropertiesOrder& order)
{
    std::vector<entry_ref> entries = order.entries;
    entry_ref named;
    if (entries.empty() && get_ref_for_path(order.path.c_str(), &named) == B_OK) {
        entries.push_back(named);
    }
    ReadChosen(entries);
    std::shared_ptr<const std::vector<Subject>> subjects;
    {
        const std::lock_guard lock(fMutex);
        subjects = fRead.subjects;
    }
    for (const Subject& subject : *subjects) {
        if (S_ISDIR(subject.mode) && !fIsCancelled) {
            CountIn(subject);
        }
    }
    {
        const std::lock_guard lock(fMutex);
        fRead.isCounted = true;
    }
    TellSoon();
}

void PropertiesReading::ReadChosen(const std::vector<entry_ref>& entries)
{
    ReadProperties read;
    auto subjects = std::make_shared<std::vector<Subject>>();
    bool hasBits = false;
    for (const entry_ref& ref : entries) {
        Subject subject;
        struct stat record;
        const status_t status = fIsCancelled ? B_CANCELED : LookAt(ref, &subject, &record);
        if (status != B_OK) {
            read.chosen.unreadable++;
            read.status = status;
            continue;
        }
        subjects->push_back(std::move(subject));
        read.chosen.Add(record);
        if (!S_ISLNK(record.st_mode)) {
            read.mix.Add(record.st_mode, !hasBits);
            hasBits = true;
        }
    }
    if (entries.empty()) {
        read.status = B_ENTRY_NOT_FOUND;
    } else if (entries.size() == 1 && !subjects->empty()) {
        ReadOne(entries.front(), &read);
    }
    read.subjects = std::move(subjects);
    read.isRead = true;
    {
        const std::lock_guard lock(fMutex);
        fRead = std::move(read);
        fChosenRead.notify_all();
    }
    TellSoon();
}

void PropertiesReading::ReadOne(const entry_ref& ref, ReadProperties* read) const
{
    EntryFacts facts;
    read->status = ReadFacts(ref, &facts);
    if (read->status == B_OK) {
        read->facts = std::make_shared<EntryFacts>(std::move(facts));
        read->icon = IconOf(ref);
    }
}

void PropertiesReading::CountIn(const Subject& subject)
{
    BDirectory folder;
    if (OpenSubject(subject, &folder) != B_OK) {
        Tally failed;
        failed.unreadable = 1;
        Take(failed);
        return;
    }
    if (is_kernel_volume(folder)) {
        return; // nothing is stored there, and some of it never ends
    }
    Counter counter(*this);
    TreeWalk(counter).Walk(folder);
}

void PropertiesReading::Take(const Tally& contents)
{
    {
        const std::lock_guard lock(fMutex);
        fRead.contents.Add(contents);
    }
    TellSoon();
}

void PropertiesReading::TellSoon()
{
    fToldAt = system_time();
    {
        const std::lock_guard lock(fMutex);
        if (std::exchange(fIsTold, true)) {
            return;
        }
    }
    fWindow.SendMessage(kPropertiesNews);
}

void PropertiesReading::AwaitChosen(bigtime_t patience)
{
    std::unique_lock lock(fMutex);
    fChosenRead.wait_for(lock, std::chrono::microseconds(patience),
                         [this] { return fRead.isRead; });
}

ReadProperties PropertiesReading::Look()
{
    const std::lock_guard lock(fMutex);
    fIsTold = false;
    return fRead;
}

status_t OpenSubject(const Subject& subject, BDirectory* folder)
{
    BDirectory parent;
    const BEntry entry(&subject.ref);
    status_t status = entry.GetParent(&parent);
    if (status == B_OK) {
        status = folder->SetToChild(parent, entry.Name());
    } else if (status == B_ENTRY_NOT_FOUND) {
        status = folder->SetTo(&entry); // the top of all folders lies in none
    }
    return status == B_OK && !IsSame(subject, *folder) ? B_ENTRY_NOT_FOUND : status;
}

status_t LookAt(const entry_ref& ref, Subject* subject, struct stat* record)
{
    const BNode node(&ref);
    const status_t status = node.InitCheck() != B_OK ? node.InitCheck() : node.GetStat(record);
    if (status != B_OK) {
        return status;
    }
    *subject = {ref, node_ref(record->st_dev, record->st_ino), record->st_mode};
    node_birth(node, &subject->birth);
    return B_OK;
}

bool IsSame(const Subject& shown, const BNode& now)
{
    struct stat record;
    if (now.GetStat(&record) != B_OK || node_ref(record.st_dev, record.st_ino) != shown.node ||
        (record.st_mode & S_IFMT) != (shown.mode & S_IFMT)) {
        return false;
    }
    uint64 birth = 0;
    node_birth(now, &birth);
    return birth == shown.birth;
}

} // namespace norvane
