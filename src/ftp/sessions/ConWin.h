#pragma once

#include <Messenger.h>
#include <Rect.h>
#include <Window.h>

#include <memory>
#include <string>
#include <vector>

class BListView;
class BStringItem;
class BView;

namespace norvane {

class SessionsWatch;

/// Lists the saved FTP connections, and has one connected to, made, edited or deleted.
///
/// The list follows the folder of session files for as long as the window is open.
class ConWin : public BWindow
{
public:
    /// Centred on `frame`, hidden; stays above `owner`, which gets a kSessionChosen.
    ConWin(BRect frame, BWindow* owner);
    ~ConWin() override;

    /// Has the folder of sessions read and watched; the rows come by message.
    void LoadConnectionList();
    /// Takes all rows out.
    void Clear();

    // BWindow
    void MessageReceived(BMessage* message) override;

private:
    void BuildContents();
    void AddButtons(BView* ground);
    void AddList(BView* ground, float right);
    void Listed(const BMessage& message);
    void ShowNames(const BMessage& message);
    void TellListing(const BMessage& message);
    void ListAgain();
    const BStringItem* Selected() const;
    bool GetSelected(std::string* name) const;
    void Connect();
    void Edit();
    void AskToDelete();
    void Deleted(const BMessage& message);
    void OpenEditor(const char* fileName);

    BMessenger fOwner;
    BListView* fList = nullptr;
    std::vector<std::unique_ptr<BStringItem>> fRows; // of the list
    std::unique_ptr<SessionsWatch> fWatch;
    bool fIsListing = false;
    bool fIsToListAgain = false; // something changed meanwhile
    bool fHasToldOfWatch = false;
};

} // namespace norvane
