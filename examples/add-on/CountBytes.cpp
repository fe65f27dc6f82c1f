// Counts the files that are selected, and their bytes; folders are gone through whole.

#include <TrackerAddOn.h>

#include <Alert.h>
#include <Directory.h>
#include <Entry.h>
#include <Message.h>

#include <string>
#include <vector>

namespace {

struct Sum
{
    int64 files = 0;
    int64 bytes = 0;
    int64 unreadable = 0; // folders
};

Sum CountAll(std::vector<entry_ref> entries)
{
    Sum sum;
    while (!entries.empty()) {
        const BEntry entry(&entries.back());
        entries.pop_back();
        off_t size = 0;
        if (entry.IsDirectory()) {
            BDirectory folder(&entry);
            sum.unreadable += folder.InitCheck() == B_OK ? 0 : 1;
            for (entry_ref ref; folder.GetNextRef(&ref) == B_OK;) {
                entries.push_back(ref);
            }
        } else if (entry.IsFile() && entry.GetSize(&size) == B_OK) {
            sum.files++;
            sum.bytes += size;
        }
    }
    return sum;
}

} // namespace

void process_refs(entry_ref, BMessage* refs, void*)
{
    std::vector<entry_ref> entries;
    entry_ref ref;
    for (int32 index = 0; refs->FindRef("refs", index, &ref) == B_OK; index++) {
        entries.push_back(ref);
    }
    const Sum sum = CountAll(entries);
    std::string text =
        "Files: " + std::to_string(sum.files) + "\nBytes: " + std::to_string(sum.bytes);
    if (sum.unreadable > 0) {
        text += "\nFolders that could not be read: " + std::to_string(sum.unreadable);
    }
    // It deletes itself once it is answered.
    auto* alert = new BAlert("CountBytes", text.c_str(), "OK");
    alert->Go();
}
