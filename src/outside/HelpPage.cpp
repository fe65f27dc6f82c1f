#include "outside/HelpPage.h"

#include "DetachedThread.h"
#include "panes/OpenEntry.h"

#include <Application.h>
#include <Directory.h>
#include <Entry.h>
#include <Messenger.h>
#include <OS.h>
#include <Roster.h>

namespace norvane {

void OpenHelpPage(const BMessenger& window)
{
    app_info program;
    if (be_app->GetAppInfo(&program) != B_OK) {
        return;
    }
    StartDetached("opening", B_NORMAL_PRIORITY, [own = program.ref, window] {
        BDirectory folder;
        entry_ref page;
        if (BEntry(&own).GetParent(&folder) == B_OK) {
            const BEntry entry(&folder, "Help.html");
            if (entry.Exists() && entry.GetRef(&page) == B_OK) {
                OpenEntry(page, window);
            }
        }
    });
}

} // namespace norvane
