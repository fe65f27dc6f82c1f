// An add-on that does what the name of the first entry that it gets says, and writes down what it
// was given into "record" of the folder above that entry's.

#include <TrackerAddOn.h>

#include <Entry.h>
#include <Message.h>
#include <Path.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <thread>

namespace {

namespace fs = std::filesystem;

std::string PathOf(const entry_ref& ref)
{
    return BPath(&ref).Path();
}

/// Works until a file "go" is beside the entry.
void WaitBeside(const fs::path& entry)
{
    while (!fs::exists(entry.parent_path() / "go")) {
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
}

} // namespace

void process_refs(entry_ref folder, BMessage* refs, void* reserved)
{
    entry_ref ref;
    if (refs->FindRef("refs", &ref) != B_OK) {
        return;
    }
    const fs::path first = PathOf(ref);
    const std::string name = first.filename();
    if (name == "throw") {
        throw std::runtime_error("thrown on purpose");
    }
    if (name == "throw a number") {
        throw 7;
    }
    if (name == "wait") {
        WaitBeside(first);
    }
    std::ofstream record(first.parent_path().parent_path() / "record.part");
    record << PathOf(folder) << (reserved == nullptr ? "" : " reserved") << '\n';
    for (int32 index = 0; refs->FindRef("refs", index, &ref) == B_OK; index++) {
        record << PathOf(ref) << '\n';
    }
    record.close();
    fs::rename(first.parent_path().parent_path() / "record.part",
               first.parent_path().parent_path() / "record");
}
