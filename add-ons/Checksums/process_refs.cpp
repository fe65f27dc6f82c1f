#include "Checksums/SumWindow.h"

#include <Message.h>
#include <TrackerAddOn.h>

#include <vector>

// The folder is a copy by the contract.
// NOLINTNEXTLINE(performance-unnecessary-value-param)
extern "C" void process_refs(entry_ref /*folder*/, BMessage* refs, void* /*reserved*/)
{
    std::vector<entry_ref> selected;
    entry_ref ref;
    for (int32 place = 0; refs->FindRef("refs", place, &ref) == B_OK; place++) {
        selected.push_back(ref);
    }
    if (!selected.empty()) {
        (new checksums::SumWindow(selected))->Show(); // deletes itself
    }
}
