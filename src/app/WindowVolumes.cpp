#include "MessageCodes.h"
#include "app/NorvaneWindow.h"
#include "panes/DirPane.h"
#include "panes/DirView.h"
#include "panes/DiskErrands.h"
#include "settings/HomeFolder.h"

#include <Message.h>
#include <NodeMonitor.h>
#include <fs_info.h>

// What becomes of panes when volumes go.

namespace norvane {

void NorvaneWindow::VolumeChanged(const BMessage& message)
{
    int32 opcode = 0;
    int32 device = 0;
    if (message.FindInt32("opcode", &opcode) != B_OK || opcode != B_DEVICE_UNMOUNTED ||
        message.FindInt32("device", &device) != B_OK) {
        return;
    }
    for (int32 index = 0; index < CountPanes(); index++) {
        const DirView* list = PaneAt(index)->GetDirView();
        if (list->Mode() == kFtpMode) {
            continue;
        }
        // What was mounted there is gone, so the path may lead to the folder beneath it by now.
        if (static_cast<int32>(list->FolderNode().device) == device) {
            PaneAt(index)->SetPath(HomeFolder().c_str());
        } else {
            FindVolumeOf(list->Path(), device);
        }
    }
}

/// The disk that is asked may be one that does not answer.
void NorvaneWindow::FindVolumeOf(const std::string& path, int32 gone)
{
    DiskErrands::Get().Do([path, gone, window = BMessenger(this)] {
        BMessage found(kVolumeFound);
        found.AddString("path", path.c_str());
        found.AddInt32("shown", dev_for_path(path.c_str()));
        found.AddInt32("device", gone);
        window.SendMessage(&found);
    });
}

void NorvaneWindow::VolumeFound(const BMessage& message)
{
    const char* path = nullptr;
    int32 shown = 0;
    int32 gone = 0;
    if (message.FindString("path", &path) != B_OK || message.FindInt32("shown", &shown) != B_OK ||
        message.FindInt32("device", &gone) != B_OK || (shown != gone && shown >= 0)) {
        return;
    }
    for (int32 index = 0; index < CountPanes(); index++) {
        const DirView* list = PaneAt(index)->GetDirView();
        if (list->Mode() != kFtpMode && list->Path() == path) {
            PaneAt(index)->SetPath(HomeFolder().c_str());
        }
    }
}

} // namespace norvane
