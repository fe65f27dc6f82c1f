// Extract: each selected archive into a new folder beside it.

#include <TrackerAddOn.h>

#include "Extract/ArchiveName.h"
#include "Extract/Extractor.h"
#include "common/FreeName.h"
#include "common/Progress.h"
#include "common/StatusText.h"

#include <Directory.h>
#include <Entry.h>
#include <Message.h>
#include <Path.h>

namespace {

using namespace add_ons;

constexpr const char* kTitle = "Extract";

/// A new folder beside the archive; its name, or empty.
std::string MakePlace(BDirectory& folder, const std::string& name, status_t* status)
{
    return FindFreeName(name, "", [&](const std::string& candidate) {
        *status = folder.CreateDirectory(candidate.c_str(), nullptr);
        return *status != B_FILE_EXISTS;
    });
}

/// A folder of its own name in the new one would be there twice.
void MoveUp(const BDirectory& folder, const std::string& place, const std::string& only)
{
    if (only != place) {
        return;
    }
    BEntry inner(&folder, (place + "/" + only).c_str());
    const std::string hidden = ".norvane-extract-" + std::to_string(system_time());
    const std::string above = "../" + hidden;
    if (inner.Rename(above.c_str(), false) == B_OK) {
        BEntry(&folder, place.c_str()).Remove();
        BEntry(&folder, hidden.c_str()).Rename(place.c_str(), false);
    }
}

std::string Outcome(Extractor::End end, const Extractor& extractor)
{
    switch (end) {
    case Extractor::End::kNoArchive:
        return " is no archive that can be read.";
    case Extractor::End::kDamaged:
        return " is damaged (" + extractor.Damage() + "). What could be read of it is there.";
    case Extractor::End::kVolumeFull:
        return " was not taken out whole: the volume is nearly full.";
    default:
        return extractor.GetProblems().IsEmpty() ? "" : " was not taken out whole.";
    }
}

/// False when the person stopped it.
bool ExtractOne(const entry_ref& ref)
{
    BFile archive(&ref, B_READ_ONLY);
    BDirectory folder;
    status_t status = archive.InitCheck();
    if (status == B_OK) {
        status = BEntry(&ref).GetParent(&folder);
    }
    const std::string name = NameWithoutEnding(ref.name);
    const std::string place = status == B_OK ? MakePlace(folder, name, &status) : "";
    if (status != B_OK || place.empty()) {
        Say(kTitle, CutName(ref.name) + ": " + StatusText(status) + ".");
        return true;
    }
    std::string text;
    std::string only;
    Extractor::End end;
    {
        SafeTree tree(BPath(&folder, place.c_str()).Path());
        Progress progress(kTitle);
        off_t size = 0;
        archive.GetSize(&size);
        progress.SetTotal(size);
        Extractor extractor(archive, name, tree, &progress);
        end = tree.IsOpen() ? extractor.Run() : Extractor::End::kNoArchive;
        if (end == Extractor::End::kStopped) {
            extractor.TakeBack();
        }
        const std::string outcome = Outcome(end, extractor);
        if (!outcome.empty()) {
            text = CutName(ref.name) + outcome + extractor.GetProblems().Text();
        }
        only = extractor.OnlyFolder();
    }
    // Gone when nothing is in it.
    if (end == Extractor::End::kStopped || end == Extractor::End::kNoArchive) {
        BEntry(&folder, place.c_str()).Remove();
    } else {
        MoveUp(folder, place, only);
    }
    if (!text.empty() && end != Extractor::End::kStopped) {
        Say(kTitle, text);
    }
    return end != Extractor::End::kStopped;
}

} // namespace

// The folder is a copy by the contract.
// NOLINTNEXTLINE(performance-unnecessary-value-param)
void process_refs(entry_ref, BMessage* refs, void*)
{
    entry_ref ref;
    for (int32 index = 0; refs->FindRef("refs", index, &ref) == B_OK; index++) {
        if (!ExtractOne(ref)) {
            return;
        }
    }
}
