#pragma once

#include "ftp/client/SessionFile.h"

#include <Messenger.h>
#include <Rect.h>
#include <Window.h>

#include <array>
#include <string>

class BCheckBox;
class BTextControl;
class BView;

namespace norvane {

enum class Existing;

/// Makes and edits one saved FTP connection. Any number of them may be open.
class FtpWin : public BWindow
{
public:
    /// Centred on `frame`, hidden; stays above `owner`, which gets a kSessionsChanged. `session` is
    /// the file to be edited; null for a new one.
    FtpWin(BRect frame, BWindow* owner, const char* session);
    ~FtpWin() override;

    /// Has a session's file read; what it has comes into the fields that nobody has changed.
    void LoadFtpSettings(const char* session);
    /// Has the fields written into the file that the session's name says. Asks before it takes the
    /// place of another session.
    void SetFtpSetting();

    // BWindow
    void MessageReceived(BMessage* message) override;

private:
    // In the order in which they stand.
    enum Field { kName, kHost, kPort, kUser, kPassword, kRemoteDir, kLocalDir, kFieldCount };
    struct FieldLook;
    static const std::array<FieldLook, kFieldCount> kLooks;

    void BuildContents();
    void AddField(BView* ground, int32 field, BRect frame);
    float AddRows(BView* ground);
    void AddButtons(BView* ground);
    FtpSession Entered() const;
    void Fill(const FtpSession& session);
    void SessionRead(const BMessage& message);
    void Accept();
    bool IsComplete();
    bool CanBeKept();
    void Refuse(Field field, const std::string& reason);
    void Save(Existing existing);
    void Saved(const BMessage& message);
    void AskToReplace(const std::string& name);

    BMessenger fOwner;
    std::string fEdited; // the name of the session that was there before; "" for none
    std::array<BTextControl*, kFieldCount> fFields = {};
    BCheckBox* fPassive = nullptr;
    bool fIsReading = false;
    bool fIsToAccept = false; // once the file is read
    bool fIsSaving = false;
};

} // namespace norvane
