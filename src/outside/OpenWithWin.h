#pragma once

#include <Entry.h>
#include <Messenger.h>
#include <Rect.h>
#include <Window.h>

#include <memory>
#include <string>
#include <vector>

class BCheckBox;
class BListView;
class BStringItem;
class BView;

namespace norvane {

/// Lists programs for a file whose kind has none, opens it by the one that is chosen, and keeps
/// that choice for all files of the kind when asked to.
class OpenWithWin : public BWindow
{
public:
    /// Centred on `frame`, hidden; stays above `owner`. `notOpened` is the kNotOpened that tells of
    /// the file and of the programs.
    OpenWithWin(BRect frame, BWindow* owner, const BMessage& notOpened);
    ~OpenWithWin() override;

    // BWindow
    void MessageReceived(BMessage* message) override;

private:
    void BuildContents(const BMessage& notOpened);
    void AddPrograms(BView* ground, const BMessage& notOpened);
    void AddAnswers(BView* ground, const BMessage& notOpened);
    void Open();

    BMessenger fOwner;
    entry_ref fFile;
    std::string fType;
    BListView* fList = nullptr;
    BCheckBox* fAlways = nullptr;
    std::vector<std::unique_ptr<BStringItem>> fRows; // of the list
    std::vector<std::string> fSignatures;            // of the rows
};

} // namespace norvane
