#include "app/NorvaneWindow.h"
#include "panes/DirPane.h"
#include "panes/DirView.h"
#include "properties/PropertiesWindow.h"
#include "settings/MsgBox.h"

#include <Message.h>

#include <memory>

namespace norvane {

namespace {

std::vector<entry_ref> RefsIn(const BMessage& message)
{
    std::vector<entry_ref> refs;
    entry_ref ref;
    for (int32 index = 0; message.FindRef("refs", index, &ref) == B_OK; index++) {
        refs.push_back(ref);
    }
    return refs;
}

} // namespace

/// Of the message's own refs, else of what is marked or selected, else of the folder shown.
void NorvaneWindow::ShowProperties(const BMessage& message)
{
    PropertiesOrder order;
    order.entries = RefsIn(message);
    DirPane* pane = GetFocusedPane();
    if (order.entries.empty() && pane != nullptr) {
        DirView* list = pane->GetDirView();
        if (list->Mode() == kFtpMode) {
            MsgBox("Properties are shown of local entries only.", B_INFO_ALERT);
            return;
        }
        if (const std::unique_ptr<BMessage> chosen{list->GetRefMsg(-1)}) {
            order.entries = RefsIn(*chosen);
        }
        if (list->Mode() == kLocalMode) {
            order.path = pane->GetPath();
        }
    }
    if (order.entries.empty() && order.path.empty()) {
        return;
    }
    auto* properties = new PropertiesWindow(Frame(), std::move(order));
    properties->Show();
}

} // namespace norvane
