#pragma once

#include "PanelFolder.h"

#include <Message.h>
#include <Window.h>

#include <memory>
#include <string>
#include <vector>

class BButton;
class BMenu;
class BStringView;
class BTextControl;

namespace kits {

class PanelLink;
class PanelList;

/// The window of a file panel.
///
/// Thread: its own. The panel may go before it does.
class PanelWindow : public BWindow
{
public:
    /// Makes the panel's window, unless it has one. False without a thread to be had for it.
    static bool Make(const std::shared_ptr<PanelLink>& link);

    ~PanelWindow() override;

    void Quit() override;

    // BWindow
    void MessageReceived(BMessage* message) override;
    void DispatchMessage(BMessage* message, BHandler* target) override;
    bool QuitRequested() override;

private:
    /// Where the panel goes.
    struct Goal
    {
        std::string path = {};
        bool isTyped = false;  // by a person
        std::string left = {}; // the folder that was left upwards
    };

    explicit PanelWindow(std::shared_ptr<PanelLink> link);
    bool LeavePanel();
    void TakeWishes();
    void AddViews();
    void AddButtons(float bottom);
    void AddPlaces();
    void ChangePlaces(const std::vector<std::string>& places);
    void TakeFolder();
    void ShowFolder(std::unique_ptr<PanelFolder> folder);
    void CatchUp();
    void TypedSomething();
    bool IsPathTyped() const;
    bool TakeKey(const BMessage& key, const BHandler* target);
    bool MoveInList(int8 byte, uint32 modifiers);
    void GoTo(Goal goal);
    void TakeFile(const PanelFolder& file);
    void Refresh();
    void Open();
    void Close(BMessage* message);
    void Up();
    void Accept(bool byButton);
    void Choose(const std::vector<entry_ref>& refs, const std::string& folder);
    bool MayChoose(const PanelFolder::Entry& entry) const;
    void Cancel();
    void CloseCancelled();
    void Say(const std::string& remark);
    void TellSelection();
    void Send(BMessage* message);
    void SetButtonLabel(BButton* changed, const char* label);
    const PanelFolder::Entry* SelectedEntry(int32 place) const;

    const std::shared_ptr<PanelLink> fLink;
    BMenu* fPlaces = nullptr; // all children
    BStringView* fPath = nullptr;
    PanelList* fList = nullptr;
    BTextControl* fField = nullptr;
    BButton* fCancel = nullptr;
    BButton* fOpen = nullptr;
    std::unique_ptr<PanelReading> fReading; // null while nothing is read
    std::string fShown;                     // path; empty before any was read
    bool fIsLost = false;                   // the first folder was not there
    Goal fGoal;                             // of the reading under way, or the last
    std::string fTyped;                     // what the list is filtered by
};

} // namespace kits
