// MakeArchive: one archive of what is selected, beside it.

#include <TrackerAddOn.h>

#include "MakeArchive/ArchiveWriter.h"
#include "MakeArchive/AskWindow.h"
#include "common/Progress.h"
#include "common/StatusText.h"

#include <Message.h>

namespace {

using namespace add_ons;

constexpr const char* kTitle = "MakeArchive";

status_t Make(const BDirectory& folder, const std::vector<entry_ref>& entries,
              const ArchiveWish& wish)
{
    Problems problems;
    std::string name = wish.name;
    status_t status = B_OK;
    {
        Progress progress(kTitle);
        progress.SetTotal(MeasureAll(entries, progress));
        ArchiveWriter writer(folder, ArchiveFormats()[wish.format], &progress);
        status = writer.Open();
        for (size_t entry = 0; entry < entries.size() && status == B_OK; entry++) {
            status = writer.Add(entries[entry]);
        }
        if (status == B_OK) {
            status = writer.Finish(&name);
        }
        problems = writer.GetProblems();
    }
    if (status == B_OK) {
        problems.Tell(kTitle, "In " + CutName(name) + " some entries are missing or not whole:");
    } else if (status != B_CANCELED) {
        Say(kTitle, std::string("No archive was made: ") + StatusText(status) + ".");
    }
    return status;
}

} // namespace

// The folder is a copy by the contract.
// NOLINTNEXTLINE(performance-unnecessary-value-param)
void process_refs(entry_ref folderRef, BMessage* refs, void*)
{
    std::vector<entry_ref> entries;
    entry_ref ref;
    for (int32 index = 0; refs->FindRef("refs", index, &ref) == B_OK; index++) {
        entries.push_back(ref);
    }
    const BDirectory folder(&folderRef);
    if (entries.empty() || folder.InitCheck() != B_OK) {
        return;
    }
    ArchiveWish wish{entries.size() == 1 ? entries[0].name : folderRef.name, ChosenFormat()};
    if (AskForArchive(&wish)) {
        KeepFormat(wish.format);
        Make(folder, entries, wish);
    }
}
