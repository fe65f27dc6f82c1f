#pragma once

#include <EntryRef.h>

class BMessage;

/// What an add-on exports: the whole contract between it and the program.
extern "C" {

/// Works on what is selected in a folder. The program calls it when a person chooses the add-on, and
/// goes on meanwhile.
///
/// `folder` is the pane's folder. `refs` (borrowed, for the length of the call) holds the selected
/// entries as "refs", at least one. The last argument is null. Entries may have changed or gone
/// since they were selected.
/// Thread: one of its own, which holds no lock; it may make windows, which have threads of their
/// own, and wait for them. The library stays loaded, and is called again for the next selection,
/// maybe by another thread while the first call goes on for another window.
__attribute__((visibility("default"))) void process_refs(entry_ref folder, BMessage* refs,
                                                         void* reserved);
}
