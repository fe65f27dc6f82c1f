// Other programs, and add-ons.

#include "DetachedThread.h"
#include "MessageCodes.h"
#include "app/NorvaneWindow.h"
#include "fileops/engine/ProblemList.h"
#include "outside/AddOnRun.h"
#include "outside/AddOns.h"
#include "outside/HelpPage.h"
#include "outside/OpenWithWin.h"
#include "outside/ProfileSnippet.h"
#include "outside/Terminal.h"
#include "panes/DirPane.h"
#include "panes/DirView.h"
#include "panes/OpenEntry.h"
#include "panes/SoonAnswer.h"
#include "settings/MsgBox.h"

#include <FindDirectory.h>
#include <Menu.h>
#include <MenuItem.h>
#include <Message.h>
#include <Path.h>

#include <memory>
#include <optional>
#include <utility>

namespace norvane {

void NorvaneWindow::SetupTerminal()
{
    // Nobody waits for it: the first terminal is asked for by hand.
    StartDetached("profile", B_LOW_PRIORITY, [] {
        BPath home;
        if (find_directory(B_USER_DIRECTORY, &home) == B_OK) {
            AddProfileSnippet(std::string(home.Path()) + "/.profile");
        }
    });
}

void NorvaneWindow::LaunchTerminalThere()
{
    if (const DirPane* pane = GetFocusedPane()) {
        OpenTerminal(pane->GetPath());
    }
}

void NorvaneWindow::OpenTracker()
{
    if (const DirPane* pane = GetFocusedPane()) {
        OpenInTracker(pane->GetPath(), BMessenger(nullptr, this));
    }
}

void NorvaneWindow::Help()
{
    OpenHelpPage(BMessenger(nullptr, this));
}

void NorvaneWindow::NotOpened(const BMessage& message)
{
    if (message.HasString("program")) {
        auto* programs = new OpenWithWin(Frame(), this, message);
        programs->Show();
    } else {
        TellNotOpened(message);
    }
}

void NorvaneWindow::FindAddOns()
{
    const std::optional<BMessage> found = AnswerSoon(
        [] {
            BMessage names(kAddOnsFound);
            for (const std::string& folder : AddOnFolders()) {
                for (const std::string& name : GetAddons(folder)) {
                    names.AddString("name", name.c_str());
                }
            }
            return names;
        },
        BMessenger(this));
    if (found) {
        ShowAddOns(*found);
    }
}

void NorvaneWindow::ShowAddOns(const BMessage& found)
{
    std::vector<std::string> names;
    const char* name = nullptr;
    for (int32 index = 0; found.FindString("name", index, &name) == B_OK; index++) {
        names.emplace_back(name);
    }
    AddToMenu(names, fAddOnsMenu);
    fAddOnsMenu->SetTargetForItems(this);
}

void NorvaneWindow::RunAddOn(const BMessage& command)
{
    BMenuItem* item = nullptr;
    if (command.FindPointer("source", reinterpret_cast<void**>(&item)) != B_OK ||
        fAddOnsMenu->IndexOf(item) < 0) {
        return;
    }
    DirPane* pane = GetFocusedPane();
    if (pane == nullptr) {
        return;
    }
    if (!fAddOnAtWork.empty()) {
        const std::string text = ShownName(fAddOnAtWork) + " is still at work.";
        MsgBox("Hey", text.c_str(), "OK", B_INFO_ALERT);
        return;
    }
    DirView* list = pane->GetDirView();
    if (list->Mode() == kFtpMode) {
        MsgBox("Add-ons do not work on a server's entries.", B_INFO_ALERT);
        return;
    }
    AddOnTask task{item->Label(), pane->GetPath(), {}};
    if (const std::unique_ptr<BMessage> selected{list->GetRefMsg(-1)}) {
        task.selected = *selected;
    }
    if (AddOnRun::Start(std::move(task), BMessenger(this))) {
        fAddOnAtWork = item->Label();
        item->SetMarked(true);
    }
}

void NorvaneWindow::AddOnEnded(const BMessage& notice)
{
    const std::string name = std::exchange(fAddOnAtWork, std::string());
    for (int32 index = 0; index < fAddOnsMenu->CountItems(); index++) {
        fAddOnsMenu->ItemAt(index)->SetMarked(false);
    }
    if (notice.HasBool("unselected")) {
        MsgBox("Please select an item first", B_WARNING_ALERT);
    }
    const char* reason = nullptr;
    if (notice.FindString("reason", &reason) == B_OK) {
        const std::string text = ShownName(name) + " failed: " + reason;
        MsgBox("Err", text.c_str(), "OK", B_WARNING_ALERT);
    }
}

} // namespace norvane
