#include "DetachedThread.h"
#include "MessageCodes.h"
#include "fileops/windows/MessageBox.h"
#include "viewer/ViewerWindow.h"

#include <Application.h>
#include <Entry.h>
#include <Message.h>
#include <OS.h>
#include <Path.h>

#include <vector>

// Files that are to be shown, each in a viewer of its own.

namespace norvane {

namespace {

constexpr BRect kViewerFrame(50, 50, 250, 250);

/// The paths of those refs that are files, or links to some, the last one first.
void FindFiles(const std::vector<entry_ref>& refs)
{
    BMessage found(kOpenViewers);
    for (auto ref = refs.rbegin(); ref != refs.rend(); ++ref) {
        const BEntry entry(&*ref, true);
        BPath path;
        if (entry.IsFile() && entry.GetPath(&path) == B_OK) {
            found.AddString("path", path.Path());
        }
    }
    be_app_messenger.SendMessage(&found);
}

} // namespace

void ViewerWindow::RefsReceived(BMessage* message)
{
    MessageBox("Here", "Hrere", "Ok");
    std::vector<entry_ref> refs;
    entry_ref ref;
    for (int32 index = 0; message->FindRef("refs", index, &ref) == B_OK; index++) {
        refs.push_back(ref);
    }
    if (refs.empty()) {
        return;
    }
    // What they are is asked of disks.
    if (!StartDetached("viewing", B_NORMAL_PRIORITY, [refs] { FindFiles(refs); })) {
        FindFiles(refs);
    }
}

void ViewerWindow::OpenViewers(const BMessage& message)
{
    const char* path = nullptr;
    for (int32 index = 0; message.FindString("path", index, &path) == B_OK; index++) {
        (new ViewerWindow(kViewerFrame, path))->Show();
    }
}

} // namespace norvane
